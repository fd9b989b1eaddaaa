#!/usr/bin/env bash
# Starts the program of a laid-out tree: start_program.sh TREE
set -euo pipefail
cd "$1"
exec ./keelview
