# Completion of quorvex-tool for bash. Source this file, or put it into the folder of your bash's completions.

# The command in the line so far; nothing before there is one. Values of options are passed over.
_quorvex_tool_command() {
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            --port | --trace | --record | --frames)
                [[ ${COMP_WORDS[i + 1]} != "=" ]] || ((i++)) # bash takes --port=COM1 for three words
                ((i++))
                ;;
            -*) ;;
            *)
                echo "${COMP_WORDS[i]}"
                return
                ;;
        esac
    done
}

_quorvex_tool_options() {
    case $1 in
        write) echo --with-identity --dry-run --port --trace --record ;;
        verify) echo --without-identity --port --trace --record ;;
        antenna) echo --tbr6 --port --trace --record ;;
        screen) echo --frames --port --trace --record ;;
        read | set | production-values | version) echo --port --trace --record ;;
        "") echo --port --trace --record --version ;;
    esac
    echo --json --help
}

_quorvex_tool_words() {
    case $1 in
        "") echo ports read write verify set production-values version antenna screen show check diff ;;
        set) echo psn system-id pli rf-carriers ;;
        version) echo beltpack antenna ;;
    esac
}

# Files that end so, and folders on the way to one.
_quorvex_tool_files() {
    compgen -f -X "!*.$1" -- "$2"
    compgen -d -- "$2"
}

_quorvex_tool() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command
    command=$(_quorvex_tool_command)
    local IFS=$'\n'
    if [[ $word == "=" ]]; then
        word=
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $previous in
        psn | system-id | pli | rf-carriers)
            COMPREPLY=() # a value comes next
            return
            ;;
        --port)
            local last=${word##*,} # of a list
            local before=${word%"$last"}
            mapfile -t COMPREPLY < <(
                compgen -P "$before" -W "$(printf 'COM%d\n' {1..12})" -- "$last"
                [[ $last != /* ]] || compgen -P "$before" -f -- "$last"
            )
            return
            ;;
        --trace)
            mapfile -t COMPREPLY < <(compgen -f -- "$word")
            return
            ;;
        --record)
            mapfile -t COMPREPLY < <(compgen -d -- "$word")
            return
            ;;
        --frames)
            COMPREPLY=()
            return
            ;;
    esac
    if [[ $word == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_quorvex_tool_options "$command" | tr ' ' '\n')" -- "$word")
        return
    fi
    case $command in
        read | write | verify | show | check | diff)
            mapfile -t COMPREPLY < <(_quorvex_tool_files bpc "$word")
            ;;
        screen) mapfile -t COMPREPLY < <(_quorvex_tool_files bmp "$word") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$(_quorvex_tool_words "$command" | tr ' ' '\n')" -- "$word") ;;
    esac
}

complete -o filenames -F _quorvex_tool quorvex-tool
