#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Makes a searchable PDF of each document and reads it back with programs not written here.

roundtrip.py --tools DIR --engine DIR [--resolution N] DOCUMENT...

For each page and extractor the table gives the character error rate in percent against the
engine's text, the largest distance in points of a character from its place, and the bytes a
character that the page adds to its JPEG. The exit code is 1 when a document misses a limit; each
miss is printed. Without -raw, pdftotext sorts text by its own idea of columns: there the rate in
any order is held to the limit, and the rate in the engine's order is only shown.
"""
import argparse
import json
import os
import re
import subprocess
import sys
import tempfile
import unicodedata
from collections import Counter, defaultdict

LIMITS = {'pdfium': 0.1, 'pdf.js': 0.1, 'poppler -raw': 0.5, 'any order': 0.5, 'poppler': None}
HAN = '\u2e80-\u2fdf\u3000-\u303f\u3400-\u4dbf\u4e00-\u9fff\uf900-\ufaff\uff00-\uffef'
HERE = os.path.dirname(os.path.abspath(__file__))


def run(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


def normalised(text):
    """NFKC, white space one space, none beside a Han character, hyphens at line ends undone."""
    text = re.sub('[\x02\ufffe]', '-\n', text).replace('\r', '\n').replace('\f', '\n')
    text = re.sub(r'-[ \n]*\n\s*', '', text)
    text = re.sub(r'\s+', ' ', text)
    text = re.sub(f'(?<=[{HAN}]) | (?=[{HAN}])', '', text)
    return re.sub(r'\s+', ' ', unicodedata.normalize('NFKC', text)).strip()


def in_gbk(character):
    try:
        character.encode('gbk')
    except UnicodeEncodeError:
        return False
    return character >= ' '


def engine_text(page):
    """The text of the engine's records, a new line where they leave their common bottom."""
    text, bottom, left = '', None, None
    for code, l, _, _, b in page['characters']:
        character = chr(code)
        if not in_gbk(character):
            continue
        if bottom is not None and (b != bottom or l < left):
            text += '\n'
        bottom, left = b, l
        text += character
    return text


def blanks_between_han(text, lines):
    """Blanks between two Han characters, but for those that stand for the end of one of `lines`."""
    ends = {before[-1] + after[0] for before, after in zip(lines, lines[1:])}
    pairs = re.findall(f'([{HAN}])[ \t]+(?=([{HAN}]))', text)
    return sum(before + after not in ends for before, after in pairs)


def gaps_between_han(page):
    """Gaps of half a character and more that the cells leave: tabulators, columns."""
    gaps = 0
    for before, after in zip(page['characters'], page['characters'][1:]):
        both_han = re.fullmatch(f'[{HAN}]{{2}}', chr(before[0]) + chr(after[0]))
        same_line = before[4] == after[4]
        gaps += bool(both_han and same_line and after[1] - before[3] > (before[4] - before[2]) / 2)
    return gaps


def edit_distance(a, b):
    """Levenshtein distance within a band that grows until it holds the answer."""
    start = 0
    while start < min(len(a), len(b)) and a[start] == b[start]:
        start += 1
    a, b = a[start:], b[start:]
    while a and b and a[-1] == b[-1]:
        a, b = a[:-1], b[:-1]
    band = max(8, abs(len(a) - len(b)) + 1)
    while True:
        distance = banded_distance(a, b, band)
        if distance <= band or band > max(len(a), len(b)):
            return distance
        band *= 2


def banded_distance(a, b, band):
    far = len(a) + len(b)
    row = {j: j for j in range(min(len(b), band) + 1)}
    for i in range(1, len(a) + 1):
        new = {}
        for j in range(max(0, i - band), min(len(b), i + band) + 1):
            best = row.get(j, far) + 1
            if j > 0:
                best = min(best, new.get(j - 1, far) + 1,
                           row.get(j - 1, far) + (a[i - 1] != b[j - 1]))
            new[j] = best
        row = new
    return row.get(len(b), far)


def error_rate(read, expected):
    if not expected:
        return 0.0 if not read else 100.0
    return 100.0 * edit_distance(read, expected) / len(expected)


def unordered_error_rate(read, expected):
    """The rate when order does not count; blanks do not either, they go with the order of words."""
    read, expected = (Counter(text.replace(' ', '')) for text in (read, expected))
    wrong = max((read - expected).total(), (expected - read).total())
    return 100.0 * wrong / max(1, expected.total())


def misplaced(page, read_characters):
    """Largest distance of an origin from its character's box, and how many have none near."""
    dots_per_inch = int(page['dots_per_meter'] * 25.4 / 1000)
    scale = 72 / dots_per_inch if dots_per_inch else 1.0
    origins = defaultdict(list)
    for code, x, y in read_characters:
        origins[unicodedata.normalize('NFKC', chr(code))].append((x, y))
    worst, missing = 0.0, 0
    for code, left, _, _, bottom in page['characters']:
        character = unicodedata.normalize('NFKC', chr(code))
        if not in_gbk(chr(code)) or character.isspace() or character == '-':
            continue
        x, y = left * scale, max(0.0, (page['height'] - bottom) * scale)
        near = min((max(abs(x - ox), abs(y - oy)) for ox, oy in origins[character]), default=999.0)
        missing += near > 1.0
        worst = max(worst, near if near <= 1.0 else 0.0)
    return worst, missing


def picture_points(page):
    dots_per_inch = round(page['dots_per_meter'] * 0.0254) or 72
    return page['width'] * 72 / dots_per_inch, page['height'] * 72 / dots_per_inch


class Document:
    """One document made into a searchable PDF in a scratch folder."""

    def __init__(self, args, path, folder):
        self.path, self.folder, self.pdf = path, folder, os.path.join(folder, 'out.pdf')
        self.misses = []
        run(f'{args.tools}/layer_recorder', args.engine, path, str(args.resolution), folder)
        with open(os.path.join(folder, 'pages.json'), encoding='utf8') as pages:
            self.pages = json.load(pages)
        self.pdfium = json.loads(run(f'{args.tools}/pdfium_reader', self.pdf, folder))

    def miss(self, what):
        self.misses.append(what)

    def check_file(self):
        check = subprocess.run(['qpdf', '--check', self.pdf], capture_output=True, text=True)
        if check.returncode != 0 or 'WARNING' in check.stdout + check.stderr:
            self.miss('qpdf --check: ' + (check.stderr or check.stdout).strip().splitlines()[0])
        drawing = ['mutool', 'draw', '-q', '-r', '20', '-F', 'txt', '-o', os.devnull, self.pdf]
        drawn = subprocess.run(drawing, capture_output=True, text=True)
        if drawn.returncode != 0 or 'error' in drawn.stderr:
            self.miss('mutool: ' + drawn.stderr.strip()[:100])
        if len(self.pdfium) != len(self.pages):
            self.miss(f'{len(self.pdfium)} pages instead of {len(self.pages)}')

    def check_sizes(self):
        info = run('pdfinfo', '-f', '1', '-l', str(len(self.pages)), self.pdf).decode()
        sizes = re.findall(r'Page +\d+ size: +([\d.]+) x ([\d.]+) pts', info)
        for number, (page, size) in enumerate(zip(self.pages, sizes)):
            for expected, shown in zip(picture_points(page), size):
                if abs(round(expected, 1) - round(float(shown), 1)) > 0.05:
                    self.miss(f'page {number + 1}: {shown} points instead of {expected:.1f}')

    def check_pictures(self):
        run('pdfimages', '-j', self.pdf, os.path.join(self.folder, 'image'))
        for number in range(len(self.pages)):
            with open(f'{self.folder}/{number}.jpg', 'rb') as made, \
                    open(f'{self.folder}/image-{number:03d}.jpg', 'rb') as placed:
                if made.read() != placed.read():
                    self.miss(f'page {number + 1}: the JPEG is not the encoder\'s')
            shown = self.pdfium[number]
            if shown.get('largest_difference', 255) > 2:
                self.miss(f'page {number + 1}: {shown.get("differing_values")} colour values '
                          f'differ, by up to {shown.get("largest_difference")}')

    def overhead(self):
        """Bytes a character beside the pictures."""
        pictures = sum(os.path.getsize(f'{self.folder}/{n}.jpg') for n in range(len(self.pages)))
        characters = sum(len(p['characters']) for p in self.pages)
        return (os.path.getsize(self.pdf) - pictures) / max(1, characters)

    def extracted(self):
        """Text of each page by extractor."""
        texts = {'pdfium': [p['text'] for p in self.pdfium]}
        for name, option in (('poppler', []), ('poppler -raw', ['-raw'])):
            text = run('pdftotext', '-enc', 'UTF-8', *option, self.pdf, '-').decode('utf8')
            texts[name] = text.split('\f')[:-1]
        texts['pdf.js'] = json.loads(run('node', f'{HERE}/pdfjs_reader.mjs', self.pdf))
        return texts

    def check_blanks(self, number, page, texts):
        """No blank between Han characters but at gaps; what pdftotext moves does not count."""
        gaps = gaps_between_han(page)
        lines = [line for line in engine_text(page).split('\n') if line]
        for name in ('pdfium', 'pdf.js', 'poppler -raw'):
            blanks = blanks_between_han(texts[name][number], lines)
            if blanks > gaps:
                self.miss(f'page {number + 1}: {name} {blanks} blanks between Han characters, '
                          f'{gaps} gaps')

    def rows(self):
        texts = self.extracted()
        for number, page in enumerate(self.pages):
            expected = normalised(engine_text(page))
            rates = {}
            for name, limit in LIMITS.items():
                read = normalised(texts['poppler' if name == 'any order' else name][number])
                rate = unordered_error_rate if name == 'any order' else error_rate
                rates[name] = rate(read, expected)
                if limit is not None and rates[name] > limit:
                    self.miss(f'page {number + 1}: {name} {rates[name]:.2f} %')
            self.check_blanks(number, page, texts)
            worst, missing = misplaced(page, self.pdfium[number]['characters'])
            if missing:
                self.miss(f'page {number + 1}: {missing} characters not within a point of place')
            yield number + 1, len(expected), rates, worst


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument('--tools', required=True)
    parser.add_argument('--engine', required=True)
    parser.add_argument('--resolution', type=int, default=200)
    parser.add_argument('documents', nargs='+')
    args = parser.parse_args()
    print('document'.ljust(44), 'page', 'chars', *(n.rjust(12) for n in LIMITS), 'off by'.rjust(7))
    failed = 0
    for path in args.documents:
        with tempfile.TemporaryDirectory() as folder:
            document = Document(args, path, folder)
            name = os.path.basename(path)
            if not document.pages:
                print(name.ljust(44), 'no page')
                continue
            document.check_file()
            document.check_sizes()
            document.check_pictures()
            for number, length, rates, worst in document.rows():
                print(name.ljust(44), f'{number:4} {length:5}',
                      *(f'{rates[n]:12.2f}' for n in LIMITS), f'{worst:7.3f}')
            print(name.ljust(44),
                  f'{document.overhead():.2f} bytes a character beside the pictures')
            for miss in document.misses:
                print(f'MISSED {name}: {miss}')
            failed += bool(document.misses)
            sys.stdout.flush()
    sys.exit(1 if failed else 0)


if __name__ == '__main__':
    main()
