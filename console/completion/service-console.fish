# Completion of service-console for fish. The program itself says which words fit; __files stands for files.
function __service_console_complete
    set -l typed (commandline -opc)
    set -l begun (commandline -ct)
    for word in ($typed[1] __complete $typed[2..] "$begun" 2>/dev/null)
        if test $word = __files
            __fish_complete_path "$begun"
        else
            echo $word
        end
    end
end
complete -c service-console -f -a '(__service_console_complete)'
