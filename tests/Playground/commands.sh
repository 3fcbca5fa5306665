#!/usr/bin/env bash
# Gives every command to the Velko of a running playground: commands.sh VELKO_PLAYGROUND
here="$(cd "$(dirname "$0")" && pwd)"
. "$here/with_velko.sh" "$1"

tab=$'\t'
mkdir "$folder/elsewhere"
grep -q "export VELKO_SOCKET='$VELKO_SOCKET'" "$folder/out" || fail "it does not say how: $(cat "$folder/out")"
grep -q "velko status --json" "$folder/out" || fail "it does not say what"

settle
says 0 '^Tidy. 2 apps are hidden.$' status
for what in status list; do
    velko $what --json | python3 "$here/check_schema.py" "$what" || fail "$what --json is not as the schema says"
done
[[ $(row Dropbox) == "tucked${tab}Dropbox${tab}com.getdropbox.dropbox${tab}hidden" ]] || fail "$(row Dropbox)"

says 0 '^$' show
says 0 '^$' wait-until revealed
[[ $(row Dropbox) != *hidden && $(row Figma) == *hidden ]] || fail "what is out: $(velko list)"
says 1 'not tidy yet' wait-until tidy --timeout 1
says 0 '^$' show --buried
says 0 '^$' wait-until revealed --timeout 5
[[ $(row Figma) != *hidden ]] || fail "$(row Figma)"
says 0 '^$' tuck
says 0 '^$' wait-until tidy --timeout 5
says 0 '^$' toggle
says 0 'are out' status
says 0 '^$' toggle
says 0 '^$' wait-until tidy --timeout 5

says 0 '^$' open dropbox
says 0 'com.getdropbox.dropbox is open' status
says 0 '^$' tuck
says 1 'more than one app' place g bar
says 1 'is called “Nobody”' open Nobody
says 0 '^$' place Dropbox bar
[[ $(row Dropbox) == bar* ]] || fail "$(row Dropbox)"
says 2 'is not bar, tucked or buried' place Dropbox under
says 0 '^$' ask off
says 0 'does not ask' status
says 0 '^$' ask on
says 2 'is not on or off' ask maybe
says 0 '^$' present on
says 0 '^Presenting' status
says 1 'stay hidden' show
says 1 'stays hidden' open figma
says 0 '^$' present off
says 0 '^$' wait-until tidy --timeout 5
says 0 '^$' search
says 0 '^$' search slack

cd "$folder/elsewhere" || exit 1
says 0 '^$' layout export ./mine.velko
[ -s "$folder/elsewhere/mine.velko" ] || fail "the layout is not where it was wanted"
says 0 '^$' place Dropbox tucked
says 0 '^$' layout import mine.velko
[[ $(row Dropbox) == bar* ]] || fail "the import did not bring back: $(row Dropbox)"
says 1 'not there' layout import nothing.velko

earlier="$(velko history | head -n 1 | cut -f1,4)"
[[ $earlier == *"${tab}import" ]] || fail "the import has left no way back: $(velko history)"
velko history --json | python3 "$here/check_schema.py" history || fail "history --json is not as the schema says"
says 0 '^$' history restore "${earlier%%"$tab"*}"
[[ $(row Dropbox) == tucked* ]] || fail "the layout before the import is not back: $(row Dropbox)"
says 1 'no earlier layout with the number 999' history restore 999
says 2 'no number of the list' history restore 0
says 1 '^velko: /proc/a: ' layout export /proc/a

says 0 'com.getdropbox.dropbox -> bar' log
velko log -f >followed &
follower=$!
until grep -qs starting followed; do sleep 0.05; done
velko place Figma tucked
for _ in $(seq 100); do ! grep -q 'com.figma.agent -> tucked' followed || break; sleep 0.05; done
grep -q 'com.figma.agent -> tucked' followed || fail "log -f does not follow"
kill "$follower" && wait "$follower" 2>/dev/null
[ "$(velko log | head -n 1 | wc -l)" = 1 ] || fail "a reader that stops"

says 0 'velko place APP SECTION' help
says 0 'wait-until STATE \[--timeout SECONDS\]' help wait-until
says 0 '^.TH VELKO 1' help --man
says 0 '^velko [0-9]' version
says 0 '^velko [0-9]' --version
for shell in bash fish zsh; do says 0 '^#' completions $shell; done
says 2 'Try: velko help' dance
says 2 'Say what to do'
says 2 'no option' tuck --buried

# What bash offers.
offers() {
    velko completions bash >"$folder/completions"
    bash --norc -c '. "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _velko; echo "${COMPREPLY[@]}"' "$folder/completions" "$@"
}
[[ $(offers velko pl) == place ]] || fail "bash: $(offers velko pl)"
[[ $(offers velko layout "") == "export import" ]] || fail "bash: $(offers velko layout "")"
[[ $(offers velko history "") == restore ]] || fail "bash: $(offers velko history "")"
[[ $(offers velko history restore "") == "" ]] || fail "bash: $(offers velko history restore "")"
[[ $(offers velko place com.getdrop) == com.getdropbox.dropbox ]] || fail "bash: $(offers velko place com.getdrop)"
[[ $(offers velko place Slack "") == "bar tucked buried" ]] || fail "bash: $(offers velko place Slack "")"
[[ $(offers velko wait-until --) == --timeout ]] || fail "bash: $(offers velko wait-until --)"

# A socket that is left over from a crash is replaced; one that nobody serves is no Velko.
kill -9 "$running" && wait "$running" 2>/dev/null
says 1 'Velko does not run' status
begin
says 0 '^$' wait-until tidy --timeout 30
kill "$running" && wait "$running"
[ ! -e "$VELKO_SOCKET" ] || fail "the socket is left behind"
says 1 'Velko does not run' status
running=
echo "every command is answered as it should be"
