"""What a program prints for --help, as plain values.

Two forms are read: that of the command line (CLI11: columns of a fixed width, commands
with a help of their own) and that of the window (Qt: values in angle brackets, wrapped
lines).
"""
import os
import re
import subprocess
from dataclasses import dataclass, field

SECTIONS = {'Positionals': 'arguments', 'Arguments': 'arguments', 'Options': 'options',
            'Subcommands': 'commands'}
TEXT_COLUMN = 30  # of the command line's descriptions
FILES = ('FILE', 'DIR', 'FOLDER', 'SOURCE')
NAME = r'--?[A-Za-z][A-Za-z-]*'


@dataclass
class Entry:
    """An option, an argument or a command."""
    names: list  # of an option: all its spellings, short ones first
    value: str  # what it takes, such as FILE or keep|drop; empty for a switch
    text: str
    limits: str = ''  # of a number, such as '1 to 100'; empty where the text tells them
    required: bool = False
    repeatable: bool = False
    needs: str = ''  # another option

    def choices(self):
        """The words that the value can be, where the help lists them all."""
        if '|' in self.value:
            return self.value.split('|')
        listed = re.search(r'(?:^|: )((?:[a-z0-9-]+, )+(?:or )?[a-z0-9-]+(?: or [a-z0-9-]+)?)(?:$|[;,] )',
                           self.text)
        if not listed or not self.value or self.value in FILES:
            return []
        return re.split(', or | or |, ', listed[1])

    def takes_file(self):
        return self.value in FILES + ('TEXT',) and not self.choices()


@dataclass
class Help:
    program: str  # with the command, such as 'jqstitch live'
    summary: str = ''
    usage: str = ''
    arguments: list = field(default_factory=list)
    options: list = field(default_factory=list)
    commands: list = field(default_factory=list)
    footer: str = ''
    command_helps: list = field(default_factory=list)


def ask(path, *arguments):
    done = subprocess.run([path, *arguments], capture_output=True, text=True,
                          env={**os.environ, 'LC_ALL': 'C.UTF-8'})
    if done.returncode != 0:
        raise SystemExit(f'{path} {" ".join(arguments)} ended with {done.returncode}: {done.stderr}')
    return done.stdout


def read_help(path):
    """The help of the program in the file `path`, with those of its commands."""
    name = os.path.basename(path)
    whole = parse(name, ask(path, '--help'))
    whole.command_helps = [parse(f'{name} {command.names[0]}', ask(path, command.names[0], '--help'))
                           for command in whole.commands]
    return whole


def parse(program, text):
    result, section, rest = Help(program), None, []
    for line in text.splitlines():
        header = re.fullmatch(r'(\w+):', line)
        if rest or (section and line and not line.startswith(' ') and
                    not (header and header[1] in SECTIONS)):
            rest.append(line)  # behind the last section stands what each program adds
        elif header and header[1] in SECTIONS:
            section = SECTIONS[header[1]]
        elif line.startswith('Usage: '):
            called, _, rest_of_line = line[len('Usage: '):].partition(' ')
            result.usage = f'{os.path.basename(called)} {rest_of_line}'
        elif section is None:
            result.summary = f'{result.summary} {line}'.strip()
        elif re.match(r'  \S', line):
            getattr(result, section).append(parse_entry(line))
        elif line.strip():
            entry = getattr(result, section)[-1]
            entry.text = f'{entry.text} {line.strip()}'.strip()
    if not result.usage or not result.options:
        raise SystemExit(f'{program}: its help has no usage line or no options')
    result.footer = '\n'.join(rest).strip()
    return result


def parse_entry(line):
    columns = re.fullmatch(r'  (\S.*?)\s{2,}(\S.*)', line)
    if columns:
        left, text = columns[1], columns[2]
    elif len(line) > TEXT_COLUMN and line[TEXT_COLUMN - 1] == ' ':
        left, text = line[2:TEXT_COLUMN - 1], line[TEXT_COLUMN:]
    else:
        left, text = line.strip(), ''
    left, _, needs = left.partition(' Needs: ')
    required = ' REQUIRED' in left
    repeatable = ' ...' in left
    left = left.replace(' REQUIRED', '').replace(' ...', '')
    # A switch with its opposite is written --trim,--no-trim{false}.
    left = left.replace('{false}', '')
    spelled = re.fullmatch(rf'({NAME}(?:, ?{NAME})*)(?: (.*))?', left)
    if spelled:
        names, value = re.split(', ?', spelled[1]), (spelled[2] or '').strip('<>')
    else:
        name, _, value = left.partition(' ')
        names = [name]
    # Behind a colon stands what the parser checks, most of it in its own terms.
    value, _, check = value.partition(':')
    limits = check if re.fullmatch(r'[0-9.]+ to [0-9.]+', check) else ''
    return Entry(names, value, text, limits, required, repeatable, needs)
