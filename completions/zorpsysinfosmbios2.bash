# Completion for bash, loaded by the package bash-completion.

_zorpsysinfosmbios2() {
    local cur prev words cword split
    # A setting is one word: NAME=VALUE.
    _init_completion -s || return

    local values=""
    case $prev in
        -f | --format) values="text json ndjson" ;;
        -l | --language) values="en de zh_CN" ;;
        -t | --type) values="bios system baseboard chassis processor memory cache connector slot" ;;
        --log-level) values="1 2 3 4 5" ;;
        -o | --output | --settings)
            _filedir
            return
            ;;
        -s | --set)
            case $cur in
                verbose=* | FilterTrivialStrings=*) values="true false" cur=${cur#*=} ;;
                LoadTable=* | SaveTable=*)
                    cur=${cur#*=}
                    _filedir
                    return
                    ;;
                *)
                    values="verbose= FilterTrivialStrings= LoadTable= SaveTable="
                    compopt -o nospace
                    ;;
            esac
            ;;
        *)
            $split && return
            if [[ $cur != -* ]]; then
                _filedir
                return
            fi
            values="-a --all --catalogue -d --details -f --format -h --help -l --language --log-level -o --output -s --set
                --settings -t --tables --type -V --version"
            ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$cur")
} && complete -F _zorpsysinfosmbios2 zorpsysinfosmbios2
