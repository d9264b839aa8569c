# SPDX-License-Identifier: Apache-2.0
"""Writes the pages of the catalogue, their truth and a table of them."""
from . import office, photos, plain, printed, scans, screens, sparse, tables  # noqa: F401
from .catalogue import PAGES

HEAD = """# Page images with exact truth

{count} pages as they come out of scanners, telephones, faxes and screens; made by bench/make_pages.

- `truth/NAME.txt`: UTF-8, upright reading order, a line a printed line; columns one after another;
  table rows with cells separated by a blank; vertical text column by column from the right.
- Not in the truth: dots of leaders, bullets, ticks, rules, stamps, watermarks, signatures, what
  shines through from the other side. They may cost a few insertions: use the second figure where
  the note says so, and for tables, columns, forms and cards.
- A page of 204x98 dots an inch says so in its TIFF; its stored pixels are not square.
"""
BASELINE = """- *baseline*: the program `tesseract` with the data of the page's language and its
  default segmentation: error in order / missing characters, percent, as scripts/measure-accuracy
  counts; zh: a quarter Han or more.
"""


def save(image, path, page):
    dpi = page.dpi if isinstance(page.dpi, tuple) else (page.dpi, page.dpi)
    if path.suffix == '.jpg':
        image.save(path, quality=page.quality, dpi=dpi)
    elif path.suffix == '.png':
        image.save(path, dpi=dpi)
    else:
        how = 'group4' if image.mode == '1' else 'tiff_lzw'
        image.save(path, compression=how, dpi=dpi)


def table(rows, columns):
    lines = [columns, ['---'] * len(columns)] + rows
    return '\n'.join('| ' + ' | '.join(line) + ' |' for line in lines) + '\n'


def folder(out, only, with_baseline):
    if with_baseline:
        from . import baseline
    pages = sorted((page for page in PAGES if only in page.name), key=lambda page: page.name)
    if not pages:
        raise SystemExit(f'make_pages: no page has {only!r} in its name')
    for name in ('pages', 'truth'):
        (out / name).mkdir(parents=True, exist_ok=True)
    rows = []
    for page in pages:
        image, sheet = page.make()
        path = out / 'pages' / page.name
        save(image, path, page)
        (out / 'truth' / f'{page.name}.txt').write_text(sheet.text(), encoding='utf-8')
        row = [page.kind, page.name, page.what, f'{image.width}x{image.height} {image.mode}']
        rows.append(row + ([baseline.figures(path, sheet.text())] if with_baseline else [])
                    + [page.note])
    columns = ['kind', 'file', 'what', 'pixels', 'note']
    head = HEAD.format(count=len(rows))
    if with_baseline:
        columns.insert(4, 'baseline %')
        head += BASELINE
    (out / 'README.md').write_text(head + '\n' + table(rows, columns), encoding='utf-8')
