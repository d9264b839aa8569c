# SPDX-License-Identifier: Apache-2.0
"""Sets paragraphs, columns, tables, lists of contents and vertical text on a sheet."""
from .sheet import NEVER_FIRST, NEVER_LAST, SOFT_HYPHEN, HAN


def hyphenated(sheet, word, style, room):
    """The longest beginning of a word that fits with a hyphen, and the rest."""
    parts = word.split(SOFT_HYPHEN)
    for count in range(len(parts) - 1, 0, -1):
        head = ''.join(parts[:count]) + '-'
        [(_, font, width)] = sheet.pieces(head, style)
        if width <= room:
            [rest] = sheet.pieces(SOFT_HYPHEN.join(parts[count:]), style)
            return (head, font, width), rest
    return None


def stripped(line):
    while line and line[-1][0] in (' ', '\u3000'):
        line.pop()
    return line


def broken(sheet, text, style, room, narrower=()):
    """Lines, each a list of pieces, no wider than room (pixels).

    narrower: the room of the first lines, one number for each.
    """
    lines, line, used = [], [], 0
    rooms = list(narrower)
    left = rooms.pop(0) if rooms else room
    queue = sheet.pieces(text, style)
    while queue:
        piece = queue.pop(0)
        if used + piece[2] <= left or not line or piece[0][0] in NEVER_FIRST and HAN.search(text):
            if line or piece[0] != ' ':
                line.append(piece)
                used += piece[2]
            continue
        if SOFT_HYPHEN in piece[0] and (split := hyphenated(sheet, piece[0], style, left - used)):
            line.append(split[0])
            piece = split[1]
        carried = [piece]
        while line and line[-1][0] in NEVER_LAST:
            carried.insert(0, line.pop())
        lines.append(stripped(line))
        line, used, left = [], 0, rooms.pop(0) if rooms else room
        queue = carried + queue
    return lines + [stripped(line)] if line else lines


def clean(line):
    return [(text.replace(SOFT_HYPHEN, ''), font, width) for text, font, width in line]


def set_line(sheet, x, y, width, line, style, last):
    """One broken line in a measure of that width; x, y and width in millimetres."""
    line = clean(line)
    used = sum(piece[2] for piece in line)
    spare = sheet.px(width) - used
    left, stretch = sheet.px(x), (0, 0)
    if style.align == 'justify' and not last:
        blanks = sum(piece[0] == ' ' for piece in line)
        gaps = sum(bool(HAN.match(piece[0])) for piece in line) - 1
        stretch = (0, spare / gaps) if gaps > blanks else (spare / max(blanks, 1), 0)
    elif style.align in ('right', 'centre'):
        left += spare / (1 if style.align == 'right' else 2)
    sheet.draw_pieces(left, sheet.px(y), line, style, stretch)
    sheet.truth.append(''.join(piece[0] for piece in line).replace('\u3000', ' ').strip())


def paragraph(sheet, x, y, width, text, style):
    """Sets a paragraph whose first line's top is at y; the height below it."""
    step = sheet.em(style.points) * style.leading
    indent = sheet.em(style.points) * style.indent
    lines = broken(sheet, text, style, sheet.px(width), [sheet.px(width - indent)])
    for number, line in enumerate(lines):
        y += step
        shift = 0 if number else indent
        set_line(sheet, x + shift, y - step * .28, width - shift, line, style,
                 number == len(lines) - 1)
    return y + style.gap * sheet.em(style.points)


def paragraphs(sheet, x, y, width, text, style, title=None):
    """Paragraphs a line each; the first is the title when there is a style for it."""
    for number, part in enumerate(text.strip().split('\n')):
        y = paragraph(sheet, x, y, width, part, title if title and number == 0 else style)
    return y


def flowed(sheet, columns, text, style):
    """Text that goes on from column to column, each (x, top, width, bottom)."""
    step = sheet.em(style.points) * style.leading
    columns = list(columns)
    x, y, width, bottom = columns.pop(0)
    for part in text.strip().split('\n'):
        indent = sheet.em(style.points) * style.indent
        lines = broken(sheet, part, style, sheet.px(width), [sheet.px(width - indent)])
        for number, line in enumerate(lines):
            if y + step > bottom:
                if not columns:
                    raise SystemExit(f'make_pages: no column left for {part[:20]!r}')
                x, y, width, bottom = columns.pop(0)
            y += step
            shift = 0 if number else indent
            set_line(sheet, x + shift, y - step * .28, width - shift, line, style,
                     number == len(lines) - 1)
    return y


def row(sheet, y, cells):
    """Cells (x, text, style, align) on one baseline: one line of truth."""
    for x, text, style, align in cells:
        sheet.write(x, y, text, style, truth=False, align=align)
    sheet.truth.append(' '.join(' '.join(text.split()) for _, text, _, _ in cells if text))


def table(sheet, x, y, widths, rows, style, head=None, right=(), height=7, inset=2):
    """A table's text; the tops of its rows and its bottom."""
    tops = []
    for number, texts in enumerate(rows):
        tops.append(y)
        left, cells = x, []
        for column, (width, text) in enumerate(zip(widths, texts)):
            flush = column in right
            cells.append((left + (width - inset if flush else inset), text,
                          head if head and number == 0 else style, 'right' if flush else 'left'))
            left += width
        row(sheet, y + height * .5 + sheet.em(style.points) * .36, cells)
        y += height
    return tops + [y]


def grid(sheet, x, widths, tops, weight=0.25, ink=None):
    edges = [x + sum(widths[:count]) for count in range(len(widths) + 1)]
    for top in tops:
        sheet.rule(x, top, edges[-1], top, weight, ink)
    for edge in edges:
        sheet.rule(edge, tops[0], edge, tops[-1], weight, ink)


def leaders(sheet, x, y, width, entries, style, dot='.', step=1.7):
    """Entries (level, text, page) with rows of dots between text and page number."""
    em = sheet.em(style.points)
    for level, text, page in entries:
        y += em * step
        left = x + level * em * 1.6
        _, end = sheet.write(left, y, text, style, truth=False)
        start, _ = sheet.write(x + width, y, page, style, truth=False, align='right')
        advance = sheet.length(dot, style) * (1.8 if dot == '.' else 1)
        at = start - em * .4 - advance
        while at > end + em * .4:
            sheet.write(at, y, dot, style, truth=False)
            at -= advance
        sheet.truth.append(f'{text} {page}')
    return y


def vertical(sheet, right, top, bottom, text, style):
    """Columns of characters from right to left; punctuation goes to the upper right of its cell."""
    em = sheet.em(style.points)
    x, y, line = right - em, top, ''
    for part in text.strip().split('\n'):
        cells = '\u3000' * int(style.indent) + part
        for index, char in enumerate(cells):
            if y + em > bottom + .01 and char not in NEVER_FIRST:
                sheet.truth.append(line)
                x, y, line = x - em * style.leading, top, ''
            upright = char not in '，。、'
            sheet.write(x + (0 if upright else em * .55), y + em * (.86 if upright else .3), char,
                        style, truth=False)
            line += char.strip('\u3000')
            y += em * 1.04
        sheet.truth.append(line)
        x, y, line = x - em * style.leading, top, ''
    return x + em * style.leading
