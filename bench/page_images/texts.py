# SPDX-License-Identifier: Apache-2.0
"""The texts of the pages: sections of texts/LANGUAGE.txt that begin with "== NAME"."""
import functools
import pathlib
import re

FOLDER = pathlib.Path(__file__).parent / 'texts'


@functools.lru_cache(maxsize=None)
def sections(language):
    text = (FOLDER / f'{language}.txt').read_text(encoding='utf-8')
    parts = re.split(r'^== (\S+)\n', text, flags=re.MULTILINE)[1:]
    return dict(zip(parts[::2], (part.strip('\n') for part in parts[1::2])))


def text(language, name):
    """Paragraphs, a line each; a tilde in a word is a place where it may be hyphenated."""
    return sections(language)[name].replace('~', '\u00ad')


def lines(language, name):
    return text(language, name).split('\n')


def rows(language, name):
    """Lines whose cells are separated by vertical bars."""
    return [[cell.strip() for cell in line.split('|')] for line in lines(language, name)]
