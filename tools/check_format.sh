#!/usr/bin/env bash
# Fails with the places where a source file is not as clang-format writes it; --fix rewrites them instead.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mode=(--dry-run --Werror)
[ "${1:-}" != --fix ] || mode=(-i)
find src tests bench fuzz tools \( -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 --no-run-if-empty clang-format "${mode[@]}"
