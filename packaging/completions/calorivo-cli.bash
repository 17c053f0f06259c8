# Completion of calorivo-cli for bash.

_calorivo_cli() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} word command=list
    local commands='list watch keys fans drives row log why'
    local options='--keysfile --simulate --sys --custommodel --model-tables --all-chips --help --version'
    local IFS=$' \t\n'
    COMPREPLY=()
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in list|watch|keys|fans|drives|row|log|why) command=$word; commands=; break ;; esac
    done
    # "--option=value" comes as three words.
    if [[ $current == = ]]; then current=; elif [[ $previous == = ]]; then previous=${COMP_WORDS[COMP_CWORD-2]}; fi
    case $previous in
        --keysfile|-keysfile) compopt -o filenames; COMPREPLY=($(compgen -f -- "$current")); return ;;
        --sys|--model-tables) compopt -o filenames; COMPREPLY=($(compgen -d -- "$current")); return ;;
        --area)
            local IFS=$'\n'
            COMPREPLY=($(compgen -W $'All\nCPU\nCPU\\ Relative\nGPU\nBattery\nEnclosure\nHard\\ Drive\nLCD\nLogic\\ Board\nMemory\nNorthbridge\nOptical\\ Drive\nPalm\\ Rest\nPCI\nPower\\ Supply\nThunderbolt\nWireless' -- "$current"))
            COMPREPLY=("${COMPREPLY[@]// /\\ }")
            return ;;
        --custommodel|-custommodel|--interval|--cycles) return ;;
    esac
    case $command in
        list) options+=' --area --fahrenheit --json' ;;
        watch) options+=' --interval --cycles --quiet --fahrenheit' ;;
        row) options+=' --fans --fahrenheit' ;;
        log) options+=' --interval --cycles --fans --drives --print --fahrenheit' ;;
        drives|why) options+=' --fahrenheit --json' ;;
    esac
    if [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    elif [[ $command == log ]]; then
        compopt -o filenames
        COMPREPLY=($(compgen -f -- "$current"))
    else
        COMPREPLY=($(compgen -W "$commands" -- "$current"))
    fi
}
complete -F _calorivo_cli calorivo-cli
