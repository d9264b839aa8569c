# SPDX-License-Identifier: Apache-2.0
"""Pages as scanners, copiers and fax machines deliver them."""
from . import damage, optics
from .catalogue import page, prose
from .damage import bitonal, scanned


@page('turned', 'en-turned90-skew-noise-200.png', 'quarter turn left, skew of 2 degrees, pepper')
def turned_left():
    sheet = prose('en/radio', 'en-warm', 11, 200)
    image = optics.skewed(optics.quarters(sheet.image, 1), 2)
    return bitonal(damage.pepper(image, 21, .0012)), sheet


@page('turned', 'zh-turned180-200.jpg', 'upside down', 200, 60)
def turned_over():
    sheet = prose('zh/面馆', 'zh-ming', 11, 200)
    return scanned(optics.quarters(sheet.image, 2), 22), sheet


@page('turned', 'zh-turned270-skew-noise-200.jpg',
      'quarter turn right, skew of 1.5 degrees, grain', 200, 55)
def turned_right():
    sheet = prose('zh/修钟', 'zh-micro', 11, 200)
    image = optics.skewed(optics.quarters(sheet.image, 3), -1.5)
    return scanned(image, 23, sigma=9), sheet


@page('turned', 'en-turned270-300.tif', 'quarter turn right', 300)
def turned_bitonal():
    sheet = prose('en/bakery', 'en-book', 11, 300, width=130)
    return bitonal(optics.quarters(sheet.image, 3)), sheet


@page('skew', 'zh-skew05-200.png', 'skew of half a degree')
def skew_half():
    sheet = prose('zh/晒场', 'zh-song', 11, 200)
    return bitonal(optics.skewed(sheet.image, .5)), sheet


@page('skew', 'en-skew2-200.jpg', 'skew of 2 degrees', 200, 60)
def skew_two():
    sheet = prose('en/paper', 'en-old', 11.5, 200)
    return scanned(optics.skewed(sheet.image, -2), 24), sheet


@page('skew', 'zh-skew5-200.jpg', 'skew of 5 degrees, dark lid', 200, 55)
def skew_five():
    sheet = prose('zh/植物', 'zh-kai', 12, 200)
    return scanned(optics.skewed(sheet.image, 5, 40), 25), sheet


@page('skew', 'en-skew12-150.png', 'skew of 12 degrees', 150)
def skew_twelve():
    sheet = prose('en/fossil', 'en-web', 11, 150, margin=20)
    return scanned(optics.skewed(sheet.image, -12), 26), sheet


@page('dirty', 'en-darkcopy-border-200.jpg', 'dark photocopy with black borders', 200, 50)
def dark_copy_english():
    sheet = prose('en/minutes', 'en-serif', 11.5, 200)
    return damage.photocopied(sheet.image, 27, ground=138, border=34), sheet


@page('dirty', 'zh-darkcopy-border-200.png', 'dark photocopy with black borders')
def dark_copy_chinese():
    sheet = prose('zh/通知', 'zh-song', 12, 200)
    image = optics.skewed(sheet.image, .8)
    return damage.photocopied(image, 28, ground=150, border=42), sheet


@page('dirty', 'zh-uneven-light-200.jpg', 'uneven light, dark corner', 200, 55)
def uneven():
    sheet = prose('zh/面馆', 'zh-hei', 10.5, 200)
    return scanned(damage.unevenly_lit(sheet.image, 29, .38), 29, white=235), sheet


@page('dirty', 'en-bleed-through-200.jpg', 'the other side shines through', 200, 60)
def bleed_english():
    sheet = prose('en/garden', 'en-serif', 12, 200)
    other = prose('en/paper', 'en-serif', 12, 200)
    return scanned(damage.bled_through(sheet.image, other.image, .34), 30, white=236), sheet


@page('dirty', 'zh-pepper-200.png', 'pepper')
def pepper():
    sheet = prose('zh/灯塔', 'zh-micro', 11, 200)
    return bitonal(damage.pepper(sheet.image.copy(), 31, .0035, 3)), sheet


@page('dirty', 'en-holes-staple-200.jpg', 'punched holes, a staple, skew', 200, 60)
def holes():
    sheet = prose('en/wind', 'en-office', 12, 200, width=165, margin=24)
    image = damage.punched(sheet.image, 200, 32, [(10, 22), (10, sheet.height - 22)])
    image = optics.skewed(damage.stapled(image, 200, 7, 9), -.7, 215)
    return scanned(image, 32), sheet


@page('dirty', 'zh-highlighter-200.jpg', 'yellow marker over some lines', 200, 65)
def highlighter():
    sheet = prose('zh/通知', 'zh-ming', 11.5, 200)
    width, step = sheet.image.width, sheet.px(sheet.em(11.5) * 1.6)
    top = sheet.px(20.3)
    strokes = ((.3, .88, 0), (.1, .55, 1), (.15, .82, 6))
    boxes = [(width * start, top + step * line + 6, width * end, top + step * line + step - 6)
             for start, end, line in strokes]
    return scanned(damage.highlighted(sheet.image, boxes), 33), sheet


@page('watermark', 'zh-watermark-200.png', '内部资料 behind the text',
      note='watermark not in the truth')
def watermark_chinese():
    sheet = prose('zh/晒场', 'zh-hei', 11, 200)
    return damage.watermarked(sheet.image, '内部资料', 'zenhei', 210, 208, 22), sheet


@page('typewriter', 'en-typewriter-200.jpg', 'typewriter face, uneven ribbon', 200, 60)
def typewriter():
    sheet = prose('en/minutes', 'en-typewriter', 11, 200, width=170, title=1)
    ribbon = damage.cloud(sheet.image.size, 36, 70)
    faded = 255 - (255 - damage.samples(sheet.image)) * (.55 + .45 * ribbon)
    return scanned(damage.picture(faded), 36, radius=.8), sheet


@page('fax', 'en-fax-204x98-dropouts.tif', 'G4, 204x98 dpi, lost lines', (204, 98))
def fax_coarse():
    sheet = prose('en/letter', 'en-sans', 12.5, 408, width=180, title=1)
    return damage.faxed(sheet.image, 408, 98, 41, dropouts=7), sheet


@page('fax', 'zh-fax-204x196-dropouts.tif', 'G4, 204x196 dpi, lost lines', (204, 196))
def fax_chinese():
    sheet = prose('zh/通知', 'zh-hei', 13, 408, width=190)
    return damage.faxed(sheet.image, 408, 196, 42, dropouts=14, threshold=165), sheet


@page('fax', 'de-fax-204x196-skew.tif', 'G4, 204x196 dpi, skew of 1 degree, specks', (204, 196))
def fax_german():
    sheet = prose('de/fax', 'en-web', 11.5, 408, width=180, title=1)
    image = optics.skewed(sheet.image, 1)
    return damage.faxed(image, 408, 196, 43, dropouts=3, specks=.0015), sheet


@page('lowres', 'en-75dpi.png', '75 dpi, grey', 75)
def low_english():
    sheet = prose('en/radio', 'en-sans', 12, 300, width=170)
    return damage.scaled(sheet.image, .25), sheet


@page('lowres', 'en-96dpi-jpeg.jpg', '96 dpi, JPEG quality 25', 96, 25)
def low_english_jpeg():
    sheet = prose('en/paper', 'en-serif', 12, 288, width=170)
    return damage.scaled(sheet.image, 1 / 3), sheet


@page('lowres', 'zh-110dpi-jpeg.jpg', '110 dpi, JPEG quality 30', 110, 30)
def low_chinese():
    sheet = prose('zh/渡口', 'zh-ming', 12, 330, width=170)
    return damage.scaled(sheet.image, 1 / 3), sheet


@page('highres', 'zh-600dpi.tif', '600 dpi, 1 bit', 600)
def high_chinese():
    sheet = prose('zh/书信', 'zh-kai', 10.5, 600, width=105, margin=8, title=1)
    return bitonal(sheet.image), sheet
