#!/usr/bin/env bash
# Runs clang-tidy over every source of ours that a build compiles: run_clang_tidy.sh BUILD_DIR [FILE...]
# Quiet when all is clean; prints the findings and fails otherwise.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=$1
shift

files=("$@")
if [ "${#files[@]}" -eq 0 ]; then
    mapfile -t files < <(sed -n "s|.*\"file\": \"$PWD/\(src/.*\.cpp\)\".*|\1|p" "$build/compile_commands.json" | sort -u)
fi
if printf '%s\0' "${files[@]}" |
    xargs -0 -P "$(nproc)" -n 1 clang-tidy-22 -p "$build" --quiet 2>/dev/null; then
    echo "clang-tidy: ${#files[@]} files, nothing found"
else
    echo "clang-tidy: see the findings above" >&2
    exit 1
fi
