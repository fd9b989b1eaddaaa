# Qt for Windows, built once and kept outside the repository. Sourced by packaging/windows/build, never started by
# itself.

# What building it needs: a compiler, and the same Qt for this machine, whose tools write code for the other.
QT_PACKAGES=(g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev qt6-base-dev qt6-base-dev-tools)

# Shared libraries, which the LGPL wants to be replaceable, of Core, Gui and Widgets alone. Without Direct2D the
# platform's plug-in links only without DirectWrite; faces then come by GDI, those beside the program as well. OpenGL
# that is found at run time is off by a switch of its own. All but what paints is compiled for size (paint_for_speed).
QT_SWITCHES=(CMAKE_BUILD_TYPE=Release BUILD_SHARED_LIBS=ON QT_HOST_PATH=/usr
    QT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake QT_QMAKE_TARGET_MKSPEC=win32-g++
    CMAKE_INSTALL_PREFIX=/qt QT_BUILD_TESTS=OFF QT_BUILD_EXAMPLES=OFF INPUT_opengl=no
    FEATURE_optimize_size=ON)
QT_WITHOUT=(network sql dbus testlib concurrent printsupport xml
    opengl opengl_dynamic dynamicgl vulkan direct2d directwrite directwrite3 freetype fontconfig
    icu openssl glib zstd brotli tabletevent pkg_config
    system_zlib system_png system_jpeg system_pcre2 system_harfbuzz system_freetype system_doubleconversion
    gif ico bmp ppm xbm xpm pdf graphicsview
    undocommand undostack undogroup undoview syntaxhighlighter textmarkdownreader textmarkdownwriter textodfwriter
    calendarwidget mdiarea dockwidget wizard colordialog fontdialog columnview lcdnumber dial keysequenceedit
    fontcombobox splashscreen jalalicalendar hijricalendar islamiccivilcalendar
    mimetype_database timezone sharedmemory systemsemaphore commandlineparser transposeproxymodel
    concatenatetablesproxymodel raster_64bit raster_fp movie picture systemtrayicon sessionmanager multiprocess
    image_heuristic_mask whatsthis statustip style_stylesheet datetimeedit textbrowser toolbox
    commandlinkbutton scroller graphicseffect progressdialog errormessage datawidgetmapper)

# need_qt TOOLCHAIN RESULT : builds Qt for the compiler that the file TOOLCHAIN tells, unless one of this version and
# these switches is kept, and puts its folder into the variable RESULT. A build that was broken off goes on where it was.
need_qt() {
    local toolchain=$1 paint_for_speed=packaging/windows/paint_for_speed version key kept scratch feature
    version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
    key=$(cat "$toolchain" "$paint_for_speed" <(printf '%s\n' "${QT_SWITCHES[@]}" "${QT_WITHOUT[@]}") | sha256sum | cut -c1-12)
    kept=${XDG_CACHE_HOME:-$HOME/.cache}/keelview/qt-windows-$version-$key
    scratch=$kept.build
    local -n qt_folder=$2
    qt_folder=$kept
    [ ! -d "$kept" ] || return 0

    step "Qt $version for Windows, kept in $kept"
    mkdir -p "$scratch"
    [ -d "$scratch/source" ] || fetch_qt "$scratch" "$version"
    local switches=("${QT_SWITCHES[@]/#/-D}")
    for feature in "${QT_WITHOUT[@]}"; do
        switches+=("-DFEATURE_$feature=OFF")
    done
    local flags="-ffile-prefix-map=$scratch=/qt"
    rm -f "$scratch/build/CMakeCache.txt" # what is configured twice gets other paths, which stand in the libraries
    cmake -S "$scratch/source" -B "$scratch/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$PWD/$toolchain" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$PWD/$paint_for_speed" \
        -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" "${switches[@]}"
    nice -n 19 cmake --build "$scratch/build" -j "$(nproc)"
    rm -rf "$scratch/installed"
    DESTDIR=$scratch/installed cmake --install "$scratch/build" >"$scratch/install.log"
    # The licences of Qt and of what it brings along, for those who hand on its libraries.
    mkdir "$scratch/installed/qt/licences"
    cp "$scratch"/source/LICENSES/* "$scratch/source/debian/copyright" "$scratch/installed/qt/licences"
    mv "$scratch/installed/qt" "$kept"
    rm -rf "$scratch"
}

# fetch_qt FOLDER VERSION : FOLDER/source gets that version of Qt as Debian has patched it, by a list of sources and a
# state of apt of its own, so that the system's are left as they are.
fetch_qt() {
    local folder=$1 version=$2
    (
        rm -rf "$folder/fetched"
        mkdir -p "$folder/fetched"
        cd "$folder/fetched"
        fetch_sources "qt6-base=$version"
        mv qt6-base-*/ "$folder/source"
    )
    rm -rf "$folder/fetched"
}
