# Completion of orchard-cm for bash. Unit names, tools and property keys come from the project itself.

# Prints the project of the command line as options, or nothing without one.
_orchard_cm_project() {
    local i word
    for ((i = 1; i < COMP_CWORD; i++)); do
        if [[ ${COMP_WORDS[i]} == -p || ${COMP_WORDS[i]} == --project ]]; then
            word=${COMP_WORDS[i + 1]//\\/}
            printf '%s\n' -p "${word/#\~/$HOME}"
            return
        fi
    done
}

# Offers the lines of standard input that begin with the current word, quoted for the command line.
_orchard_cm_lines() {
    local line
    COMPREPLY=()
    while IFS= read -r line; do
        [[ $line == "$cur"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done
}

# Offers units by their paths, or else by their names.
_orchard_cm_units() {
    local line paths
    mapfile -t paths < <(orchard-cm "${project[@]}" list --paths 2>/dev/null)
    _orchard_cm_lines < <(printf '%s\n' "${paths[@]}")
    [[ ${#COMPREPLY[@]} -gt 0 ]] && return
    for line in "${paths[@]}"; do
        [[ ${line##*/} == "$cur"* ]] && COMPREPLY+=("$(printf '%q' "$line")")
    done
}

_orchard_cm_tools() { orchard-cm tools 2>/dev/null | awk 'NR > 1 { print $1 }'; }
_orchard_cm_keys() { orchard-cm "${project[@]}" property list 2>/dev/null | awk 'NR > 1 { print $2 }' | sort -u; }

# Files whose names fit the given filter of compgen, and directories that are none of units.
_orchard_cm_files() {
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f "$@" -- "$cur"; compgen -d -X '*_ory' -- "$cur")
}

_orchard_cm() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    local commands='new connect add checkout checkin undo lock unlock fetch history archive move rename delete
                    recover list show header expand property tool tools batch'
    local global='-p --project --json --yes --no --yes-to-all --trace --log --wait --help --version'
    local command='' action='' i project
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            -p | --project | --log | --wait) ((i++)) ;;
            -*) ;;
            *)
                if [[ $command == '' ]]; then
                    command=${COMP_WORDS[i]}
                else
                    action=${COMP_WORDS[i]}
                    break
                fi ;;
        esac
    done
    mapfile -t project < <(_orchard_cm_project)

    case $prev in
        -p | --project) _orchard_cm_files -X '!*.orp'; return ;;
        --tool) _orchard_cm_lines < <(_orchard_cm_tools); return ;;
        --unit) _orchard_cm_units; return ;;
        --mode) mapfile -t COMPREPLY < <(compgen -W 'ro rw' -- "$cur"); return ;;
        --property) _orchard_cm_lines < <(_orchard_cm_keys); return ;;
        --metaclass) _orchard_cm_lines < <(_orchard_cm_tools; printf '%s\n' CMGeneral General); return ;;
        --log) [[ $command == expand || $command == checkin || $command == add ]] || _orchard_cm_files; return ;;
        --log-file) _orchard_cm_files; return ;;
        --to) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$cur"); return ;;
        --label | --units | --wait) return ;;
    esac

    local own=''
    case $command in
        '') own=$commands ;;
        new) own='--tool --units' ;;
        list) own='--paths' ;;
        add) own='--log --log-file --recursive' ;;
        checkout) own='--lock --label --recursive --archive' ;;
        checkin) own='--log --log-file --mode --label --recursive' ;;
        undo) own='--recursive --archive' ;;
        lock | unlock) own='--label --recursive' ;;
        fetch) own='--label --to --recursive --archive' ;;
        archive) own='--label --paths' ;;
        move | rename) own='--no-tool' ;;
        delete) own='--recursive --no-tool' ;;
        recover) own='--finish --undo' ;;
        expand) own='--property --unit --mode --label --log' ;;
        property)
            case $action in
                '') own='get set list' ;;
                list) own='--unit' ;;
                *) own='--unit --metaclass' ;;
            esac ;;
        batch) own='--keep-going' ;;
    esac
    if [[ $cur == -* || $command == '' || ($command == property && $action == '') ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$own $global" -- "$cur")
        return
    fi
    case $command in
        show | header | add | checkin | lock | unlock | history | move | rename | delete) _orchard_cm_units ;;
        checkout | undo | fetch)
            if [[ " ${COMP_WORDS[*]} " == *' --archive '* ]]; then
                _orchard_cm_files
            else
                _orchard_cm_units
            fi ;;
        property) [[ $action == list || $prev == "$action" ]] && _orchard_cm_lines < <(_orchard_cm_keys) ;;
        tool)
            if [[ $action == check ]]; then
                _orchard_cm_lines < <(_orchard_cm_tools)
            else
                _orchard_cm_lines < <(_orchard_cm_tools; printf '%s\n' None check)
            fi ;;
        connect) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$cur") ;;
        new | batch) _orchard_cm_files ;;
    esac
}

complete -o nosort -F _orchard_cm orchard-cm
