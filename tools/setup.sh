# ./run and ./test source this file. It finds out what this machine lacks, and installs it.

# What each script needs in addition to a bare Debian 12.
PLAY_PACKAGES="g++ cmake ninja-build pkg-config nlohmann-json3-dev libplist-dev libmicrohttpd-dev"
TEST_PACKAGES="$PLAY_PACKAGES libgtest-dev libbenchmark-dev tzdata python3"
FULL_PACKAGES="$TEST_PACKAGES clang-19 clang-format-19 clang-tidy-19 libclang-rt-19-dev llvm-19 nodejs npm chromium"

PLAY_FORMULAE="cmake ninja pkgconf nlohmann-json libplist libmicrohttpd"
TEST_FORMULAE="$PLAY_FORMULAE googletest google-benchmark"

on_mac() { [ "$(uname -s)" = Darwin ]; }

cores() { getconf _NPROCESSORS_ONLN; }

fail() {
    echo "$1" >&2
    exit 1
}

# Whether a package is installed: dpkg knows it, or, for tools, there is a command of that name.
has_package() {
    case "$1" in
        cmake | python3 | npm | g++) command -v "$1" >/dev/null && return 0 ;;
        ninja-build) command -v ninja >/dev/null && return 0 ;;
        nodejs) command -v node >/dev/null && return 0 ;;
    esac
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# apt_get ARGUMENT...: runs apt-get as root, quietly unless it fails. If another program holds its lock, it says
# which, and waits up to ten minutes.
apt_get() {
    local as_root="" said="" answer deadline=$((SECONDS + 600))
    [ "$(id -u)" = 0 ] || as_root=sudo
    until answer="$(DEBIAN_FRONTEND=noninteractive $as_root apt-get -qq "$@" 2>&1 >/dev/null)"; do
        case "$answer" in
            *"Could not get lock"* | *"Unable to lock"*) ;;
            *) fail "$answer" ;;
        esac
        [ $SECONDS -lt $deadline ] || fail "$answer"
        if [ -z "$said" ]; then
            said=yes
            echo "Waiting until another package manager is done: $(echo "$answer" | sed -n 's/^E: //p' | head -n 1)"
        fi
        sleep 3
    done
}

install_packages() {
    local missing="" package
    for package in "$@"; do
        has_package "$package" || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    command -v apt-get >/dev/null || fail "This machine lacks:$missing. Install them, then try again."
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null || fail "Run this as root, or install:$missing"
    echo "Installing:$missing"
    # An old package list names versions that no longer exist, so the list is updated first.
    apt_get update
    # shellcheck disable=SC2086
    apt_get install -y --no-install-recommends $missing
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

# quietly PRESET COMMAND...: runs the command. Its output goes into a file; if it fails, the end of it is shown.
quietly() {
    local output="build/$1/velko-build.log"
    shift
    mkdir -p "$(dirname "$root/$output")"
    (cd "$root" && "$@") >>"$root/$output" 2>&1 || {
        tail -n 60 "$root/$output" >&2
        fail "The build failed; all of it is in $output."
    }
}

# configure PRESET: configures, and uses ccache if it is installed.
configure() {
    rm -f "$root/build/$1/velko-build.log"
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    quietly "$1" cmake --preset "$1"
}

# configure_and_build PRESET [TARGET...]: prints nothing unless it fails.
configure_and_build() {
    local preset="$1" targets=""
    shift
    [ $# -eq 0 ] || targets="--target $*"
    configure "$preset"
    # shellcheck disable=SC2086
    quietly "$preset" cmake --build --preset "$preset" $targets
}

node_modules() { (cd "$root" && npm install --no-save --silent); }
