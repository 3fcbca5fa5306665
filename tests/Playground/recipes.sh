#!/usr/bin/env bash
# Takes the recipes of docs/commands.md from that page and runs them: recipes.sh VELKO_PLAYGROUND
here="$(cd "$(dirname "$0")" && pwd)"
. "$here/with_velko.sh" "$1"

recipes="$folder/recipes"
mkdir "$recipes"
PATH="$recipes:$PATH"
# Each begins with "#!/bin/sh", and its second line begins with its name.
awk -v folder="$recipes" '
    /^```/ { name = "" }
    first && /^# / { name = $2; sub(/:$/, "", name); file = folder "/" name; print "#!/bin/sh" >file }
    { first = /^#!\/bin\/sh/ }
    name != "" { print >file }
' "$here/../../docs/commands.md"
chmod +x "$recipes"/*
[ "$(ls "$recipes")" = "$(printf '%s\n' velko-on-display velko-pick velko-quiet velko-while-recording)" ] ||
    fail "the page has other recipes: $(ls "$recipes")"

# until_says PATTERN: waits until the status is as it should be.
until_says() {
    for _ in $(seq 400); do
        [[ ! $(velko status) =~ $1 ]] || return 0
        sleep 0.05
    done
    fail "the status is never $1: $(velko status)"
}

settle
cp "$(command -v sleep)" "$folder/recorder"
velko-while-recording recorder &
watcher=$!
"$folder/recorder" 9 &
recorder=$!
until_says 'buried icons are out'
until_says 'buried icons are out'
sleep 7 # longer than icons stay out by themselves
[[ $(velko status) =~ 'buried icons are out' ]] || fail "they do not stay out: $(velko status)"
wait "$recorder"
until_says '^Tidy'
kill "$watcher" && wait "$watcher" 2>/dev/null

echo "Resolution: 1" >"$folder/displays"
printf '#!/bin/sh\ncat "%s"\n' "$folder/displays" >"$recipes/system_profiler"
printf '#!/bin/sh\ngrep Dropbox\n' >"$recipes/fzf"
chmod +x "$recipes"/*
EVERY=0.2 velko-on-display &
watcher=$!
sleep 1
velko show
until_says 'tucked icons are out'
echo "Resolution: 2" >>"$folder/displays"
velko wait-until tidy --timeout 4 || fail "a new display does not tuck"
kill "$watcher" && wait "$watcher" 2>/dev/null

velko-pick
until_says 'com.getdropbox.dropbox is open'
velko-quiet velko status | grep -q 'does not ask' || fail "it still asks"
! velko status | grep -q 'does not ask' || fail "it does not ask again"
echo "every recipe does what the page says"
