# SPDX-License-Identifier: Apache-2.0
"""Slides and pictures of screens. A point is a pixel at 72 dots an inch."""
from . import damage, texts
from .catalogue import page
from .sheet import Sheet, Style
from .typeset import paragraph, row


def millimetres(pixels, dpi=72):
    return pixels * 25.4 / dpi


class Screen(Sheet):
    """A sheet measured in pixels."""

    def __init__(self, width, height, paper, ink):
        super().__init__(millimetres(width), millimetres(height), 72, paper, ink)

    def label(self, x, y, text, style, truth=True):
        self.write(millimetres(x), millimetres(y), text, style, truth)

    def panel(self, x, y, width, height, fill, ink=None):
        self.box(*map(millimetres, (x, y, width, height)), 0 if ink is None else .1, fill, ink)


def slide(lines, paper, ink, bar, accent, title, text):
    """A title bar and lines with bullets."""
    screen = Screen(1280, 720, paper, ink)
    screen.panel(0, 0, 1280, 150, bar)
    screen.label(70, 102, lines[0], title)
    for number, line in enumerate(lines[1:]):
        y = 250 + number * 110
        screen.draw.ellipse((80, y - 24, 100, y - 4), fill=accent)
        screen.label(130, y, line, text)
    return screen


@page('slide', 'en-slide-dark.png', 'dark slide with bullets', 96)
def slide_english():
    screen = slide(texts.lines('en', 'slide'), (22, 32, 56), (232, 236, 244), (34, 52, 92),
                   (250, 180, 60), Style('lato-black', 58, ink=(255, 206, 110)), Style('lato', 40))
    return screen.image, screen


@page('slide', 'zh-slide-blue.jpg', 'white title on blue, bullets', 96, 75)
def slide_chinese():
    screen = slide(texts.lines('zh', '幻灯'), (248, 250, 252), (38, 50, 70), (24, 96, 180),
                   (220, 70, 60), Style('microhei', 60, ink=(255, 255, 255)), Style('microhei', 42))
    return screen.image, screen


@page('slide', 'zh-slide-photo.jpg', 'slide over a dark photograph', 96, 75)
def slide_photo():
    lines = texts.lines('zh', '讲话')
    screen = Screen(1280, 720, (0, 0, 0), (245, 245, 235))
    back = damage.scene(1280, 720, 81)
    screen.image.paste(damage.picture(damage.samples(back) * .38), (0, 0))
    screen.label(90, 130, lines[0], Style('zenhei', 62, ink=(255, 226, 120)))
    for number, line in enumerate(lines[1:]):
        screen.label(120, 270 + number * 110, line, Style('zenhei', 42))
    return screen.image, screen


@page('screen', 'en-screen-code.png', 'code on a dark ground, 15 pixels', 96)
def code():
    screen = Screen(820, 400, (40, 42, 54), (222, 222, 210))
    screen.panel(0, 0, 820, 30, (28, 29, 38))
    screen.label(16, 20, 'wordlist.py - Editor', Style('opensans', 13))
    inks = {'#': (120, 160, 120), 'def': (140, 190, 250), 'if': (140, 190, 250)}
    for number, line in enumerate(texts.lines('en', 'code')):
        ink = inks.get(line.split()[0], (222, 222, 210)) if number != 1 else inks['def']
        indent = len(line) - len(line.lstrip(' '))
        screen.label(24 + indent * 7.5, 70 + number * 22, line.strip(),
                     Style('inconsolata', 15, ink=ink))
    screen.panel(0, 372, 820, 28, (70, 90, 160))
    screen.label(16, 391, 'Line 4, column 18', Style('opensans', 13))
    return screen.image, screen


@page('screen', 'en-screen-menu.png', 'menu over a document, 13 pixels', 96)
def menu():
    screen = Screen(700, 520, (255, 255, 255), (32, 32, 32))
    text = Style('opensans', 13)
    screen.panel(0, 0, 700, 34, (226, 228, 232))
    row(screen, millimetres(22), [(millimetres(x), name, text, 'left') for x, name in (
        (14, 'File'), (62, 'Edit'), (112, 'View'), (164, 'Insert'), (222, 'Help'))])
    screen.panel(10, 36, 330, 300, (246, 246, 246), (150, 150, 150))
    for number, cells in enumerate(texts.rows('en', 'menu')):
        y = millimetres(66 + number * 34)
        shortcut = [(millimetres(322), cells[1], text, 'right')] if len(cells) > 1 else []
        row(screen, y, [(millimetres(30), cells[0], text, 'left')] + shortcut)
    paragraph(screen, millimetres(20), millimetres(350), millimetres(640),
              texts.lines('en', 'fossil')[2], Style('caladea', 16, 1.6))
    return screen.image, screen


@page('screen', 'zh-screen-settings.png', 'window with settings, 14 pixels', 96)
def settings():
    lines = texts.lines('zh', '设置')
    screen = Screen(760, 560, (252, 252, 252), (40, 40, 40))
    text = Style('microhei', 14)
    screen.panel(0, 0, 760, 36, (232, 234, 238))
    row(screen, millimetres(23), [(millimetres(18 + 56 * number), name, text, 'left')
                                  for number, name in enumerate(lines[0].split())])
    screen.label(40, 90, lines[1], Style('microhei', 20))
    for number, line in enumerate(lines[2:5]):
        y = 140 + number * 40
        screen.panel(40, y - 14, 16, 16, (50, 120, 215) if number != 1 else (255, 255, 255),
                     (120, 120, 120))
        screen.label(68, y, line, text)
    for number, (name, value) in enumerate(zip(lines[5:9:2], lines[6:9:2])):
        y = 276 + number * 90
        screen.label(40, y, name, text)
        screen.panel(40, y + 14, 420, 34, (255, 255, 255), (170, 170, 170))
        screen.label(52, y + 36, value, text)
    buttons = lines[9].split()
    screen.panel(520, 490, 90, 36, (228, 228, 228))
    screen.panel(630, 490, 90, 36, (50, 120, 215))
    screen.label(551, 513, buttons[0], text, truth=False)
    screen.label(661, 513, buttons[1], text.but(ink=(255, 255, 255)), truth=False)
    screen.truth.append(lines[9])
    return screen.image, screen
