# SPDX-License-Identifier: Apache-2.0
"""Open books and pages before a telephone's camera."""
from . import optics, texts
from .catalogue import body, page, prose
from .damage import cloud, shaded
from .sheet import Sheet, Style
from .typeset import paragraphs


def book_page(key, faces, points, dpi, width, height, number, title=False):
    """A page of a book with its number at the foot."""
    language, name = key.split('/')
    sheet = Sheet(width, height, dpi, 244, 26)
    head = Style(body(faces, points).face, points * 1.15, leading=2.6, align='centre')
    style = body(faces, points, align='justify')
    style = style.but(indent=style.indent or 1.3)
    paragraphs(sheet, 14, 12, width - 28, texts.text(language, name), style,
               head if title else None)
    sheet.write(width / 2, height - 8, number, Style(style.face, points * .9), align='centre')
    return sheet


def joined(left, right):
    left.truth += right.truth
    return left


@page('spread', 'en-book-spread-200.jpg', 'two pages, gutter shadow', 200, 60)
def spread_english():
    left = book_page('en/spread-left', 'en-old', 12, 200, 105, 140, '62')
    right = book_page('en/spread-right', 'en-old', 12, 200, 105, 140, '63', True)
    return optics.spread(left.image, right.image, 91), joined(left, right)


@page('spread', 'zh-book-spread-200.jpg', 'two pages, gutter shadow', 200, 60)
def spread_chinese():
    left = book_page('zh/书左', 'zh-song', 11, 200, 100, 112, '118')
    right = book_page('zh/书右', 'zh-song', 11, 200, 100, 112, '119', True)
    return optics.spread(left.image, right.image, 92, drop=.04), joined(left, right)


@page('photo', 'en-photo-bent.jpg', 'telephone: page of a thick book', 190, 55)
def bent_english():
    sheet = prose('en/bakery', 'en-book', 12, 190, width=135, margin=20, paper=250)
    return optics.camera(optics.bent(sheet.image, .05, .05), 93), sheet


@page('photo', 'zh-photo-bent.jpg', 'telephone: page of a thick book', 200, 55)
def bent_chinese():
    sheet = prose('zh/面馆', 'zh-song', 12, 200, width=135, margin=19, paper=250)
    return optics.camera(optics.bent(sheet.image, .045, .05), 94), sheet


@page('photo', 'en-photo-perspective.jpg', 'telephone: perspective on a table, shadow', 190, 60)
def perspective_english():
    sheet = prose('en/radio', 'en-serif', 12, 190, width=150)
    image = optics.photographed(sheet.image, [(.05, .04), (.03, .06), (0, .01), (.02, 0)], 95)
    return optics.camera(optics.hand_shadow(image, 95, .4), 95), sheet


@page('photo', 'zh-photo-perspective.jpg', 'telephone: perspective on a table, shadow', 200, 60)
def perspective_chinese():
    sheet = prose('zh/渡口', 'zh-micro', 11.5, 200, width=150)
    image = optics.photographed(sheet.image, [(.02, .05), (.06, .03), (.02, 0), (0, .02)], 96,
                                tone=(70, 74, 82))
    return optics.camera(optics.hand_shadow(image, 96, .35), 96), sheet


@page('photo', 'de-photo-tilted.jpg', 'telephone: turned by 4 degrees, uneven light', 180, 60)
def tilted_german():
    sheet = prose('de/mühle', 'en-web', 11, 180, width=150)
    turned = [(.0, .06), (.05, .0), (.0, .06), (.05, .0)]
    image = optics.photographed(sheet.image, turned, 97, tone=(150, 140, 124))
    image = shaded(image, .66 + .34 * cloud(image.size, 97, 4))
    return optics.camera(image, 97), sheet
