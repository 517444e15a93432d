"""A completion for zsh from a program's help: commands, options with their texts, and what
options take."""

COMMANDS = '''\
#compdef {program}
# Made from the --help of {program}.
local -a commands=(
{commands}
)
local curcontext="$curcontext" state line
local -A opt_args
_arguments -C \\
{options}
  '1: :->command' '*:: :->arguments' && return
case $state in
  command) _describe command commands ;;
  arguments)
    case $words[1] in
{cases}
    esac ;;
esac
'''

PLAIN = '''\
#compdef {program}
# Made from the --help of {program}.
_arguments \\
{options}
  '*:file:_files'
'''


def quoted(text):
    return "'" + text.replace("'", "'\\''") + "'"


def option_specs(option):
    """One word of _arguments for each spelling of an option."""
    text = option.text.replace('\\', '\\\\').replace('[', '\\[').replace(']', '\\]')
    action = ''
    if option.takes_file():
        action = f':{option.value}:_files'
    elif option.value:
        label = option.value.replace(':', '\\:')
        action = f':{label}:({" ".join(option.choices())})' if option.choices() else f':{label}: '
    # Spellings exclude one another, unless the option may come again.
    others = '*' if option.repeatable else '(' + ' '.join(option.names) + ')'
    return [quoted(f'{others}{name}[{text}]{action}') for name in option.names]


def specs(options, indent):
    return '\n'.join(f'{indent}{spec} \\' for option in options for spec in option_specs(option))


def zsh_completion(page):
    if not page.commands:
        return PLAIN.format(program=page.program, options=specs(page.options, '  '))
    cases = [f'      {command.program.split()[-1]})\n        _arguments \\\n'
             f'{specs(command.options, "          ")}\n          {quoted("*:file:_files")} ;;'
             for command in page.command_helps]
    return COMMANDS.format(
        program=page.program, options=specs(page.options, '  '), cases='\n'.join(cases),
        commands='\n'.join('  ' + quoted(entry.names[0] + ':' + entry.text) for entry in page.commands))
