# fish completion for quill: commands, their options, option values, and
# Verilog or constraint files for the paths.

set -l quill_commands format lint highlight config lsp version

complete -c quill -f
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -s h -l help -d 'Show every command and option'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -l version -d 'Print the version'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -a format -d 'Format Verilog files'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -a lint -d 'Lint Verilog files'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -a highlight -d 'Show constraint and Tcl files with syntax colours'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -a config -d 'Print the settings in force for a path'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -a lsp -d 'Serve the Language Server Protocol'
complete -c quill -n "not __fish_seen_subcommand_from $quill_commands" -a version -d 'Print the versions of the tool and the engine'

# Every command.
complete -c quill -n "__fish_seen_subcommand_from $quill_commands" -s h -l help -d 'Show the options and exit status'

# Options of the file commands.
for command in format lint highlight
    set -l when "__fish_seen_subcommand_from $command"
    complete -c quill -n $when -F
    complete -c quill -n $when -s j -l jobs -x -d 'Files processed at once'
    complete -c quill -n $when -l stdin-name -x -d 'Name shown for standard input'
end
for command in format lint highlight config
    set -l when "__fish_seen_subcommand_from $command"
    complete -c quill -n $when -l config -r -F -d 'Use this quill.toml'
    complete -c quill -n $when -l isolated -d 'Read no quill.toml'
end
complete -c quill -n '__fish_seen_subcommand_from format lint highlight' -l no-ignore -d 'Also take files that git ignores'


set -l format_when '__fish_seen_subcommand_from format'
complete -c quill -n $format_when -s i -l in-place -d 'Rewrite the files that would change'
complete -c quill -n $format_when -l check -d 'List the files that would change'
complete -c quill -n $format_when -l diff -d 'Print a unified diff of each change'
complete -c quill -n $format_when -l force -d 'Write even where text would be lost'

set -l lint_when '__fish_seen_subcommand_from lint'
complete -c quill -n $lint_when -l format -x -a 'text json sarif github raw' -d 'Output format'
complete -c quill -n $lint_when -l max-findings -x -d 'Print at most N findings'
complete -c quill -n $lint_when -l error-on -x -a 'warning error' -d 'Lowest severity that makes the exit status 1'
complete -c quill -n $lint_when -l color -x -a 'auto always never' -d 'Colour the text output'
complete -c quill -n $lint_when -l whole-file -d 'Lint each file with one engine call'
complete -c quill -n $lint_when -l report-unused-suppressions -d 'Report suppression comments that quieted nothing'
complete -c quill -n $lint_when -l statistics -d 'Count findings per check and per filter'
complete -c quill -n $lint_when -l exact -d 'Print the engine findings untouched'
complete -c quill -n $lint_when -l no-filter -x -a 'empty-name read-only-driver absent-assignment generate-scope port-redeclaration interface-items default-before-branch member-scopes initializer-names absent-use intended-latch hierarchical-paths absent-branch letter-case assertion-items assigned-first complete-paths block-locals' -d 'Turn a filter off'
complete -c quill -n $lint_when -s D -l define -x -d 'Define a macro: NAME[=VALUE]'
complete -c quill -n $lint_when -s U -l undefine -x -d 'Undefine a macro'

set -l highlight_when '__fish_seen_subcommand_from highlight'
complete -c quill -n $highlight_when -l format -x -a 'text json' -d 'Output format'
complete -c quill -n $highlight_when -l color -x -a 'auto always never' -d 'Colour the output'

complete -c quill -n '__fish_seen_subcommand_from config' -F
