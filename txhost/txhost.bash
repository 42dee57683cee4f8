# Completion of txhost's command line in bash. What there is to complete comes from "txhost help", so it is that of the program.

# _txhost_help [COMMAND]: the help of the program that is being completed.
_txhost_help() {
    "${_txhost_program/#\~/$HOME}" help "$@" 2>/dev/null
}

_txhost_commands() {
    _txhost_help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p'
}

# Both read a command's help.
_txhost_options() {
    sed -n 's/^  \(-h,\)\{0,1\}\(--[a-z0-9-]*\).*/\2/p'
}
_txhost_value() { # OPTION: what its help calls its value, such as PATH or TEXT:{git,svn,p4}; nothing for a flag
    sed -n "s/^  $1 \([A-Z][^ =]*\).*/\1/p"
}

_txhost_offer() { # ARGUMENTS OF compgen
    mapfile -t COMPREPLY < <(compgen "$@" -- "$current")
}
_txhost_offer_paths() { # -f or -d
    compopt -o filenames 2>/dev/null
    _txhost_offer "$1"
}

_txhost_offer_value() { # VALUE
    case $1 in
        *{*}*) local choices=${1#*\{}; choices=${choices%%\}*}; _txhost_offer -W "${choices//,/ }" ;;
        PATH) _txhost_offer_paths -f ;;
        DIR) _txhost_offer_paths -d ;;
    esac
}

_txhost_offer_argument() { # COMMAND HELP
    case $1:$2 in
        help:*) _txhost_offer -W "$(_txhost_commands)" ;;
        watch:* | *$'\n  FILE '*) _txhost_offer_paths -f ;;
        *$'\n  DIR '* | *$'\n  REPO '*) _txhost_offer_paths -d ;;
    esac
}

# _txhost PROGRAM: bash calls it with the words of the line in COMP_WORDS, where "=" is a word of its own.
_txhost() {
    local _txhost_program=$1 current=${COMP_WORDS[COMP_CWORD]} last=$((COMP_CWORD - 1)) word command='' commands help value=''
    [ "$current" != = ] || current=
    [ "${COMP_WORDS[last]}" != = ] || last=$((last - 1))
    COMPREPLY=()
    commands=$(_txhost_commands)
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        if grep -qxF -e "$word" <<<"$commands"; then
            command=$word
            break
        fi
    done
    help=$(_txhost_help $command)
    [[ ${COMP_WORDS[last]} != --* ]] || value=$(_txhost_value "${COMP_WORDS[last]}" <<<"$help")
    if [ -n "$value" ]; then
        _txhost_offer_value "$value"
    elif [[ $current == -* ]]; then
        _txhost_offer -W "$(_txhost_options <<<"$help")"
    elif [ -z "$command" ]; then
        _txhost_offer -W "$commands"
    else
        _txhost_offer_argument "$command" "$help"
    fi
}

complete -F _txhost txhost
