"""A manual page in troff from a program's help."""
import time


def escape(text):
    text = text.replace('\\', '\\e').replace('-', '\\-').replace("'", '\\(aq')
    # A point at the start of a line would be a request.
    return '\n'.join('\\&' + line if line.startswith('.') else line for line in text.splitlines())


def bold(text):
    return f'\\fB{escape(text)}\\fR'


def italic(text):
    return f'\\fI{escape(text)}\\fR'


def entry_lines(entry):
    head = ', '.join(bold(name) for name in entry.names)
    if entry.value and entry.names[0].startswith('-'):
        head += ' ' + italic(entry.value)
    notes = []
    if entry.limits:
        notes.append(f'From {entry.limits}.')
    if entry.required:
        notes.append('Required.')
    if entry.needs:
        notes.append(f'Needs {bold(entry.needs)}.')
    text = escape(entry.text)
    if notes and text:
        text += '.'
    return ['.TP', head, text or '\\&', *notes]


def help_lines(page):
    """Arguments, options and what stands behind them."""
    lines = []
    for entry in page.arguments + page.options:
        lines += entry_lines(entry)
    return lines


def verbatim(text):
    return ['.PP', '.nf', escape(text), '.fi'] if text else []


def man_page(page, version, released):
    """`released` is the time of the release, in seconds."""
    program = page.program
    month = time.strftime('%B %Y', time.gmtime(released))
    lines = [f'.TH {program.upper()} 1 "{month}" "{version}" "User Commands"',
             '.SH NAME', f'{program} \\- {escape(page.summary[0].lower() + page.summary[1:]).rstrip(".")}',
             '.SH SYNOPSIS', bold(program) + ' ' + escape(page.usage[len(program):].strip()),
             '.SH DESCRIPTION', escape(page.summary), '.SH OPTIONS', *help_lines(page)]
    if page.command_helps:
        lines.append('.SH COMMANDS')
    for command in page.command_helps:
        lines += [f'.SS "{escape(command.usage)}"', escape(command.summary), *help_lines(command),
                  *verbatim(command.footer)]
    if page.footer:
        lines += ['.SH NOTES', *verbatim(page.footer)]
    return '\n'.join(lines) + '\n'
