# SPDX-License-Identifier: Apache-2.0
"""Receipts, business cards and labels."""
from . import optics, texts
from .catalogue import page
from .damage import bitonal, picture, samples, scanned
from .sheet import Sheet, Style
from .typeset import row


@page('receipt', 'en-receipt-200.jpg', 'till receipt, faint, slightly skewed', 200, 60)
def receipt_english():
    sheet = Sheet(72, 98, 200)
    text = Style('inconsolata', 10.5)
    for number, line in enumerate(['THE COPPER KETTLE', '18 Minster Street', 'Tel 01904 555 268']):
        sheet.write(36, 9 + number * 5, line, text, align='centre')
    y = 28
    lines = texts.rows('en', 'receipt') + [['TOTAL GBP', '26.60'], ['CARD', '26.60']]
    for name, amount in lines:
        row(sheet, y, [(6, name, text, 'left'), (66, amount, text, 'right')])
        y += 5.4
    sheet.write(6, y + 4, 'VAT 20% included   4.43', text)
    sheet.write(6, y + 9.4, '14-02-2022 11:37 Table 9', text)
    sheet.write(36, y + 19, 'Please come again', text, align='centre')
    faint = picture(80 + samples(sheet.image) * .68)
    return scanned(optics.skewed(faint, 1.2, 240), 61, sigma=5), sheet


@page('receipt', 'zh-receipt-200.png', 'till receipt')
def receipt_chinese():
    sheet = Sheet(70, 97, 200)
    text = Style('microhei', 10)
    sheet.write(35, 10, '春和茶庄', Style('microhei', 15), align='centre')
    sheet.write(6, 18, '收银员：06　单号：20388', text)
    sheet.rule(6, 21, 64, 21)
    row(sheet, 27, [(6, '品名', text, 'left'), (44, '数量', text, 'right'),
                    (64, '金额', text, 'right')])
    y = 33.5
    for name, count, amount in texts.rows('zh', '小票'):
        row(sheet, y, [(6, name, text, 'left'), (44, count, text, 'right'),
                       (64, amount, text, 'right')])
        y += 6
    sheet.rule(6, y - 3, 64, y - 3)
    for name, amount in (('合计', '167.70'), ('微信支付', '167.70')):
        row(sheet, y + 3, [(6, name, text, 'left'), (64, amount, text, 'right')])
        y += 6
    sheet.write(6, y + 6, '2023年5月20日 16:42', text)
    sheet.write(35, y + 14, '谢谢惠顾', text, align='centre')
    return bitonal(sheet.image), sheet


@page('card', 'en-card-dark-300.jpg', 'business card, light on dark', 300, 75)
def card_english():
    sheet = Sheet(89, 52, 300, (38, 46, 52), (226, 222, 210))
    sheet.box(7, 9, 1.6, 34, 0, (196, 140, 60))
    lines = [('Ingrid Halvorsen', 'lato-bold', 16, 14),
             ('Surveyor of Historic Ships', 'lato', 9, 20),
             ('Quay House, 3 Rope Walk', 'lato', 8.5, 30),
             ('Tel +44 1326 555 0187', 'lato', 8.5, 35),
             ('ingrid@oldhulls.example', 'lato', 8.5, 40)]
    for line, face, points, y in lines:
        sheet.write(13, y, line, Style(face, points))
    return scanned(sheet.image, 62, black=20), sheet


@page('card', 'zh-card-colour-200.png', 'business card, photographed evenly')
def card_chinese():
    sheet = Sheet(92, 56, 200, (244, 238, 224), (60, 30, 30))
    sheet.box(0, 48, 92, 8, 0, (140, 40, 44))
    sheet.write(8, 12, '清源古籍修复工作室', Style('zenhei', 13))
    row(sheet, 25, [(8, '祝明远', Style('ukai', 20), 'left'),
                    (36, '首席修复师', Style('zenhei', 9.5), 'left')])
    for number, line in enumerate(['地址：绍兴市仓桥直街七十一号', '电话：0575-85163309',
                                   '邮箱：zhu@qingyuan.example']):
        sheet.write(8, 33 + number * 5.4, line, Style('microhei', 9))
    return sheet.image, sheet


@page('label', 'zh-label-sideways-200.png', 'one line on its side')
def label_sideways():
    sheet = Sheet(105, 22, 200)
    sheet.write(8, 14.5, '小心轻放　防潮防晒', Style('zenhei', 24))
    return bitonal(optics.quarters(sheet.image, 1)), sheet


@page('label', 'en-label-upsidedown-150.jpg', 'one line upside down', 150, 70)
def label_english():
    sheet = Sheet(140, 24, 150)
    sheet.write(10, 15.5, 'SPARE PARTS: GEARBOX No. 2', Style('lato-bold', 22))
    return scanned(optics.quarters(sheet.image, 2), 63), sheet


@page('label', 'zh-label-upsidedown-300.png', 'one line upside down', 300)
def label_chinese():
    sheet = Sheet(110, 20, 300)
    sheet.write(9, 13.5, '第三仓库　危险品请勿靠近', Style('microhei', 20))
    return bitonal(optics.quarters(sheet.image, 2)), sheet
