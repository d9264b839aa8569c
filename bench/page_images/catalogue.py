# SPDX-License-Identifier: Apache-2.0
"""The list of pages, and the prose pages that many of them begin with."""
import dataclasses
import typing

from . import texts
from .sheet import Sheet, Style
from .typeset import paragraphs


@dataclasses.dataclass(frozen=True)
class Page:
    kind: str
    name: str
    what: str
    make: typing.Callable   # returns the image and the sheet that holds the truth
    dpi: object             # a number or (horizontal, vertical)
    quality: int            # of a JPEG
    note: str


PAGES = []


def page(kind, name, what, dpi=200, quality=70, note=''):
    def listed(make):
        PAGES.append(Page(kind, name, what, make, dpi, quality, note))
        return make
    return listed


# Body and title of the usual pages: (language, sort of face) -> face names.
BODIES = {
    'en-serif': ('caladea', 'caladea-bold'), 'en-sans': ('lato', 'lato-bold'),
    'en-old': ('oldstandard', 'oldstandard-bold'), 'en-modern': ('modern', 'modern-bold'),
    'en-book': ('libertine', 'libertine-bold'), 'en-warm': ('vollkorn', 'vollkorn-bold'),
    'en-office': ('carlito', 'carlito-bold'), 'en-gentium': ('gentium', 'gentium'),
    'en-web': ('opensans', 'opensans-bold'), 'en-typewriter': ('courier', 'courier-bold'),
    'en-humanist': ('biolinum', 'biolinum-bold'),
    'zh-song': ('song', 'zenhei'), 'zh-ming': ('uming', 'zenhei'), 'zh-hei': ('zenhei', 'zenhei'),
    'zh-micro': ('microhei', 'microhei'), 'zh-kai': ('ukai', 'ukai'), 'zh-gkai': ('kai', 'zenhei'),
    'ja-mincho': ('mincho', 'gothic-ja'), 'ja-gothic': ('gothic-ja', 'gothic-ja'),
}


def body(faces, points, **changes):
    chinese = faces[:2] in ('zh', 'ja')
    usual = {'leading': 1.6, 'indent': 2, 'align': 'justify'} if chinese else {'leading': 1.38}
    return Style(**{'face': BODIES[faces][0], 'points': points, **usual, **changes})


def prose(key, faces, points, dpi, width=148, margin=15, title=1.3, paper=255, ink=0, **changes):
    """A page with a text of texts/, as high as the text needs."""
    language = key.split('/')[0]
    sheet = Sheet(width, 400, dpi, paper, ink)
    style = body(faces, points, **changes)
    head = Style(BODIES[faces][1], points * title, leading=1.5, gap=.35, latin=style.latin)
    bottom = paragraphs(sheet, margin, margin * .7, width - 2 * margin,
                        texts.text(language, key.split('/')[1]), style, head if title else None)
    return sheet.trimmed(bottom + margin * .8)
