# Completions of velko for bash.
_velko() {
    local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]} place=$((COMP_CWORD - 1)) words=
    if ((COMP_CWORD > 2)); then
        case "$command/${COMP_WORDS[2]}" in
            layout/export|layout/import|history/restore) command="$command ${COMP_WORDS[2]}" place=$((place - 1)) ;;
        esac
    fi
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words="show tuck toggle search open place ask present list status layout history log wait-until completions help version"
    elif [[ $word == -* ]]; then
        case "$command" in
            'show') words="--buried" ;;
            'list') words="--json" ;;
            'status') words="--json" ;;
            'history') words="--json" ;;
            'log') words="-f" ;;
            'wait-until') words="--timeout" ;;
            'help') words="--man" ;;
        esac
    else
        case "$command/$place" in
            'open/1') words=$(velko list 2>/dev/null | cut -f3) ;;
            'place/1') words=$(velko list 2>/dev/null | cut -f3) ;;
            'place/2') words="bar tucked buried" ;;
            'ask/1') words="on off" ;;
            'present/1') words="on off" ;;
            'layout export/1') return ;;
            'layout import/1') return ;;
            'wait-until/1') words="tidy revealed" ;;
            'completions/1') words="bash fish zsh" ;;
            'help/1') words="show tuck toggle search open place ask present list status layout history log wait-until completions help version" ;;
            'history/1') words="restore" ;;
            'layout/1') words="export import" ;;
        esac
    fi
    COMPREPLY=($(compgen -W "$words" -- "$word"))
}
complete -o default -F _velko velko
