# SPDX-License-Identifier: Apache-2.0
"""Forms, and letters with stamps and signatures."""
from . import texts
from .catalogue import page, prose
from .damage import bitonal, scanned, signed, stamped
from .sheet import Sheet, Style
from .typeset import paragraph, row


def comb(sheet, x, y, text, style, cells, cell=6.4, height=7.6):
    """A character to a cell."""
    sheet.box(x, y, cells * cell, height)
    for number in range(1, cells):
        sheet.rule(x + number * cell, y, x + number * cell, y + height, .18)
    for number, char in enumerate(text):
        if char != ' ':
            sheet.write(x + (number + .5) * cell, y + height * .72, char, style, truth=False,
                        align='centre')


def tick_box(sheet, x, y, ticked, size=3.8):
    sheet.box(x, y, size, size, .3)
    if ticked:
        sheet.rule(x + .6, y + size * .5, x + size * .42, y + size - .5, .6)
        sheet.rule(x + size * .42, y + size - .5, x + size + .8, y - .6, .6)


@page('form', 'en-form-claim-200.png', 'boxes, comb fields, ticks')
def claim():
    sheet = Sheet(165, 110, 200)
    label, filled = Style('carlito', 10.5), Style('courier', 12)
    sheet.write(12, 15, 'Claim for Water Damage', Style('carlito-bold', 18))
    sheet.write(12, 22, 'Please complete in block letters and return within 14 days.', label)
    y = 29
    for number, (name, value) in enumerate(texts.rows('en', 'claim')):
        sheet.write(12, y + 5.2, name, label, truth=False)
        if number:
            comb(sheet, 48, y, value, filled, max(10, len(value)))
        else:
            sheet.box(48, y, 96, 7.6)
            sheet.write(50, y + 5.4, value, filled, truth=False)
        sheet.truth.append(f'{name} {value}')
        y += 11
    for x, name, ticked in ((12, 'Burst pipe', True), (48, 'Roof leak', False),
                            (84, 'Flood', False), (114, 'Appliance', True)):
        tick_box(sheet, x, y + 1, ticked)
        sheet.write(x + 6, y + 4.4, name, label, truth=False)
    sheet.truth.append('Burst pipe Roof leak Flood Appliance')
    sheet.write(12, y + 14, 'Estimated cost of repair: 1,350.00', label)
    return sheet.trimmed(110).image, sheet


@page('form', 'zh-form-register-200.jpg', 'ruled cells, comb fields', 200, 65)
def register():
    sheet = Sheet(160, 90, 200)
    sheet.write(80, 13, '新员工入职登记表', Style('zenhei', 17), align='centre')
    label, filled = Style('zenhei', 10.5), Style('ukai', 13)
    y = 20
    for number, (name, value) in enumerate(texts.rows('zh', '登记')):
        sheet.box(10, y, 32, 9.5)
        sheet.box(42, y, 108, 9.5)
        sheet.write(26, y + 6.3, name, label, truth=False, align='centre')
        if value.isdigit():
            comb(sheet, 44, y + 1.2, value, Style('ukai', 12), len(value), 5.7, 7)
        else:
            sheet.write(45, y + 6.6, value, filled, truth=False)
        sheet.truth.append(f'{name} {value}')
        y += 9.5
    return scanned(sheet.image, 71), sheet


@page('form', 'de-form-meldung-150.png', 'lines to write on, ticks', 150)
def meldung():
    sheet = Sheet(165, 108, 150)
    label, filled = Style('opensans', 10), Style('caladea-italic', 13)
    sheet.write(12, 15, 'Anmeldung zur Volkshochschule', Style('opensans-bold', 15))
    y = 27
    for name, value in texts.rows('de', 'form'):
        row(sheet, y, [(12, name, label, 'left'), (62, value, filled, 'left')])
        sheet.rule(60, y + 1.8, 150, y + 1.8, .2)
        y += 10.5
    for x, name, ticked in ((12, 'Töpfern', False), (52, 'Französisch', True),
                            (100, 'Gemüsegarten', True)):
        tick_box(sheet, x, y - 1, ticked)
        sheet.write(x + 6, y + 2.4, name, label, truth=False)
    sheet.truth.append('Töpfern Französisch Gemüsegarten')
    sheet.write(12, y + 13, 'Die Gebühr von 48,00 € wird abgebucht.', label)
    return bitonal(sheet.image), sheet


@page('letter', 'en-letter-signed-200.jpg', 'letterhead, blue signature, RECEIVED stamp', 200, 65,
      'stamp and signature not in the truth')
def letter_english():
    sheet = Sheet(165, 170, 200, (252, 251, 248), (25, 25, 30))
    sheet.write(82, 15, 'WHITLOW & DAUGHTER, ORGAN BUILDERS', Style('libertine-bold', 15),
                align='centre')
    sheet.write(82, 21, 'The Old Malthouse, Ludham Road', Style('libertine', 10), align='centre')
    sheet.rule(16, 24, 149, 24, .3)
    sheet.write(149, 34, '26 May 2016', Style('libertine', 12), align='right')
    y = 38
    for part in texts.lines('en', 'letter'):
        y = paragraph(sheet, 16, y, 133, part, Style('libertine', 12, gap=.5))
    sheet.write(16, y + 27, 'Miriam Whitlow', Style('libertine', 12))
    sheet = sheet.trimmed(y + 35)
    image = signed(sheet.image, (sheet.px(14), sheet.px(y - 2)), 'M. Whitlow', 90, seed=72)
    image = stamped(image, (sheet.px(96), sheet.px(y - 1)), ['RECEIVED', '27 MAY 2016'],
                    'lato-bold', 52, (60, 80, 190), 72, 7, (390, 160))
    return scanned(image, 72), sheet


@page('letter', 'zh-letter-stamped-200.jpg', 'round red stamp on the date, signature', 200, 60,
      'stamp and signature not in the truth')
def letter_chinese():
    sheet = prose('zh/书信', 'zh-song', 12, 200, width=160, title=1, paper=(253, 252, 247),
                  ink=(30, 28, 30))
    height = sheet.height
    tall = Sheet(160, height + 34, 200, (253, 252, 247), (30, 28, 30))
    tall.image.paste(sheet.image, (0, 0))
    tall.truth = sheet.truth
    tall.write(140, height + 2, '海州文史研究会', Style('song', 12), align='right')
    tall.write(140, height + 10, '2023年3月11日', Style('song', 12), align='right')
    image = signed(tall.image, (tall.px(28), tall.px(height - 4)), 'Lin Zh', 96, (25, 25, 35), 73)
    image = stamped(image, (tall.px(92), tall.px(height - 8)), ['海州文史', '研究会'],
                    'zenhei', 46, (215, 50, 45), 73, -8, (270, 270), ring=True)
    return scanned(image, 73), tall
