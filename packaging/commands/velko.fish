# Completions of velko for fish.
function __velko_apps
    velko list 2>/dev/null | string replace -r '^[^\t]*\t([^\t]*)\t([^\t]*).*' '$2\t$1'
end
function __velko_after
    set -l words (commandline -opc)
    test "$words[2..]" = "$argv[1]"
end
function __velko_within
    set -l words (commandline -opc)
    test (count $words) -eq (math $argv[2] + (count (string split ' ' $argv[1])))
    and string match -q -- "$argv[1] *" "$words[2..] "
end
complete -c velko -f
complete -c velko -n '__velko_after '\'''\''' -a show -d 'bring out the tucked icons'
complete -c velko -n '__velko_after '\'''\''' -a tuck -d 'tuck the icons away'
complete -c velko -n '__velko_after '\'''\''' -a toggle -d 'do what a click on the broom does'
complete -c velko -n '__velko_after '\'''\''' -a search -d 'open the search, perhaps with a text in its field'
complete -c velko -n '__velko_after '\'''\''' -a open -d 'open the menu of an app'\''s icon, wherever the icon is'
complete -c velko -n '__velko_after '\'''\''' -a place -d 'say where an app'\''s icons belong'
complete -c velko -n '__velko_after '\'''\''' -a ask -d 'whether Velko asks where new icons go'
complete -c velko -n '__velko_after '\'''\''' -a present -d 'show an audience only the icons that you chose for it, or end that'
complete -c velko -n '__velko_after '\'''\''' -a list -d 'list the apps in the menu bar'
complete -c velko -n '__velko_after '\'''\''' -a status -d 'say what shows and what is wrong'
complete -c velko -n '__velko_after '\'''\''' -a layout -d 'the layout as a file'
complete -c velko -n '__velko_after '\'''\''' -a history -d 'list the earlier layouts, the newest first'
complete -c velko -n '__velko_after '\'''\''' -a log -d 'print the log'\''s newest lines'
complete -c velko -n '__velko_after '\'''\''' -a wait-until -d 'wait until the bar is tidy, or the icons are out'
complete -c velko -n '__velko_after '\'''\''' -a completions -d 'print the completions for a shell'
complete -c velko -n '__velko_after '\'''\''' -a help -d 'explain the commands, or one of them'
complete -c velko -n '__velko_after '\'''\''' -a version -d 'print the version'
complete -c velko -n '__fish_seen_subcommand_from show' -l buried -d 'the buried ones too'
complete -c velko -n '__fish_seen_subcommand_from list' -l json -d 'as JSON'
complete -c velko -n '__fish_seen_subcommand_from status' -l json -d 'as JSON'
complete -c velko -n '__velko_after layout' -a export -d 'write the layout to a file for another Mac'
complete -c velko -n '__velko_after layout' -a import -d 'take over the places and settings of such a file'
complete -c velko -n '__velko_after history' -a restore -d 'bring back an earlier layout, by its number in the list'
complete -c velko -n '__fish_seen_subcommand_from history' -l json -d 'as JSON'
complete -c velko -n '__fish_seen_subcommand_from log' -s f -d 'go on with each new line, until Ctrl-C'
complete -c velko -n '__fish_seen_subcommand_from wait-until' -l timeout -x -d 'give up after that many seconds, with status 1'
complete -c velko -n '__fish_seen_subcommand_from help' -l man -d 'the manual page, in the language of man'
complete -c velko -n '__velko_within "open" 1' -a '(__velko_apps)'
complete -c velko -n '__velko_within "place" 1' -a '(__velko_apps)'
complete -c velko -n '__velko_within "place" 2' -a 'bar tucked buried'
complete -c velko -n '__velko_within "ask" 1' -a 'on off'
complete -c velko -n '__velko_within "present" 1' -a 'on off'
complete -c velko -n '__velko_within "layout export" 1' -F
complete -c velko -n '__velko_within "layout import" 1' -F
complete -c velko -n '__velko_within "wait-until" 1' -a 'tidy revealed'
complete -c velko -n '__velko_within "completions" 1' -a 'bash fish zsh'
complete -c velko -n '__velko_within "help" 1' -a 'show tuck toggle search open place ask present list status layout history log wait-until completions help version'
