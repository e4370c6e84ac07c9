# Completion of vantor-prep-cli for fish.

set -l calls cards qr convert list parse
set -l before "not __fish_seen_subcommand_from $calls"

complete -c vantor-prep-cli -f
complete -c vantor-prep-cli -n "$before" -a cards -d 'drukt de QR-kaarten van een shoot af als PDF'
complete -c vantor-prep-cli -n "$before" -a qr -d 'bewaart per set een QR-code als PNG'
complete -c vantor-prep-cli -n "$before" -a convert -d 'zet .csv, .vantor en .json in elkaar om'
complete -c vantor-prep-cli -n "$before" -a list -d 'toont per set een regel'
complete -c vantor-prep-cli -n "$before" -a parse -d 'leest de tekst van één kaart'
complete -c vantor-prep-cli -s h -l help -d 'toont de hulp'
complete -c vantor-prep-cli -l version -d 'toont de versie'
complete -c vantor-prep-cli -n '__fish_seen_subcommand_from cards qr convert list' -l from -x -a 'csv vantor' -d 'wat er op de standaardinvoer staat'
complete -c vantor-prep-cli -n '__fish_seen_subcommand_from cards qr convert' -l output -r -F -d 'waar het resultaat komt'
complete -c vantor-prep-cli -n '__fish_seen_subcommand_from cards' -l density -x -a 'large compact' -d 'kaarten op een pagina: 4 of 9'
complete -c vantor-prep-cli -n '__fish_seen_subcommand_from cards qr convert list' -k -a '(__fish_complete_suffix .csv; __fish_complete_suffix .json; __fish_complete_suffix .vantor)'
complete -c vantor-prep-cli -n '__fish_seen_subcommand_from parse' -F
