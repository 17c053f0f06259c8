# Completion of calorivo for fish.

complete -c calorivo -f
complete -c calorivo -l preferences -d 'open the preferences'
complete -c calorivo -l login -d 'started at login: stay in the background where that is set'
complete -c calorivo -l simulate -d 'a simulated machine'
complete -c calorivo -l keysfile -r -F -d 'read a dump of values instead of the machine'
complete -c calorivo -l sys -x -a '(__fish_complete_directories)' -d 'read a folder in place of /sys'
complete -c calorivo -l custommodel -x -d 'take the machine for this model'
complete -c calorivo -l model-tables -x -a '(__fish_complete_directories)' -d 'model tables from this folder only'
complete -c calorivo -l all-chips -d 'on a Mac, show the chips beside its controller too'
complete -c calorivo -s h -l help -d 'a short help'
complete -c calorivo -l version -d 'the version'
