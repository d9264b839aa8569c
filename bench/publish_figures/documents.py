# SPDX-License-Identifier: Apache-2.0
"""The documents that are measured: those of a folder, or what the tests have, laid out alike."""
import pathlib
import re
import shutil
import subprocess
import textwrap

ROOT = pathlib.Path(__file__).resolve().parents[2]
HAN = '\u3001\u3002\u4e00-\u9fff\uff01-\uff0f\uff1a\uff1b\uff1f'
CHARACTERS = 2000
FONT = 'Noto Serif CJK SC'


def page_count(pdf):
    count = subprocess.run(['qpdf', '--show-npages', pdf], capture_output=True, text=True)
    return int(count.stdout or 0)


def with_pages(pdf, pages, target):
    """Makes a document of so many pages from those of `pdf`, which follow again on its last."""
    available, parts, missing = page_count(pdf), [], pages
    while missing > 0:
        parts += [pdf, f'1-{min(missing, available)}']
        missing -= available
    subprocess.run(['qpdf', '--empty', '--pages', *parts, '--', target], check=True)
    return target


def running_text(texts, is_han):
    """The first 2,000 characters of one script, without what another script wrote between them."""
    if is_han:
        text = re.sub(f'[^{HAN}]', '', ''.join(texts))
        width = 46
    else:
        text = ' '.join(re.sub('[^!-~]+', ' ', ' '.join(texts)).split())
        width = 84
    text = (text + ('' if is_han else ' ')) * (CHARACTERS // max(1, len(text)) + 1)
    if not text.strip():
        raise ValueError('no text to set')
    return textwrap.wrap(text[:CHARACTERS], width)


def set_page(lines, dpi, target):
    """Prints lines of text in 11 points on an A4 page, a TIFF named `target`."""
    source = target.with_suffix('.txt')
    source.write_text('\n'.join(lines) + '\n', encoding='utf8')
    subprocess.run(
        ['text2image', '--text', source, '--outputbase', target.with_suffix(''), '--font', FONT,
         '--fonts_dir', '/usr/share/fonts', '--fontconfig_tmpdir', target.parent,
         '--ptsize', '11', '--leading', '0', '--resolution', str(dpi),
         '--xsize', str(1654 * dpi // 200), '--ysize', str(2339 * dpi // 200),
         '--margin', str(100 * dpi // 200), '--degrade_image=false'],
        check=True, capture_output=True)
    return target


def lay_out_test_data(folder):
    """The pictures and PDFs of tests/data as a folder with pages/, truth/ and hostile/."""
    data = ROOT / 'tests/data'
    shutil.rmtree(folder, ignore_errors=True)
    for name in ('pages', 'truth'):
        (folder / name).mkdir(parents=True)
    for file in sorted(data.iterdir()):
        if file.is_file() and file.suffix not in ('.md', '.txt'):
            shutil.copy(file, folder / 'pages')
        elif file.suffix == '.txt':
            shutil.copy(file, folder / 'truth')
    (folder / 'hostile').symlink_to(data / 'hostile')
    return folder


class Documents:
    def __init__(self, data, scratch, few=False):
        self.given = data is not None
        self.scratch = scratch
        scratch.mkdir(parents=True, exist_ok=True)
        self.all = pathlib.Path(data) if data else lay_out_test_data(scratch / 'data')
        self.folder = self.first_few() if few else self.all

    def first_few(self):
        """Small documents of both languages, to try things out."""
        small = self.scratch / 'few'
        shutil.rmtree(small, ignore_errors=True)
        (small / 'pages').mkdir(parents=True)
        for name in ('truth', 'hostile', 'README.md'):
            (small / name).symlink_to((self.all / name).resolve())
        pages = sorted((self.all / 'pages').iterdir(), key=lambda file: file.stat().st_size)
        for start in ('en', 'zh', 'scan'):
            for file in [file for file in pages if file.name.startswith(start)][:2]:
                shutil.copy(file, small / 'pages')
        return small

    def longest(self):
        """The PDF with the most pages: long runs are made of them."""
        return max(sorted((self.all / 'pages').glob('*.pdf')), key=page_count)

    def long(self, pages):
        target = self.scratch / f'{pages}-pages.pdf'
        return with_pages(self.longest(), pages, target)

    def set_pages(self):
        """Folder of full pages of running text, LANGUAGE-RESOLUTION.tif."""
        folder = self.scratch / 'set'
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        for language in ('en', 'zh'):
            lines = running_text(self.texts(language), language == 'zh')
            for dpi in (200, 300):
                set_page(lines, dpi, folder / f'{language}-{dpi}.tif')
        return folder

    def texts(self, language):
        """What the documents say that are named by their language."""
        files = sorted((self.folder / 'truth').glob('*.txt'))
        return [file.read_text(encoding='utf8') for file in files
                if file.name.startswith(language)]
