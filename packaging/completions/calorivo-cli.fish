# Completion of calorivo-cli for fish.

set -l commands list watch keys fans drives row log why
set -l none "not __fish_seen_subcommand_from $commands"
set -l area All CPU "'CPU Relative'" GPU Battery Enclosure "'Hard Drive'" LCD "'Logic Board'" Memory Northbridge \
    "'Optical Drive'" "'Palm Rest'" PCI "'Power Supply'" Thunderbolt Wireless

complete -c calorivo-cli -f
complete -c calorivo-cli -n $none -a list -d 'every temperature and fan by area'
complete -c calorivo-cli -n $none -a watch -d 'the same, live, with minimum and maximum'
complete -c calorivo-cli -n $none -a keys -d 'every key with its raw value'
complete -c calorivo-cli -n $none -a fans -d 'every fan with its speeds and mode'
complete -c calorivo-cli -n $none -a drives -d 'every drive with its temperature'
complete -c calorivo-cli -n $none -a row -d 'one check as the log writes it'
complete -c calorivo-cli -n $none -a log -d 'append rows to a file'
complete -c calorivo-cli -n $none -a why -d 'where a reading comes from'

complete -c calorivo-cli -l keysfile -r -F -d 'read a dump of values instead of the machine'
complete -c calorivo-cli -l simulate -d 'a simulated machine'
complete -c calorivo-cli -l sys -x -a '(__fish_complete_directories)' -d 'read a folder in place of /sys'
complete -c calorivo-cli -l custommodel -x -d 'take the machine for this model'
complete -c calorivo-cli -l model-tables -x -a '(__fish_complete_directories)' -d 'model tables from this folder only'
complete -c calorivo-cli -l all-chips -d 'on a Mac, show the chips beside its controller too'
complete -c calorivo-cli -s h -l help -d 'a short help'
complete -c calorivo-cli -l version -d 'the version'

set -l lists "$none; or __fish_seen_subcommand_from list"
complete -c calorivo-cli -n $lists -l area -x -a "$area" -d 'only this area'
complete -c calorivo-cli -n "$lists drives why" -l json -d 'one JSON object instead of text'
complete -c calorivo-cli -n "$lists watch drives row log why" -l fahrenheit -d 'degrees Fahrenheit instead of Celsius'
complete -c calorivo-cli -n '__fish_seen_subcommand_from watch log' -l interval -x -d 'time between two checks'
complete -c calorivo-cli -n '__fish_seen_subcommand_from watch log' -l cycles -x -d 'end after so many checks'
complete -c calorivo-cli -n '__fish_seen_subcommand_from watch' -l quiet -d 'show nothing until the end'
complete -c calorivo-cli -n '__fish_seen_subcommand_from row log' -l fans -d 'the speeds of the fans too'
complete -c calorivo-cli -n '__fish_seen_subcommand_from log' -F
complete -c calorivo-cli -n '__fish_seen_subcommand_from log' -l drives -d 'the drives too'
complete -c calorivo-cli -n '__fish_seen_subcommand_from log' -l print -d 'to standard output instead of a file'
