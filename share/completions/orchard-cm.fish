# Completion of orchard-cm for fish. Unit names come from the project itself.

function __orchard_cm_units
    set -l words (commandline -opc)
    set -l project
    for i in (seq (count $words))
        if contains -- $words[$i] -p --project
            set project -p $words[(math $i + 1)]
        end
    end
    orchard-cm $project list --paths 2>/dev/null
end

function __orchard_cm_tools
    orchard-cm tools 2>/dev/null | awk 'NR > 1 { print $1 }'
end

set -l commands new list show checkout expand property tool tools batch
set -l none "not __fish_seen_subcommand_from $commands"

complete -c orchard-cm -f
complete -c orchard-cm -s p -l project -r -F -d 'The project file'
complete -c orchard-cm -l json -d 'Write JSON'
complete -c orchard-cm -l yes -d 'Answer Yes to each question'
complete -c orchard-cm -l no -d 'Answer No to each question'
complete -c orchard-cm -l yes-to-all -d 'Answer the first question with Yes to all'
complete -c orchard-cm -l trace -d 'Write the debug trace'
complete -c orchard-cm -n "not __fish_seen_subcommand_from expand" -l log -r -F -d 'Append the log to a file'
complete -c orchard-cm -s h -l help -d 'Show help'
complete -c orchard-cm -n $none -l version -d 'Show the version'

complete -c orchard-cm -n $none -a new -d 'Make a project'
complete -c orchard-cm -n $none -a list -d 'List the units of the workspace'
complete -c orchard-cm -n $none -a show -d 'Show what the model holds of a unit'
complete -c orchard-cm -n $none -a checkout -d 'Check units out and reload them'
complete -c orchard-cm -n $none -a expand -d 'Show what a command template expands to'
complete -c orchard-cm -n $none -a property -d 'Show and set properties'
complete -c orchard-cm -n $none -a tool -d 'Show or choose the CM tool'
complete -c orchard-cm -n $none -a tools -d 'List the installed CM tools'
complete -c orchard-cm -n $none -a batch -d 'Run commands on one loaded model'

complete -c orchard-cm -n '__fish_seen_subcommand_from new' -l tool -x -a '(__orchard_cm_tools)' -d 'CM tool'
complete -c orchard-cm -n '__fish_seen_subcommand_from new' -l units -x -d 'Number of units'
complete -c orchard-cm -n '__fish_seen_subcommand_from new batch' -F
complete -c orchard-cm -n '__fish_seen_subcommand_from list' -l paths -d 'Only the paths'
complete -c orchard-cm -n '__fish_seen_subcommand_from show checkout' -a '(__orchard_cm_units)'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout' -l lock -d 'Lock, to work on it'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout' -l label -x -d 'Label or revision'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout' -l recursive -d 'With all units below'
complete -c orchard-cm -n '__fish_seen_subcommand_from checkout' -l archive -d 'From the archive'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand' -l property -x -d 'Key'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand property' -l unit -x -a '(__orchard_cm_units)' -d 'Unit'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand' -l mode -x -a 'ro rw' -d 'Mode'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand' -l label -x -d 'Label'
complete -c orchard-cm -n '__fish_seen_subcommand_from expand' -l log -x -d 'Comment'
complete -c orchard-cm -n '__fish_seen_subcommand_from property' -a 'get set list'
complete -c orchard-cm -n '__fish_seen_subcommand_from property' -l metaclass -x -d 'Metaclass'
complete -c orchard-cm -n '__fish_seen_subcommand_from tool' -a '(__orchard_cm_tools)'
complete -c orchard-cm -n '__fish_seen_subcommand_from batch' -l keep-going -d 'Go on after a failure'
