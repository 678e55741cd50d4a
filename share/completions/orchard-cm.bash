# Completion of orchard-cm for bash. Unit names come from the project itself.

_orchard_cm_project() {
    local i
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} == -p || ${COMP_WORDS[i]} == --project ]]; then
            printf '%s\n' -p "${COMP_WORDS[i + 1]//\\/}"
            return
        fi
    done
}

_orchard_cm_lines() {
    # The lines of standard input that begin with the present word, quoted for the command line.
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        [[ $line == "$cur"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done
}

_orchard_cm_files() {
    # Files whose names fit the given filter of compgen, and directories.
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f "$@" -- "$cur"; compgen -d -- "$cur")
}

_orchard_cm() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local commands='new list show checkout expand property tool tools batch'
    local global='-p --project --json --yes --no --yes-to-all --trace --log --help --version'
    local command='' i project
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            -p | --project | --log) ((i++)) ;;
            -*) ;;
            *) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    mapfile -t project < <(_orchard_cm_project)

    case $prev in
        -p | --project) _orchard_cm_files -X '!*.orp'; return ;;
        --tool) _orchard_cm_lines < <(orchard-cm tools 2>/dev/null | awk 'NR > 1 { print $1 }'); return ;;
        --unit) _orchard_cm_lines < <(orchard-cm "${project[@]}" list --paths 2>/dev/null); return ;;
        --mode) mapfile -t COMPREPLY < <(compgen -W 'ro rw' -- "$cur"); return ;;
        --log) [[ $command != expand ]] && _orchard_cm_files; return ;;
        --label | --units | --property) return ;;
    esac

    local own=''
    case $command in
        '') own=$commands ;;
        new) own='--tool --units' ;;
        list) own='--paths' ;;
        checkout) own='--lock --label --recursive --archive' ;;
        expand) own='--property --unit --mode --label --log' ;;
        property) own='get set list --unit --metaclass' ;;
        batch) own='--keep-going' ;;
    esac
    if [[ $cur == -* || $command == '' || $command == property ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$own $global" -- "$cur")
        return
    fi
    case $command in
        show) _orchard_cm_lines < <(orchard-cm "${project[@]}" list --paths 2>/dev/null) ;;
        checkout)
            if [[ " ${COMP_WORDS[*]} " == *' --archive '* ]]; then
                _orchard_cm_files
            else
                _orchard_cm_lines < <(orchard-cm "${project[@]}" list --paths 2>/dev/null)
            fi ;;
        tool) _orchard_cm_lines < <(orchard-cm tools 2>/dev/null | awk 'NR > 1 { print $1 }') ;;
        new | batch) _orchard_cm_files ;;
    esac
}

complete -o nosort -F _orchard_cm orchard-cm
