# SPDX-License-Identifier: Apache-2.0
"""A page to draw on, in millimetres, that keeps the truth of what is written on it."""
import dataclasses
import re

from PIL import Image, ImageDraw

from . import faces

PIECE = re.compile(r'[ \u3000]|[\u2e80-\u2fff\u3001-\u9fff\uff00-\uffef“”‘’…—·]'
                   r'|[^ \u2e80-\u9fff\uff00-\uffef“”‘’…—·]+')
LATIN_PIECE = re.compile(r'[ \u3000]|[\u2e80-\u9fff\uff00-\uffef]|[^ \u2e80-\u9fff\uff00-\uffef]+')
HAN = re.compile(r'[\u2e80-\u9fff\uff00-\uffef]')
SOFT_HYPHEN = '\u00ad'
NEVER_FIRST = '，。、；：？！）》」』】〕…—％”’,.;:?!)]%ー々ゃゅょっ'
NEVER_LAST = '（《「『【〔“‘(['


@dataclasses.dataclass(frozen=True)
class Style:
    face: str
    points: float
    leading: float = 1.4
    latin: str = ''        # another face for words between Chinese characters
    indent: float = 0      # of a paragraph's first line, in ems
    align: str = 'left'    # left, justify, right or centre
    ink: object = None     # the sheet's own when None
    gap: float = 0         # after a paragraph, in ems

    def but(self, **changes):
        return dataclasses.replace(self, **changes)


class Sheet:
    def __init__(self, width, height, dpi, paper=255, ink=0):
        mode = 'L' if isinstance(paper, int) else 'RGB'
        self.dpi, self.ink, self.paper = dpi, ink, paper
        self.width, self.height = width, height
        self.image = Image.new(mode, (self.px(width), self.px(height)), paper)
        self.draw = ImageDraw.Draw(self.image)
        self.truth = []

    def px(self, millimetres):
        return round(millimetres * self.dpi / 25.4)

    def em(self, points):
        """Millimetres."""
        return points * 25.4 / 72

    def pixels(self, points):
        return max(5, round(points * self.dpi / 72))

    def font(self, text, style):
        name = style.latin if style.latin and not HAN.search(text) else style.face
        for char in text:
            if not faces.has_glyph(name, char):
                raise SystemExit(f'make_pages: {name} has no glyph for {char!r} of {text!r}')
        return faces.face(name, self.pixels(style.points))

    def pieces(self, text, style):
        """[(text, font, width in pixels)]: words, blanks and single Chinese characters."""
        pattern = PIECE if HAN.search(text) and not style.latin else LATIN_PIECE
        found = []
        for piece in pattern.findall(text):
            font = self.font(piece.replace(SOFT_HYPHEN, ''), style)
            found.append((piece, font, font.getlength(piece.replace(SOFT_HYPHEN, ''))))
        return found

    def length(self, text, style):
        """Millimetres."""
        return sum(width for _, _, width in self.pieces(text, style)) * 25.4 / self.dpi

    def write(self, x, y, text, style, truth=True, align='left'):
        """One line whose baseline is at y and that begins, ends or is centred at x."""
        length = self.length(text, style)
        x -= {'left': 0, 'centre': length / 2, 'right': length}[align]
        self.draw_pieces(self.px(x), self.px(y), self.pieces(text, style), style)
        if truth:
            self.truth.append(' '.join(text.split()))
        return x, x + length

    def draw_pieces(self, x, y, pieces, style, stretch=(0, 0)):
        """stretch: pixels added to every blank and to every gap next to a Chinese character."""
        blank, gap = stretch
        ink = self.ink if style.ink is None else style.ink
        if x < 0 or y > self.image.height:
            raise SystemExit(f'make_pages: {pieces[0][0]!r} is outside of the page')
        for piece, font, width in pieces:
            self.draw.text((round(x), y), piece, font=font, fill=ink, anchor='ls')
            x += width + (blank if piece == ' ' else gap if HAN.match(piece) else 0)
        if x > self.image.width + 1:
            raise SystemExit(f'make_pages: {piece!r} runs off the page')

    def rule(self, x1, y1, x2, y2, weight=0.25, ink=None):
        ink = self.ink if ink is None else ink
        self.draw.line((self.px(x1), self.px(y1), self.px(x2), self.px(y2)), fill=ink,
                       width=max(1, self.px(weight)))

    def box(self, x, y, width, height, weight=0.25, fill=None, ink=None):
        corners = (self.px(x), self.px(y), self.px(x + width), self.px(y + height))
        ink = self.ink if ink is None else ink
        outline = {'outline': ink, 'width': max(1, self.px(weight))} if weight else {}
        self.draw.rectangle(corners, fill=fill, **outline)

    def trimmed(self, bottom):
        """Cuts the empty rest of the page below a height off."""
        if bottom > self.height:
            raise SystemExit(f'make_pages: the page ends at {self.height} mm, not {bottom:.0f}')
        self.image = self.image.crop((0, 0, self.image.width, self.px(bottom)))
        self.draw = ImageDraw.Draw(self.image)
        self.height = bottom
        return self

    def text(self):
        return '\n'.join(self.truth) + '\n'
