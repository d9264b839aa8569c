# SPDX-License-Identifier: Apache-2.0
"""Tables, invoices and lists of contents."""
from . import texts
from .catalogue import page
from .damage import bitonal, scanned, stamped
from .sheet import Sheet, Style
from .typeset import grid, leaders, row, table


@page('table', 'zh-table-ruled-200.png', 'ruled')
def ruled():
    sheet = Sheet(148, 75, 200)
    sheet.write(74, 13, '期中考试成绩统计', Style('zenhei', 16), align='centre')
    widths = [34, 24, 24, 24, 22]
    tops = table(sheet, 10, 20, widths, texts.rows('zh', '成绩'), Style('song', 11.5),
                 Style('zenhei', 11), (1, 2, 3, 4), 8)
    grid(sheet, 10, widths, tops)
    return bitonal(sheet.image), sheet


@page('table', 'en-table-half-ruled-200.png', 'a rule above, below and under the head')
def half_ruled():
    sheet = Sheet(150, 80, 200)
    sheet.write(14, 12, 'Table 7. Stations of the northern line', Style('libertine-bold', 11.5))
    widths = [40, 22, 24, 40]
    tops = table(sheet, 12, 17, widths, texts.rows('en', 'stations'), Style('libertine', 11.5),
                 Style('libertine-bold', 11.5), (1, 2, 3), 7.4)
    for top, weight in ((tops[0], .5), (tops[1], .25), (tops[-1], .5)):
        sheet.rule(12, top, 138, top, weight)
    return bitonal(sheet.image), sheet


@page('table', 'zh-table-unruled-150.jpg', 'unruled', 150, 65)
def unruled():
    sheet = Sheet(160, 78, 150)
    sheet.write(14, 13, '支线列车时刻', Style('microhei', 15))
    table(sheet, 12, 19, [26, 32, 34, 24, 22], texts.rows('zh', '车次'), Style('microhei', 11),
          Style('zenhei', 11), height=7.6)
    return scanned(sheet.image, 51), sheet


@page('table', 'en-table-zebra-200.jpg', 'grey bands', 200, 65)
def zebra():
    sheet = Sheet(160, 72, 200)
    for number in range(0, 7, 2):
        sheet.box(10, 10 + number * 7.5, 140, 7.5, 0, 70 if number == 0 else 222)
    table(sheet, 10, 10, [36, 26, 28, 28, 22], texts.rows('en', 'rivers'), Style('carlito', 11.5),
          Style('carlito-bold', 11.5, ink=250), (1, 2, 4), 7.5)
    return scanned(sheet.image, 52), sheet


def amounts(sheet, lines, x, right, y, style, bold):
    """Sums below an invoice; the last is the total."""
    for number, (name, amount) in enumerate(lines):
        face = bold if number == len(lines) - 1 else style
        row(sheet, y, [(x, name, face, 'left'), (right, amount, face, 'right')])
        y += 6.5
    return y


@page('invoice', 'en-invoice-200.png', 'head, columns of figures, total')
def invoice_english():
    sheet = Sheet(165, 130, 200)
    text, bold = Style('opensans', 9.5), Style('opensans-bold', 9.5)
    sheet.write(12, 16, 'Harrow & Pell Joinery', Style('opensans-bold', 17))
    sheet.write(12, 22, 'Unit 6, Canal Yard, Wexby WX3 8TN', Style('opensans', 8.5))
    row(sheet, 33, [(12, 'INVOICE 2019-0347', bold, 'left'), (153, '28 March 2019', text, 'right')])
    sheet.write(12, 40, 'To: Bellweather School, 4 Priory Road, Wexby', text)
    widths = [64, 16, 30, 31]
    tops = table(sheet, 12, 46, widths, texts.rows('en', 'invoice'), text, bold, (1, 2, 3), 7.2)
    for top in tops[:2] + tops[-1:]:
        sheet.rule(12, top, 153, top, .3)
    amounts(sheet, [('Subtotal', '1,214.20'), ('VAT 20%', '242.84'), ('Total due', '1,457.04')],
            104, 151, tops[-1] + 7, text, bold)
    sheet.write(12, 122, 'Payment within 30 days to account 40-71-29 / 5516 0834.', text)
    return sheet.image, sheet


@page('invoice', 'zh-invoice-stamped-200.jpg', 'ruled, total in words, red stamp', 200, 60,
      'stamp text not in the truth')
def invoice_chinese():
    sheet = Sheet(165, 102, 200, (255, 253, 246), (40, 40, 60))
    text, bold = Style('song', 10.5), Style('zenhei', 10.5)
    sheet.write(82, 15, '销售货物清单', Style('zenhei', 18), align='centre')
    row(sheet, 25, [(12, '购货单位：锦程文化用品店', text, 'left'),
                    (153, '编号：00417285', text, 'right')])
    widths = [36, 24, 16, 18, 23, 24]
    tops = table(sheet, 12, 30, widths, texts.rows('zh', '发票'), text, bold, (3, 4, 5), 7.5)
    tops += table(sheet, 12, tops[-1], [117, 24],
                  [['合计（大写）肆仟玖佰零贰元整', '4902.00']], text, None, (1,), 7.5)[1:]
    for top in tops:
        sheet.rule(12, top, 153, top)
    for edge in (12, 153):
        sheet.rule(edge, tops[0], edge, tops[-1])
    row(sheet, 92, [(12, '开票人：沈佳', text, 'left'), (70, '复核：唐文', text, 'left')])
    image = stamped(sheet.image, (800, 470), ['锦程文化', '发票专用章'], 'zenhei', 40,
                    (205, 45, 50), 53, 8, (330, 220), ring=True)
    return scanned(image, 53), sheet


@page('invoice', 'de-rechnung-150.jpg', 'head, columns of figures, total', 150, 60)
def invoice_german():
    sheet = Sheet(170, 112, 150)
    text, bold = Style('biolinum', 11), Style('biolinum-bold', 11)
    sheet.write(12, 15, 'Dachdeckerei Böhringer', Style('biolinum-bold', 18))
    sheet.write(12, 22, 'Am Bächle 9, 72250 Freudenstadt', text)
    row(sheet, 33, [(12, 'Rechnung Nr. 1186', bold, 'left'),
                    (158, '5. Oktober 2020', text, 'right')])
    widths = [14, 58, 22, 26, 26]
    tops = table(sheet, 12, 38, widths, texts.rows('de', 'rechnung'), text, bold, (2, 3, 4), 7.4)
    sheet.rule(12, tops[1], 158, tops[1], .3)
    sheet.rule(12, tops[-1], 158, tops[-1], .3)
    amounts(sheet, [('Zwischensumme', '1.536,60'), ('Umsatzsteuer 19 %', '291,95'),
                    ('Rechnungsbetrag', '1.828,55 €')], 92, 156, tops[-1] + 7, text, bold)
    sheet.write(12, 105, 'Zahlbar ohne Abzug bis zum 4. November 2020.', text)
    return scanned(sheet.image, 54), sheet


@page('leaders', 'en-toc-300.png', 'contents with leaders', 300, note='truth without the dots')
def contents_english():
    sheet = Sheet(140, 122, 300)
    sheet.write(70, 14, 'Contents', Style('oldstandard-bold', 18), align='centre')
    entries = [(int(level), text, number) for level, text, number in texts.rows('en', 'toc')]
    leaders(sheet, 16, 17, 108, entries, Style('oldstandard', 11.5))
    return bitonal(sheet.image), sheet


@page('leaders', 'zh-toc-150.jpg', 'contents with leaders', 150, 65, 'truth without the dots')
def contents_chinese():
    sheet = Sheet(150, 126, 150)
    sheet.write(75, 14, '目录', Style('zenhei', 18), align='centre')
    entries = [(int(level), text, number) for level, text, number in texts.rows('zh', '目录')]
    leaders(sheet, 14, 17, 122, entries, Style('uming', 12), step=1.75)
    return scanned(sheet.image, 55), sheet
