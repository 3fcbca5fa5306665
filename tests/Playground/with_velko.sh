# A playground whose Velko takes commands, for shell tests, which read this file: . with_velko.sh VELKO_PLAYGROUND
set -uo pipefail
playground="$(realpath "$1")"
folder="$(mktemp -d)"
PATH="$(dirname "$playground"):$PATH"
export VELKO_SOCKET="$folder/home/commands/velko.sock"
running=

finish() {
    [ -z "$running" ] || { kill -9 "$running" && wait "$running"; } 2>/dev/null
    rm -rf "$folder"
}
trap finish EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

begin() {
    "$playground" --home "$folder/home" --no-open >"$folder/out" 2>&1 &
    running=$!
    for _ in $(seq 200); do
        ! velko status >/dev/null 2>&1 || return 0
        sleep 0.05
    done
    fail "no playground: $(cat "$folder/out")"
}

# says STATUS PATTERN WORD...: what a command prints, on either output, and how it ends.
says() {
    local wanted=$1 pattern=$2 seen status
    shift 2
    seen="$(velko "$@" 2>&1)"
    status=$?
    [ $status -eq "$wanted" ] || fail "velko $* ended with $status, not $wanted: $seen"
    [[ $seen =~ $pattern ]] || fail "velko $* says: $seen"
}

# row APP: the app's line of the list.
row() { velko list | grep "$1"; }

# Waits until the sample apps are in the menu bar, and it is tidy.
settle() {
    for _ in $(seq 400); do
        [ -z "$(row Dropbox)" ] || [ -z "$(row Figma)" ] || break
        sleep 0.05
    done
    says 0 '^$' wait-until tidy --timeout 30
}

mkdir "$folder/home"
echo '{"version": 1, "hasCompletedSetup": true, "offersPresenting": true,
       "sections": {"com.getdropbox.dropbox": "tucked", "com.figma.agent": "buried"}}' >"$folder/home/layout.json"
begin
