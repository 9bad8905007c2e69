# Completion for fish.

function __zorpsysinfosmbios2_is_path
    string match -qr '(Load|Save)Table=' -- (commandline -ct)
end

complete -c zorpsysinfosmbios2 -s a -l all -d 'Text: what is unknown, empty or internal too'
complete -c zorpsysinfosmbios2 -l catalogue -d 'Print the property declarations instead of discovering'
complete -c zorpsysinfosmbios2 -s d -l details -d 'Json, ndjson: numbers too, and what is wrong with the table'
complete -c zorpsysinfosmbios2 -s f -l format -x -d 'What is printed' -a 'text\t"A tree for people"
    json\t"One document"
    ndjson\t"One device a line"'
complete -c zorpsysinfosmbios2 -s h -l help -d 'Show the options'
complete -c zorpsysinfosmbios2 -s l -l language -x -d 'Language of names and texts' -a 'en\tEnglish
    de\tGerman
    zh_CN\t"Simplified Chinese"'
complete -c zorpsysinfosmbios2 -l log-level -x -d 'Lowest priority that is logged' -a '1\tTraces
    2\t"What is being done"
    3\tWarnings
    4\tErrors
    5\t"Failed discoveries"'
complete -c zorpsysinfosmbios2 -s o -l output -r -F -d 'Write there instead of standard output'
complete -c zorpsysinfosmbios2 -s s -l set -x -d 'A setting for this run' -a '
    verbose={true,false}\t"Decode all structure types"
    FilterTrivialStrings={true,false}\t"Let blank strings count as absent"
    LoadTable=\t"Take the table from a file or folder"
    SaveTable=\t"Save the table to a file"'
complete -c zorpsysinfosmbios2 -s s -l set -n __zorpsysinfosmbios2_is_path -r -F
complete -c zorpsysinfosmbios2 -l settings -r -F -d 'Settings file'
complete -c zorpsysinfosmbios2 -l tables -d 'Discover each saved table that standard input names'
complete -c zorpsysinfosmbios2 -s t -l type -x -d 'Only structures of these types' -a '
    bios system baseboard chassis processor memory cache connector slot'
complete -c zorpsysinfosmbios2 -s V -l version -d 'Show the version'
