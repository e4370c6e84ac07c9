# Completion of vantor-prep-cli for bash.

_vantor_prep_cli() {
    local cur prev words cword split
    _init_completion -s || return

    local call="" i
    for ((i = 1; i < cword; i++)); do
        case ${words[i]} in
        cards | qr | convert | list | parse)
            call=${words[i]}
            break
            ;;
        esac
    done
    if [[ -z $call ]]; then
        mapfile -t COMPREPLY < <(compgen -W "cards qr convert list parse --help --version" -- "$cur")
        return
    fi

    case $prev in
    --density)
        mapfile -t COMPREPLY < <(compgen -W "large compact" -- "$cur")
        return
        ;;
    --from)
        mapfile -t COMPREPLY < <(compgen -W "csv vantor" -- "$cur")
        return
        ;;
    --output)
        case $call in
        cards) _filedir pdf ;;
        qr) _filedir -d ;;
        convert) _filedir '@(csv|json|vantor)' ;;
        esac
        return
        ;;
    esac
    $split && return

    if [[ $cur == -* ]]; then
        local options="--help --version"
        case $call in
        cards) options+=" --output --density --from" ;;
        qr | convert) options+=" --output --from" ;;
        list) options+=" --from" ;;
        esac
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
    elif [[ $call == parse ]]; then
        _filedir
    else
        _filedir '@(csv|json|vantor)'
    fi
} &&
    complete -F _vantor_prep_cli vantor-prep-cli
