# Completion of tessaro in bash. Sub-commands, options and their words come from the program's own --help.
_tessaro() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} program=${COMP_WORDS[0]}
    local path=() word help
    case $previous in
    --progress) mapfile -t COMPREPLY < <(compgen -W "auto bar plain json none" -- "$current"); return ;;
    --set) mapfile -t COMPREPLY < <(compgen -W "outWeld= nvExpandBranch= orAxiss= clearCache= strict=" -- "$current"); compopt -o nospace; return ;;
    --root | --out) mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
    --model | --select-file | --report | --log-file | -o | --output) mapfile -t COMPREPLY < <(compgen -f -- "$current"); return ;;
    --select | --deselect | --input | --objects | --seed | --depth) return ;;
    esac
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
        run | commands | model | check) [ ${#path[@]} -eq 0 ] && path+=("$word") ;;
        -*) ;;
        *) [ ${#path[@]} -eq 1 ] && [[ ${path[0]:-} == model || ${path[0]:-} == check ]] && path+=("$word") ;;
        esac
    done
    help=$("$program" "${path[@]}" --help 2>/dev/null) || return
    local words
    words=$(sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z]*\) .*/\1/p' <<<"$help")
    [[ $current == -* ]] && words=$(grep -E '^  -' <<<"$help" | grep -oE '^  -[^ ]*' | tr ',' ' ')
    [[ ${path[0]:-} == run && $current != -* ]] && words="$("$program" commands 2>/dev/null) XDBOUT"
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    [ ${#COMPREPLY[@]} -gt 0 ] || mapfile -t COMPREPLY < <(compgen -f -- "$current")
}
complete -o filenames -F _tessaro tessaro
