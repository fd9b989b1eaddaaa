# The sources of the libraries that Debian has compiled for its own machines alone. Sourced by the scripts that compile
# for others, never started by itself.

# fetch_sources PACKAGE... : unpacks their sources, as Debian has patched them, into the folder where it is called.
# They are fetched by a list of sources and a state of apt of their own, so that the system's are left as they are.
fetch_sources() {
    local release suite
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mkdir -p lists/partial
    for suite in debian/:"$release" debian/:"$release-updates" debian-security/:"$release-security"; do
        echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
            "http://deb.debian.org/${suite%:*} ${suite#*:} main"
    done >sources.list
    local apt=(apt-get -q -o Dir::Etc::sourcelist="$PWD/sources.list" -o Dir::Etc::sourceparts=/dev/null
        -o Dir::State::lists="$PWD/lists" -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache=
        -o APT::Sandbox::User=root)
    "${apt[@]}" update
    "${apt[@]}" source "$@"
    rm -rf lists
}

# need_library_sources FOLDER : brings zlib, minizip and pugixml there, and all their headers in FOLDER/include, unless
# they are there.
need_library_sources() {
    local libraries=$1
    [ ! -d "$libraries" ] || return 0
    rm -rf "$libraries.new"
    mkdir -p "$libraries.new"
    pushd "$libraries.new" >/dev/null
    fetch_sources zlib minizip pugixml
    # Their headers in one folder, with those of nlohmann that need no source.
    mkdir include
    cd include
    ln -s ../zlib-*/{zlib,zconf}.h ../pugixml-*/src/*.hpp /usr/include/nlohmann .
    ln -s ../minizip-* minizip
    popd >/dev/null
    mv "$libraries.new" "$libraries"
}

# compile_all LIST FOLDER COMMAND... : one object in the folder for each source of the list of that name, named after
# its path.
compile_all() {
    local -n list=$1
    printf '%s\0' "${list[@]}" | xargs -0 -P "$(nproc)" -I{} bash -c \
        'object=${1//\//.}; out=$2; shift 2; "$@" -o "$out/${object%.*}.o"' _ {} "${@:2}" -c {}
}

# standard_headers FILE : writes a header that includes those of the standard library that most sources do, unless it
# is there. Compiled once, it saves them three quarters of their time.
standard_headers() {
    printf '#include <%s>\n' algorithm array cmath cstdint deque filesystem functional map memory optional ranges span \
        string string_view system_error utility vector >"$1.new"
    cmp -s "$1.new" "$1" || cp "$1.new" "$1"
    rm "$1.new"
}
