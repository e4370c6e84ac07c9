#compdef vantor-prep-cli

local -a calls common input
calls=(
    'cards:drukt de QR-kaarten van een shoot af als PDF'
    'qr:bewaart per set een QR-code als PNG'
    'convert:zet .csv, .vantor en .json in elkaar om'
    'list:toont per set een regel'
    'parse:leest de tekst van één kaart'
)
common=('(-h --help)'{-h,--help}'[toont de hulp]' '--version[toont de versie]')
input=('--from=[wat er op de standaardinvoer staat]:vorm:(csv vantor)' '1:invoer:_files -g "*.(#i)(csv|json|vantor)(-.)"')

if ((CURRENT == 2)); then
    _describe -t calls opdracht calls
    _arguments -s $common
    return
fi

local call=$words[2]
shift words
((CURRENT--))
case $call in
cards)
    _arguments $common $input '--output=[waar de PDF komt]:bestand:_files -g "*.(#i)pdf(-.)"' \
        '--density=[hoeveel kaarten er op een pagina staan]:dichtheid:((large\:"4 kaarten" compact\:"9 kaarten"))'
    ;;
qr) _arguments $common $input '--output=[waar de bestanden komen]:map:_files -/' ;;
convert)
    _arguments $common $input '--output=[waar de shoot komt]:bestand:_files -g "*.(#i)(csv|json|vantor)(-.)"'
    ;;
list) _arguments $common $input ;;
parse) _arguments $common '1:bestand:_files' ;;
esac
