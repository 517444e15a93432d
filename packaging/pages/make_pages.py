#!/usr/bin/env python3
"""Writes the manual page and the shell completions of programs, from what they print for
--help: FOLDER/man/NAME.1, FOLDER/bash/NAME and FOLDER/zsh/_NAME for each PROGRAM.

  packaging/pages/make_pages.py FOLDER PROGRAM...

The page bears the date in SOURCE_DATE_EPOCH, today's without it.
"""
import os
import sys
import time

from bash_completion import bash_completion
from help_text import ask, read_help
from man_page import man_page
from zsh_completion import zsh_completion


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    folder, *programs = sys.argv[1:]
    released = int(os.environ.get('SOURCE_DATE_EPOCH', time.time()))
    for program in programs:
        page = read_help(program)
        version = ' '.join(ask(program, '--version').split()[:2])
        name = page.program
        for place, text in ((f'man/{name}.1', man_page(page, version, released)),
                            (f'bash/{name}', bash_completion(page)),
                            (f'zsh/_{name}', zsh_completion(page))):
            path = os.path.join(folder, place)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, 'w', encoding='utf-8') as file:
                file.write(text)


if __name__ == '__main__':
    main()
