# SPDX-License-Identifier: Apache-2.0
"""Ordinary clean pages, which must never become worse."""
from .catalogue import page, prose
from .damage import bitonal, scanned

WHAT = 'clean prose'


@page('plain', 'en-plain-serif-300.png', WHAT, 300)
def en_serif():
    sheet = prose('en/orchard', 'en-serif', 11, 300)
    return bitonal(sheet.image), sheet


@page('plain', 'en-plain-sans-200.png', WHAT)
def en_sans():
    sheet = prose('en/tide', 'en-sans', 10.5, 200)
    return sheet.image, sheet


@page('plain', 'en-plain-book-300.tif', WHAT, 300)
def en_book():
    sheet = prose('en/ledger', 'en-book', 11.5, 300, align='justify')
    return bitonal(sheet.image), sheet


@page('plain', 'en-plain-modern-200.jpg', WHAT, 200, 75)
def en_modern():
    sheet = prose('en/wind', 'en-modern', 11, 200)
    return scanned(sheet.image, 11), sheet


@page('plain', 'en-plain-gentium-200.png', WHAT)
def en_gentium():
    sheet = prose('en/mender', 'en-gentium', 12, 200, width=160)
    return bitonal(sheet.image), sheet


@page('plain', 'de-plain-office-200.png', WHAT)
def de_office():
    sheet = prose('de/mühle', 'en-office', 11.5, 200)
    return sheet.image, sheet


@page('plain', 'zh-plain-song-300.png', WHAT, 300)
def zh_song():
    sheet = prose('zh/渡口', 'zh-song', 10.5, 300)
    return bitonal(sheet.image), sheet


@page('plain', 'zh-plain-ming-200.png', WHAT)
def zh_ming():
    sheet = prose('zh/晒场', 'zh-ming', 11, 200)
    return sheet.image, sheet


@page('plain', 'zh-plain-hei-200.jpg', WHAT, 200, 75)
def zh_hei():
    sheet = prose('zh/修钟', 'zh-hei', 10.5, 200)
    return scanned(sheet.image, 12), sheet


@page('plain', 'zh-plain-micro-300.tif', WHAT, 300)
def zh_micro():
    sheet = prose('zh/植物', 'zh-micro', 10.5, 300)
    return bitonal(sheet.image), sheet


@page('plain', 'zh-plain-kai-200.png', WHAT)
def zh_kai():
    sheet = prose('zh/灯塔', 'zh-kai', 12, 200)
    return bitonal(sheet.image), sheet


@page('plain', 'ja-plain-mincho-300.png', WHAT, 300)
def ja_mincho():
    sheet = prose('ja/ekimae', 'ja-mincho', 11, 300)
    return sheet.image, sheet
