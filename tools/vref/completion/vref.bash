# Completion of vref for bash, by what the tool itself says; loaded by bash-completion.

# Writes the rest of a word, of which $1 is the part that readline does not replace and $2 the
# quotation mark that is open, as it is to be typed. $3 is the whole word.
_vref_typed()
{
    local text=${3#"$1"}
    case $2 in
        "'") printf '%s' "${text//\'/\'\\\'\'}" ;;
        '"')
            text=${text//\\/\\\\} text=${text//\"/\\\"} text=${text//\$/\\\$}
            printf '%s' "${text//\`/\\\`}"
            ;;
        *)
            [[ $text ]] || return
            # Without braces around it, which are quoted, a comma is plain.
            printf -v text '%q' "$text"
            printf '%s' "${text//\\,/,}"
            ;;
    esac
}

_vref()
{
    local cur prev words cword split
    _init_completion -n := || return
    local line text sign quote= kept= plain=${cur%%[\"\']*}
    [[ $plain == "$cur" ]] || quote=${cur:${#plain}:1}
    # Readline replaces what follows the last sign that divides words for it.
    for sign in : =; do
        [[ $COMP_WORDBREAKS == *"$sign"* && $plain == *"$sign"* ]] || continue
        text=${plain%"${plain##*"$sign"}"}
        ((${#text} > ${#kept})) && kept=$text
    done

    COMPREPLY=()
    while IFS= read -r line; do
        if [[ $line == $'\tfolders' ]]; then
            cur=${cur#"$kept"}
            _filedir -d
            return
        fi
        text=${line%%$'\t'*}
        [[ $text == "$kept"* ]] || continue
        [[ $text == *[.:=,] ]] && compopt -o nospace
        COMPREPLY+=("$(_vref_typed "$kept" "$quote" "$text")")
    done < <("${words[0]/#\~\//$HOME/}" complete --words "$((cword - 1))" --quoted -- \
        "${words[@]:1:cword}" 2>/dev/null)
} && complete -o nosort -F _vref vref
