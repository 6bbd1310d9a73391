# Completion for bash. The program itself says which commands and options there are.
_asset_connector()
{
    local word=${COMP_WORDS[COMP_CWORD]} words
    if [ "$COMP_CWORD" -eq 1 ]; then
        words=$("$1" --help 2>/dev/null | sed -n '/^Subcommands:/,$ s/^  \([a-z]\{1,\}\) .*/\1/p')
    elif [[ $word == -* ]]; then
        words=$("$1" "${COMP_WORDS[1]}" --help 2>/dev/null | grep -o -e '--[a-z][a-z-]*')
    fi
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
    [ -n "$words" ] || compopt -o default 2>/dev/null  # a file
}
complete -F _asset_connector asset-connector
