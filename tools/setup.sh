# Sourced by ./run and ./test: finds out what this machine lacks and installs it.

# The lists name what each script needs beyond a bare Debian 12.
PLAY_PACKAGES="g++ cmake ninja-build pkg-config nlohmann-json3-dev libplist-dev libmicrohttpd-dev"
TEST_PACKAGES="$PLAY_PACKAGES libgtest-dev libbenchmark-dev tzdata python3"
FULL_PACKAGES="$TEST_PACKAGES clang-19 clang-format-19 clang-tidy-19 libclang-rt-19-dev llvm-19 nodejs npm chromium"

PLAY_FORMULAE="cmake ninja pkgconf nlohmann-json libplist libmicrohttpd"
TEST_FORMULAE="$PLAY_FORMULAE googletest google-benchmark"

on_mac() { [ "$(uname -s)" = Darwin ]; }

fail() {
    echo "$1" >&2
    exit 1
}

# A package counts as present when dpkg has it, or, for tools, when a command of that name is there.
has_package() {
    case "$1" in
        cmake | python3 | npm | g++) command -v "$1" >/dev/null && return 0 ;;
        ninja-build) command -v ninja >/dev/null && return 0 ;;
        nodejs) command -v node >/dev/null && return 0 ;;
    esac
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

install_packages() {
    local missing="" package as_root=""
    for package in "$@"; do
        has_package "$package" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    command -v apt-get >/dev/null || fail "This machine lacks:$missing. Install them, then try again."
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "Run this as root, or install:$missing"
        as_root=sudo
    fi
    echo "Installing:$missing"
    # An old package list names versions that are gone, so the list comes first.
    $as_root apt-get update -qq >/dev/null
    # shellcheck disable=SC2086
    DEBIAN_FRONTEND=noninteractive $as_root apt-get install -qq -y --no-install-recommends $missing >/dev/null
}

install_formulae() {
    xcode-select -p >/dev/null 2>&1 || fail "Velko is built with Xcode's tools: run xcode-select --install first."
    local missing="" formula
    for formula in "$@"; do
        brew list --formula "$formula" >/dev/null 2>&1 || missing="$missing $formula"
    done
    [ -n "$missing" ] || return 0
    command -v brew >/dev/null || fail "Install Homebrew, then try again; Velko needs:$missing"
    echo "Installing:$missing"
    # shellcheck disable=SC2086
    brew install --quiet $missing
}

# configure_and_build PRESET [TARGET...]: quiet while all goes well.
configure_and_build() {
    local preset="$1" output="$root/build/$1/velko-build.log"
    shift
    mkdir -p "$(dirname "$output")"
    local targets=""
    [ $# -eq 0 ] || targets="--target $*"
    # shellcheck disable=SC2086
    (cd "$root" && cmake --preset "$preset" && cmake --build --preset "$preset" $targets) >"$output" 2>&1 || {
        tail -n 60 "$output" >&2
        fail "The build failed; all of it is in build/$preset/velko-build.log."
    }
}
