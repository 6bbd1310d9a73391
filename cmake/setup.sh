# Sourced by run, test and bench/run: what a fresh machine needs, and how to build. Speaks on standard error.

say() { printf '%s\n' "$*" >&2; }
fail() { say "error: $*"; exit 1; }

# need PACKAGE...: installs the packages of the distribution that are missing.
need() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        sudo -n true 2>/dev/null || fail "packages are missing; run: sudo apt-get install -y ${missing[*]}"
        as_root=(sudo -n)
    fi
    say "installing ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    "${as_root[@]}" apt-get update -qq >&2 &&
        "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2 ||
        fail "apt-get could not install: ${missing[*]}"
}

build_packages=(g++ cmake ninja-build libxerces-c-dev libboost-dev nlohmann-json3-dev libcli11-dev)
test_packages=(libgtest-dev libgmock-dev libxml2-utils python3-jsonschema)
packaging_packages=(dpkg-dev file binutils)
windows_packages=(g++-mingw-w64-x86-64-posix wine64 wine dpkg-dev googletest)
desk_options=(-DASSETCONNECTOR_BUILD_DESK=ON)

# say_at_first_step TEXT: says it once the build on standard input compiles or links something.
say_at_first_step() {
    local line said=false
    while IFS= read -r line; do
        case $line in
            *' Building '* | *' Linking '*) $said || say "$1"; said=true ;;
        esac
    done
}

# build PRESET TARGET [OPTION...]: configures what is not configured with these options yet, and builds. Without
# options any configuration will do.
# Silent when there is nothing to do; on failure shows what the build said.
build() {
    local preset=$1 target=$2 dir=$top/build/$1 log
    shift 2
    log=$dir/build.log
    mkdir -p "$dir"
    if [ ! -f "$dir/build.ninja" ] ||
        { [ $# -gt 0 ] && [ "$*" != "$(cat "$dir/.options" 2>/dev/null)" ]; }; then
        say "configuring $preset"
        (cd "$top" && cmake --preset "$preset" "$@") >"$log" 2>&1 || { cat "$log" >&2; fail "cmake failed"; }
        printf '%s' "$*" >"$dir/.options"
    fi
    ninja -C "$dir" "$target" 2>&1 | tee "$log" | say_at_first_step "building $preset" ||
        { grep -v '^\[' "$log" | head -n 100 >&2; fail "the build failed; all of it: $log"; }
}
