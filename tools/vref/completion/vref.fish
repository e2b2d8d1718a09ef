# Completion of vref for fish, by what the tool itself says.

function __vref_complete
    # The words before the one at the cursor come without their quotation marks, and that one as it
    # is typed.
    set -l before (commandline -opc)
    set -l typed (commandline -ct)
    set -l tool $before[1]
    set -e before[1]
    set -l quoted
    if set -q before[1]
        set quoted (string escape --no-quoted -- $before)
    end
    set -l answers ($tool complete --words (count $before) --quoted -- $quoted "$typed" 2>/dev/null)
    for answer in $answers
        if test "$answer" = \tfolders
            # Those of "--option=" keep it.
            set -l option (string match -r -- '^--[^=]*=' "$typed")
            for folder in (__fish_complete_directories (string replace -r -- '^--[^=]*=' '' "$typed") '')
                echo -- "$option"$folder
            end
        else
            echo -- $answer
        end
    end
end

complete -c vref -f -k -a '(__vref_complete)'
