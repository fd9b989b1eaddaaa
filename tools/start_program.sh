#!/usr/bin/env bash
# Starts the program of a laid-out tree: start_program.sh TREE
#
# The program speaks to the locales ja_JP, en_US and C only and says so in a box to any other. A user of another
# locale who starts the demo wants to see the demo, so there it starts as C.
set -euo pipefail
tree=$(cd "$1" && pwd)

supported() { [[ $1 =~ ^((ja_JP|en_US)([.@].*)?|C\.(UTF-8|utf8))$ ]]; }

for name in LC_ALL LC_CTYPE LC_NUMERIC LC_TIME LC_MESSAGES; do
    setting=${LC_ALL:-${!name:-${LANG:-}}}
    if ! supported "$setting"; then
        export LC_ALL=C.UTF-8
        break
    fi
done
cd "$tree"
exec ./keelview
