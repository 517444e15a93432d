"""A completion for bash from a program's help: commands, options, and what options take."""

SCRIPT = '''\
# Completion of {program} in bash, made from its --help.
_{program}() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}
  local command= words= word
{find_command}  case "$command $previous" in
{values}
    *)
      # What is neither an option nor a command is a file.
      [[ $current == -*{or_command} ]] || return
      case $command in
{options}
      esac ;;
  esac
  COMPREPLY=($(compgen -W "$words" -- "$current"))
  # Nothing to choose from: not a file either.
  [[ $current == -* || -n $words ]] || compopt +o default
}}
complete -o default -F _{program} {program}
'''

FIND_COMMAND = '''\
  for word in "${{COMP_WORDS[@]:1:COMP_CWORD - 1}}"; do
    case $word in
      {commands}) command=$word; break ;;
    esac
  done
'''


def value_rows(command, options):
    """Rows of the case that tells what stands behind an option."""
    rows = []
    for option in options:
        if not option.value:
            continue
        labels = ' | '.join(f'"{command} {name}"' for name in option.names)
        if option.takes_file():
            rows.append(f'    {labels}) return ;;')
        else:
            rows.append(f'    {labels}) words="{" ".join(option.choices())}" ;;')
    return rows


def option_row(command, entries):
    names = [name for entry in entries for name in entry.names]
    return f'        {command or chr(34) * 2}) words="{" ".join(names)}" ;;'


def bash_completion(page):
    parts = [('', page.commands + page.options, page.options)]
    parts += [(command.program.split()[-1], command.options, command.options)
              for command in page.command_helps]
    commands = ' | '.join(entry.names[0] for entry in page.commands)
    return SCRIPT.format(
        program=page.program,
        find_command=FIND_COMMAND.format(commands=commands) if commands else '',
        values='\n'.join(row for command, _, options in parts for row in value_rows(command, options)),
        options='\n'.join(option_row(command, entries) for command, entries, _ in parts),
        or_command=' || -z $command' if commands else '')
