# SPDX-License-Identifier: Apache-2.0
"""What printers do with type: newspapers, notes, drop capitals, vertical lines, colour."""
from . import damage, texts
from .catalogue import body, page, prose
from .damage import bitonal, scanned
from .sheet import Sheet, Style
from .typeset import broken, flowed, paragraph, paragraphs, set_line, vertical


def newspaper(sheet, name, headline, deck, columns, text, style):
    """Name of the paper, headline, second line and columns."""
    title, subtitle, *story = text
    sheet.write(sheet.width / 2, 14, name, headline, align='centre')
    sheet.rule(8, 18, sheet.width - 8, 18, .6)
    sheet.write(8, 30, title, deck)
    sheet.write(8, 37, subtitle, deck.but(points=deck.points * .5))
    return flowed(sheet, columns, '\n'.join(story), style)


@page('newspaper', 'en-news-3columns-200.png', 'three justified columns, headlines')
def news_english():
    sheet = Sheet(190, 94, 200)
    columns = [(8 + 59.5 * number, 41, 55, 86) for number in range(3)]
    newspaper(sheet, 'THE SKAW COURIER', Style('vollkorn-bold', 22), Style('vollkorn-bold', 24),
              columns, texts.lines('en', 'news'),
              Style('vollkorn', 9.5, 1.3, indent=1, align='justify'))
    for edge in (65.2, 124.8):
        sheet.rule(edge, 43, edge, 86, .15)
    return bitonal(sheet.image), sheet


@page('newspaper', 'zh-news-4columns-200.jpg', 'four columns, headline, grey paper', 200, 60)
def news_chinese():
    sheet = Sheet(210, 87, 200)
    columns = [(8 + 49.5 * number, 41, 46, 80.5) for number in range(4)]
    newspaper(sheet, '海州晚报', Style('uming', 26), Style('zenhei', 25), columns,
              texts.lines('zh', '新闻'), Style('song', 9.5, 1.45, indent=2, align='justify'))
    return scanned(sheet.image, 101, white=222, sigma=5), sheet


@page('newspaper', 'en-news-briefs-2columns-150.jpg', 'two columns, short headed pieces',
      150, 60)
def briefs():
    sheet = Sheet(165, 92, 150)
    text, head = Style('libertine', 11.5, 1.3), Style('libertine-bold', 15, 1.45)
    column, y = 10, 8
    pieces = texts.lines('en', 'brief')
    fossil = texts.lines('en', 'fossil')
    for number, part in enumerate(pieces + [fossil[0], fossil[2]]):
        if number == 4:
            column, y = 86, 8
        y = paragraph(sheet, column, y, 70, part, text if number % 2 else head)
        y += 3 if number % 2 else 0
    sheet.rule(83, 10, 83, 82, .2)
    return scanned(sheet.trimmed(92).image, 102), sheet


@page('small', 'en-footnotes-300.png', 'footnotes in small type', 300)
def footnotes_english():
    sheet = Sheet(130, 130, 300)
    y = paragraphs(sheet, 14, 10, 102, texts.text('en', 'footnoted'),
                   Style('libertine', 11.5, 1.4, indent=1.2, align='justify'))
    sheet.rule(14, y + 5, 46, y + 5, .15)
    y = paragraphs(sheet, 14, y + 6, 102, texts.text('en', 'notes'), Style('libertine', 8.5, 1.3))
    return bitonal(sheet.trimmed(y + 8).image), sheet


@page('small', 'zh-footnotes-300.png', 'footnotes in small type', 300)
def footnotes_chinese():
    sheet = Sheet(130, 130, 300)
    y = paragraphs(sheet, 14, 10, 102, texts.text('zh', '注释正文'),
                   Style('zenhei', 11, 1.65, indent=2, align='justify'))
    sheet.rule(14, y + 5, 42, y + 5, .15)
    y = paragraphs(sheet, 14, y + 6, 102, texts.text('zh', '注释'), Style('zenhei', 8, 1.45))
    return sheet.trimmed(y + 8).image, sheet


@page('small', 'en-leaflet-6pt-300.png', 'package leaflet, 6 points', 300)
def leaflet_english():
    sheet = Sheet(95, 60, 300)
    y = paragraphs(sheet, 6, 5, 83, texts.text('en', 'medicine'),
                   Style('biolinum', 6.5, 1.3, gap=.3))
    return bitonal(sheet.trimmed(y + 6).image), sheet


@page('small', 'zh-leaflet-6pt-400.tif', 'package leaflet, 6.5 points', 400)
def leaflet_chinese():
    sheet = Sheet(90, 60, 400)
    y = paragraphs(sheet, 6, 5, 78, texts.text('zh', '小字'), Style('microhei', 6.5, 1.4))
    return bitonal(sheet.trimmed(y + 6).image), sheet


@page('headings', 'zh-heading-large-150.jpg', 'very large heading over small text', 150, 65)
def heading():
    sheet = Sheet(165, 130, 150)
    sheet.write(10, 36, '海岛灯塔', Style('zenhei', 88))
    sheet.write(12, 52, '守塔人与一百三十九级台阶', Style('zenhei', 24))
    story = texts.text('zh', '灯塔').split('\n', 1)[1]
    y = paragraphs(sheet, 12, 58, 141, story, body('zh-song', 12))
    return scanned(sheet.trimmed(y + 9).image, 103), sheet


@page('underline', 'en-underlined-200.png', 'underlined sentences')
def underlined():
    sheet = Sheet(150, 110, 200)
    style = Style('caladea', 11.5)
    step = sheet.em(11.5) * 1.45
    y = paragraph(sheet, 14, 8, 122, 'Conditions of Hire', Style('caladea-bold', 16, 1.5))
    for number, part in enumerate(texts.lines('en', 'underlined')[1:]):
        lines = broken(sheet, part, style, sheet.px(122))
        for index, line in enumerate(lines):
            y += step
            set_line(sheet, 14, y - step * .28, 122, line, style, True)
            if number in (1, 3):
                right = 14 + sum(piece[2] for piece in line) * 25.4 / 200
                sheet.rule(14, y - step * .28 + .7, right, y - step * .28 + .7, .2)
        y += 1.5
    return bitonal(sheet.trimmed(y + 10).image), sheet


@page('colour', 'zh-coloured-paper-200.jpg', 'dark green on pink paper', 200, 65)
def coloured_chinese():
    sheet = prose('zh/通知', 'zh-micro', 11.5, 200, paper=(246, 200, 206), ink=(20, 74, 50))
    return damage.grain(damage.soften(sheet.image, .6), 4, 104), sheet


@page('colour', 'en-coloured-paper-150.jpg', 'dark blue on yellow paper', 150, 60)
def coloured_english():
    sheet = prose('en/garden', 'en-humanist', 13, 150, paper=(250, 226, 120), ink=(24, 40, 110))
    return damage.grain(damage.soften(sheet.image, .5), 4, 105), sheet


@page('polarity', 'zh-photo-bars-200.jpg', 'white text on bars at the edges of a photograph',
      200, 70)
def photo_bars():
    sheet = Sheet(150, 100, 200, (255, 255, 255), (30, 30, 30))
    sheet.image.paste(damage.scene(sheet.px(150), sheet.px(58), 106), (0, 0))
    bars = ((0, 13, (20, 40, 70)), (47, 11, (120, 30, 30)))
    for top, height, colour in bars:
        sheet.box(0, top, 150, height, 0, colour)
    white = (250, 250, 250)
    sheet.write(10, 9, '守望海岛的人', Style('zenhei', 20, ink=white))
    sheet.write(10, 54.6, '摄于南屿灯塔　二〇二二年冬', Style('zenhei', 13, ink=white))
    y = paragraph(sheet, 10, 62, 130, texts.lines('zh', '灯塔')[3], body('zh-hei', 11.5))
    return scanned(sheet.trimmed(y + 7).image, 106, radius=.4), sheet


@page('typography', 'en-dropcap-200.png', 'drop capital, justified, hyphenated')
def drop_capital():
    sheet = Sheet(130, 130, 200)
    style = Style('oldstandard', 12, 1.4, indent=1.5, align='justify')
    step = sheet.em(12) * 1.4
    first, *others = texts.lines('en', 'clockhist')
    sheet.write(14, 10 + step * 2.72, first[0], Style('oldstandard-bold', 58), truth=False)
    lines = broken(sheet, first[1:], style, sheet.px(102), [sheet.px(87)] * 3)
    y = 10
    for number, line in enumerate(lines):
        y += step
        shift = 15 if number < 3 else 0
        set_line(sheet, 14 + shift, y - step * .28, 102 - shift, line, style,
                 number == len(lines) - 1)
    sheet.truth[0] = first[0] + sheet.truth[0]
    y = paragraphs(sheet, 14, y, 102, '\n'.join(others), style)
    return bitonal(sheet.trimmed(y + 9).image), sheet


@page('typography', 'de-hyphenated-200.png', 'narrow, justified, hyphenated')
def hyphenated_german():
    sheet = Sheet(110, 140, 200)
    y = paragraphs(sheet, 12, 9, 86, texts.text('de', 'bahn'),
                   Style('modern', 12, 1.35, indent=1.2, align='justify'))
    return sheet.trimmed(y + 9).image, sheet


@page('vertical', 'zh-vertical-200.png', 'vertical lines from right to left')
def vertical_chinese():
    sheet = Sheet(98, 92, 200)
    vertical(sheet, 90, 9, 84, texts.text('zh', '竖排'), Style('song', 14, 1.6))
    return bitonal(sheet.image), sheet


@page('vertical', 'ja-vertical-200.jpg', 'vertical lines from right to left', 200, 70)
def vertical_japanese():
    sheet = Sheet(135, 92, 200)
    vertical(sheet, 127, 9, 84, texts.text('ja', 'yuki'), Style('mincho', 13, 1.7))
    return scanned(sheet.image, 107), sheet


@page('mixed', 'zh-mixed-manual-200.jpg', 'Chinese with English words and figures', 200, 65)
def mixed_manual():
    sheet = prose('zh/混排', 'zh-song', 11.5, 200, latin='caladea')
    return scanned(sheet.image, 108), sheet


@page('mixed', 'zh-mixed-minutes-150.png', 'Chinese and English sentences in turn', 150)
def mixed_minutes():
    sheet = prose('zh/会议', 'zh-micro', 12, 150, latin='opensans', indent=0, align='left')
    return scanned(sheet.image, 109), sheet


@page('mixed', 'en-mixed-glossary-200.png', 'English with Chinese words')
def mixed_glossary():
    sheet = prose('en/mixed', 'zh-hei', 11.5, 200, latin='libertine', indent=0, align='left')
    return bitonal(sheet.image), sheet
