# Completion of orchard-cm for fish. Unit names, tools and property keys come from the project itself.

function __orchard_cm_project
    set -l words (commandline -opc)
    for i in (seq (count $words))
        if contains -- $words[$i] -p --project
            printf '%s\n' -p $words[(math $i + 1)]
            return
        end
    end
end

function __orchard_cm_units
    orchard-cm (__orchard_cm_project) list --paths 2>/dev/null
end

function __orchard_cm_tools
    orchard-cm tools 2>/dev/null | awk 'NR > 1 { print $1 }'
end

function __orchard_cm_keys
    orchard-cm (__orchard_cm_project) property list 2>/dev/null | awk 'NR > 1 { print $2 }' | sort -u
end

set -l commands new connect add checkout checkin undo lock unlock fetch history archive move rename \
    delete recover list show header expand property tool tools batch
set -l none "not __fish_seen_subcommand_from $commands"

complete -c orchard-cm -f
complete -c orchard-cm -s p -l project -r -F -d 'The project file'
complete -c orchard-cm -l json -d 'Write JSON'
complete -c orchard-cm -l yes -d 'Answer Yes to each question'
complete -c orchard-cm -l no -d 'Answer No to each question'
complete -c orchard-cm -l yes-to-all -d 'Answer the first question with Yes to all'
complete -c orchard-cm -l trace -d 'Write the debug trace'
complete -c orchard-cm -l wait -x -d 'How long to wait for another program, in seconds'
complete -c orchard-cm -n "not __fish_seen_subcommand_from expand checkin add" -l log -r -F -d 'Append the log to a file'
complete -c orchard-cm -s h -l help -d 'Show help'
complete -c orchard-cm -n $none -l version -d 'Show the version'

complete -c orchard-cm -n $none -a new -d 'Create a project'
complete -c orchard-cm -n $none -a connect -d 'Link the project to an archive'
complete -c orchard-cm -n $none -a add -d 'Add units to the archive'
complete -c orchard-cm -n $none -a checkout -d 'Check units out and reload them'
complete -c orchard-cm -n $none -a checkin -d 'Check units in'
complete -c orchard-cm -n $none -a undo -d 'Undo the check out of units'
complete -c orchard-cm -n $none -a lock -d 'Lock units'
complete -c orchard-cm -n $none -a unlock -d 'Release the locks of units'
complete -c orchard-cm -n $none -a fetch -d 'Get files from the archive'
complete -c orchard-cm -n $none -a history -d 'Show the history of units'
complete -c orchard-cm -n $none -a archive -d 'List the contents of the archive'
complete -c orchard-cm -n $none -a move -d 'Move a unit to another owner'
complete -c orchard-cm -n $none -a rename -d 'Rename a unit'
complete -c orchard-cm -n $none -a delete -d 'Delete units'
complete -c orchard-cm -n $none -a recover -d 'Finish or undo an interrupted change'
complete -c orchard-cm -n $none -a list -d 'List the units of the workspace'
complete -c orchard-cm -n $none -a show -d 'Show the details of a unit'
complete -c orchard-cm -n $none -a header -d 'Show the CM header of a unit'
complete -c orchard-cm -n $none -a expand -d 'Show the expansion of a command template'
complete -c orchard-cm -n $none -a property -d 'Show and set properties'
complete -c orchard-cm -n $none -a tool -d 'Show, choose or check the CM tool'
complete -c orchard-cm -n $none -a tools -d 'List the installed CM tools'
complete -c orchard-cm -n $none -a batch -d 'Run commands on one loaded model'

complete -c orchard-cm -n '__fish_seen_subcommand_from new' -l tool -x -a '(__orchard_cm_tools)' -d 'CM tool'
complete -c orchard-cm -n '__fish_seen_subcommand_from new' -l units -x -d 'Number of units'
complete -c orchard-cm -n '__fish_seen_subcommand_from recover' -l finish -d 'Do what is left'
complete -c orchard-cm -n '__fish_seen_subcommand_from recover' -l undo -d 'Take it back'
complete -c orchard-cm -n '__fish_seen_subcommand_from new batch recover' -F
complete -c orchard-cm -n '__fish_seen_subcommand_from connect' -a '(__fish_complete_directories)'
complete -c orchard-cm -n '__fish_seen_subcommand_from list archive' -l paths -d 'Only the paths'
complete -c orchard-cm -n '__fish_seen_subcommand_from show header add checkout checkin undo lock unlock fetch history move rename delete' -a '(__orchard_cm_units)'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout' -l lock -d 'Lock the files to work on them'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout checkin lock unlock fetch archive' -l label -x -d 'Label or revision'
complete -c orchard-cm -n '__fish_seen_subcommand_from add checkout checkin undo lock unlock fetch delete' -l recursive -d 'With all units below'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout undo fetch' -l archive -d 'Files of the archive'
complete -c orchard-cm -n '__fish_seen_subcommand_from fetch' -l to -x -a '(__fish_complete_directories)' -d 'Directory'
complete -c orchard-cm -n '__fish_seen_subcommand_from move rename delete' -l no-tool -d 'Leave the archive unchanged'
complete -c orchard-cm -n '__fish_seen_subcommand_from add checkin expand' -l log -x -d 'Comment'
complete -c orchard-cm -n '__fish_seen_subcommand_from add checkin' -l log-file -r -F -d 'Comment from a file'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkin expand' -l mode -x -a 'ro rw' -d 'Mode'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand' -l property -x -a '(__orchard_cm_keys)' -d 'Key'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand property' -l unit -x -a '(__orchard_cm_units)' -d 'Unit'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand' -l label -x -d 'Label'
complete -c orchard-cm -n '__fish_seen_subcommand_from property; and not __fish_seen_subcommand_from get set list' -a 'get set list'
complete -c orchard-cm -n '__fish_seen_subcommand_from property; and __fish_seen_subcommand_from get set list' -a '(__orchard_cm_keys)'
complete -c orchard-cm -n '__fish_seen_subcommand_from property' -l metaclass -x -a '(__orchard_cm_tools) CMGeneral General' -d 'Metaclass'
complete -c orchard-cm -n '__fish_seen_subcommand_from tool' -a '(__orchard_cm_tools) None check'
complete -c orchard-cm -n '__fish_seen_subcommand_from batch' -l keep-going -d 'Continue after a failure'
