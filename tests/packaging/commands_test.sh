#!/usr/bin/env bash
# The files that the app brings for shells and for man are those that `velko` makes: commands_test.sh VELKO_PLAYGROUND
# With --renew as a second argument it writes them anew.
set -euo pipefail
here="$(cd "$(dirname "$0")/../../packaging/commands" && pwd)"
velko() { (exec -a velko "$playground" "$@"); }
playground="$1"
made="$(mktemp -d)"
trap 'rm -rf "$made"' EXIT
velko completions bash >"$made/velko.bash"
velko completions fish >"$made/velko.fish"
velko completions zsh >"$made/_velko"
velko help --man >"$made/velko.1"
if [ "${2:-}" = --renew ]; then
    cp "$made"/* "$here/"
fi
diff -r "$here" "$made" || {
    echo "Renew them: tests/packaging/commands_test.sh VELKO_PLAYGROUND --renew" >&2
    exit 1
}
