# SPDX-License-Identifier: GPL-3.0-or-later
# bash completion for tambo: commands, options, formats, styles and files.

_tambo_words=$(cd "${BASH_SOURCE[0]%/*}/../.." && pwd)/tambo/completion/words

_tambo()
{
    local cur prev words cword word
    _init_completion || return
    while IFS= read -r word; do
        if [[ $word == / ]]; then
            _filedir
        else
            COMPREPLY+=("$word")
        fi
    done < <("$_tambo_words" "${words[0]}" "${words[@]:1:cword-1}" "$cur" 2>/dev/null)
} && complete -F _tambo tambo
