# Completion of calorivo for bash.

_calorivo() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local options='--preferences --login --simulate --keysfile --sys --custommodel --model-tables --all-chips --help --version'
    local IFS=$' \t\n'
    COMPREPLY=()
    # "--option=value" comes as three words.
    if [[ $current == = ]]; then current=; elif [[ $previous == = ]]; then previous=${COMP_WORDS[COMP_CWORD-2]}; fi
    case $previous in
        --keysfile|-keysfile) compopt -o filenames; COMPREPLY=($(compgen -f -- "$current")) ;;
        --sys|--model-tables) compopt -o filenames; COMPREPLY=($(compgen -d -- "$current")) ;;
        --custommodel|-custommodel) ;;
        *) COMPREPLY=($(compgen -W "$options" -- "$current")) ;;
    esac
}
complete -F _calorivo calorivo
