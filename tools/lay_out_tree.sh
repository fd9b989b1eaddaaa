#!/usr/bin/env bash
# Lays out the program's tree: lay_out_tree.sh BUILD_DIR TREE LANGUAGE [MODE]
#
# LANGUAGE is en or ja. MODE is show for a copy that opens the demo race and shows races only (so without it), or
# edit for the full program, which starts at its menu.
#
# The two programs are always those of BUILD_DIR. Every other file is copied if it is missing, and renewed only if
# it still is what an earlier run laid out: TREE/.laid-out holds the checksums of that. So what a user has put
# into the tree, or changed there, stays.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
build=$1
tree=$2
language=$3
mode=${4:-show}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

declare -A source_of # place in the tree -> file that belongs there
declare -A laid_out  # place in the tree -> checksum of what was laid out there

# collect FOLDER PLACE : all files below FOLDER belong at PLACE in the tree.
collect() {
    local file
    [ -d "$1" ] || return 0
    while IFS= read -r -d '' file; do
        source_of["$2/${file#"$1"/}"]=$file
    done < <(find "$1" -type f -print0)
}

# settings : the two small files that steer the start: the race to open, and the mode and the language. Those of an
# installation are for the full program.
settings() {
    local start=packaging/start/$language
    collect "$start" raceadmin
    [ "$mode" = edit ] || {
        sed 's/^0,/1,/' "$start/Ver.00" >"$scratch/Ver.00"
        source_of[raceadmin/Ver.00]=$scratch/Ver.00
    }
}

# checksums NAME FILE... : fills the associative array NAME with the checksums of the files, by file name.
checksums() {
    local -n sums=$1
    local line
    shift
    [ "$#" -gt 0 ] || return 0
    while IFS= read -r -d '' line; do
        sums["${line:66}"]=${line:0:64}
    done < <(sha256sum --zero -- "$@")
}

# put FOLDER FILE... : the files appear in the folder, each whole or not at all, even where an old one is running.
put() {
    local folder=$1
    shift
    mkdir -p "$folder" "$tree/.new~"
    cp -t "$tree/.new~" -- "$@"
    mv -f -t "$folder" -- "${@/#*\//"$tree/.new~/"}"
    rm -rf "$tree/.new~"
}

lay_out_programs() {
    local program
    for program in keelview keelview-report; do
        cmp -s "$build/$program" "$tree/$program" || put "$tree" "$build/$program"
    done
}

read_manifest() {
    local sum place
    [ -f "$tree/.laid-out" ] || return 0
    while read -r sum place; do
        laid_out["$place"]=$sum
    done <"$tree/.laid-out"
}

write_manifest() {
    local place
    for place in "${!laid_out[@]}"; do
        printf '%s %s\n' "${laid_out[$place]}" "$place"
    done | sort -k 2 >"$scratch/.laid-out"
    put "$tree" "$scratch/.laid-out"
}

lay_out_data() {
    local place target wanted found folder
    local present=() files=()
    local -A wanted_sums=() present_sums=() renewed=() folders=()
    for place in "${!source_of[@]}"; do
        [ ! -f "$tree/$place" ] || present+=("$tree/$place")
    done
    checksums wanted_sums "${source_of[@]}"
    checksums present_sums "${present[@]}"
    for place in "${!source_of[@]}"; do
        target=$tree/$place
        wanted=${wanted_sums[${source_of[$place]}]}
        found=${present_sums[$target]:-}
        if [ -n "$found" ] && [ "$found" != "$wanted" ] && [ "$found" != "${laid_out[$place]:-}" ]; then
            continue
        fi
        if [ "$found" != "$wanted" ]; then
            renewed["${source_of[$place]}"]=${target%/*}
            folders["${target%/*}"]=1
        fi
        laid_out["$place"]=$wanted
    done
    for folder in "${!folders[@]}"; do
        files=()
        for place in "${!renewed[@]}"; do
            [ "${renewed[$place]}" != "$folder" ] || files+=("$place")
        done
        put "$folder" "${files[@]}"
    done
}

mkdir -p "$tree"/{raceadmin,gpsdat,winddat,coastline,attachment,help,help-e}
for folder in raceadmin gpsdat winddat attachment; do
    collect "$build/demo/$folder" "$folder"
done
for folder in coastline help help-e; do
    collect "$folder" "$folder"
done
# The program for Windows, where packaging/windows/build has made it, for the distributions of this tree.
collect build/for-windows/program windows
source_of[gun.wav]=assets/gun.wav
# The program of a page, where tools/make_page_program has made it.
[ ! -f build/page/keelview-page.html ] || source_of[keelview-page.html]=build/page/keelview-page.html
for tool in coast_for shorelines.py; do
    source_of[tools/$tool]=tools/$tool
done
settings
lay_out_programs
read_manifest
lay_out_data
write_manifest
