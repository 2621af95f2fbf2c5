# SPDX-License-Identifier: GPL-3.0-or-later
# fish completion for tambo: commands, options, formats, styles and files.

set -g __tambo_words (status dirname)/../../tambo/completion/words

function __tambo_complete
    set -l current (commandline -ct)
    for word in ($__tambo_words (commandline -opc) "$current" 2>/dev/null)
        if test "$word" = /
            __fish_complete_path "$current"
        else
            echo $word
        end
    end
end

complete -c tambo -f -a '(__tambo_complete)'
