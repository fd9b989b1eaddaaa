# Compiles for WebAssembly what a browser shares with the desktop: once, for the program of a page as for those that are
# set against the desktop's. Sourced by the scripts that do, never started by itself; tools/library_sources.sh goes before.

BROWSER_BUILD=build/browser
mkdir -p "$BROWSER_BUILD/objects"
# What takes its time with each fix or pixel is compiled for speed, and all that is done once for each press of a
# button to be small.
BROWSER_QUICK='src/(display/(raster|raster_areas|canvas|overlay|web/surface_board|web/letters)|racedata/(packed_track|gps_track)|analysis/(track_[a-z]*|view)|map/(boat_sprite|track_picture|coast_picture)|display/stripes)\.cpp'

# browser_sources FOLDER... : the sources of rooms, one a line, but for what other systems have of them.
browser_sources() {
    find "$@" -maxdepth 1 -name '*.cpp' | grep -vE '_(posix|windows|desktop)\.cpp$' | sort
}

# browser_object SOURCE : where what is made of it lies.
browser_object() { echo "$BROWSER_BUILD/objects/${1//\//.}.o"; }

# browser_rules : prints how ninja compiles and links. A page has a stack of 1 MB; no function may take an eighth of it.
browser_rules() {
    local libraries=build/libraries speed
    local clang=(clang++-22 --target=wasm32-wasi -Wno-deprecated -flto)
    # There are no threads, and nothing is left to be done when all is over.
    local cpp=("${clang[@]}" -std=c++20 -fno-exceptions -fno-rtti -fno-threadsafe-statics
        -fno-c++-static-destructors -Wframe-larger-than=131072
        -Werror=frame-larger-than -Isrc "-I$BROWSER_BUILD" -isystem "$libraries/include" -DPUGIXML_NO_EXCEPTIONS
        -DJSON_NOEXCEPTION)
    # minizip reads from memory and decrypts nothing.
    local c=("${clang[@]/clang++/clang}" -O2 -w -isystem "$libraries/include" -DNOUNCRYPT -DIOAPI_NO_64)
    standard_headers "$BROWSER_BUILD/standard.h"
    cat <<END
builddir = $BROWSER_BUILD
rule headers
  command = ${cpp[*]} -\$speed -x c++-header \$in -o \$out
rule compile
  command = ${cpp[*]} -\$speed -include-pch $BROWSER_BUILD/\$speed.pch -MD -MF \$out.d -c \$in -o \$out
  depfile = \$out.d
  deps = gcc
rule compile_library
  command = ${cpp[*]} -O2 -w -c \$in -o \$out
rule compile_c
  command = ${c[*]} -c \$in -o \$out
rule link
  command = ${clang[*]} -O2 --no-wasm-opt -Wl,-z,stack-size=1048576,--stack-first,--fatal-warnings \$flags \$in \$libraries -o \$out \$afterwards
END
    # The standard library's headers take most of the time: they are compiled once for either kind.
    for speed in O2 Oz; do
        printf 'build %s/%s.pch: headers %s/standard.h\n  speed = %s\n' \
            "$BROWSER_BUILD" "$speed" "$BROWSER_BUILD" "$speed"
    done
}

# browser_compile SOURCE... : prints that these of ours are to be compiled.
browser_compile() {
    local source speed
    for source in "$@"; do
        [[ $source =~ $BROWSER_QUICK ]] && speed=O2 || speed=Oz
        printf 'build %s: compile %s | %s/%s.pch\n  speed = %s\n' \
            "$(browser_object "$source")" "$source" "$BROWSER_BUILD" "$speed" "$speed"
    done
}
