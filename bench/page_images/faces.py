# SPDX-License-Identifier: Apache-2.0
"""Type faces by short names, from the font packages that scripts/setup pages installs."""
import functools
import os

from PIL import ImageFont

FONTS = '/usr/share/fonts'
NO_GLYPH = '\U0010fffe'

# name: (file, index in a collection, Debian package)
FACES = {
    'lato': ('Lato-Regular.ttf', 0, 'fonts-lato'),
    'lato-bold': ('Lato-Bold.ttf', 0, 'fonts-lato'),
    'lato-black': ('Lato-Black.ttf', 0, 'fonts-lato'),
    'carlito': ('Carlito-Regular.ttf', 0, 'fonts-crosextra-carlito'),
    'carlito-bold': ('Carlito-Bold.ttf', 0, 'fonts-crosextra-carlito'),
    'caladea': ('Caladea-Regular.ttf', 0, 'fonts-crosextra-caladea'),
    'caladea-bold': ('Caladea-Bold.ttf', 0, 'fonts-crosextra-caladea'),
    'caladea-italic': ('Caladea-Italic.ttf', 0, 'fonts-crosextra-caladea'),
    'inconsolata': ('Inconsolata.otf', 0, 'fonts-inconsolata'),
    'modern': ('cmunrm.ttf', 0, 'fonts-cmu'),
    'modern-bold': ('cmunbx.ttf', 0, 'fonts-cmu'),
    'oldstandard': ('OldStandard-Regular.ttf', 0, 'fonts-oldstandard'),
    'oldstandard-bold': ('OldStandard-Bold.ttf', 0, 'fonts-oldstandard'),
    'courier': ('Courier Prime.otf', 0, 'fonts-courier-prime'),
    'courier-bold': ('Courier Prime Bold.otf', 0, 'fonts-courier-prime'),
    'libertine': ('LinLibertine_R.otf', 0, 'fonts-linuxlibertine'),
    'libertine-bold': ('LinLibertine_RB.otf', 0, 'fonts-linuxlibertine'),
    'biolinum': ('LinBiolinum_R.otf', 0, 'fonts-linuxlibertine'),
    'biolinum-bold': ('LinBiolinum_RB.otf', 0, 'fonts-linuxlibertine'),
    'vollkorn': ('Vollkorn-Regular.ttf', 0, 'fonts-vollkorn'),
    'vollkorn-bold': ('Vollkorn-Bold.ttf', 0, 'fonts-vollkorn'),
    'opensans': ('OpenSans-Regular.ttf', 0, 'fonts-open-sans'),
    'opensans-bold': ('OpenSans-Bold.ttf', 0, 'fonts-open-sans'),
    'gentium': ('Gentium-R.ttf', 0, 'fonts-sil-gentium'),
    'script': ('DancingScript-Regular.otf', 0, 'fonts-dancingscript'),
    'zenhei': ('wqy-zenhei.ttc', 0, 'fonts-wqy-zenhei'),
    'microhei': ('wqy-microhei.ttc', 0, 'fonts-wqy-microhei'),
    'uming': ('uming.ttc', 0, 'fonts-arphic-uming'),
    'ukai': ('ukai.ttc', 0, 'fonts-arphic-ukai'),
    'song': ('gbsn00lp.ttf', 0, 'fonts-arphic-gbsn00lp'),
    'kai': ('gkai00mp.ttf', 0, 'fonts-arphic-gkai00mp'),
    'mincho': ('ipam.ttf', 0, 'fonts-ipafont-mincho'),
    'gothic-ja': ('VL-Gothic-Regular.ttf', 0, 'fonts-vlgothic'),
}


@functools.lru_cache(maxsize=None)
def files():
    return {name: os.path.join(folder, name)
            for folder, _, names in sorted(os.walk(FONTS)) for name in names}


@functools.lru_cache(maxsize=None)
def face(name, pixels):
    file, index, package = FACES[name]
    if file not in files():
        raise SystemExit(f'make_pages: {file} is missing: install {package} (scripts/setup pages)')
    return ImageFont.truetype(files()[file], pixels, index=index,
                              layout_engine=ImageFont.Layout.BASIC)


@functools.lru_cache(maxsize=None)
def has_glyph(name, char):
    """A page must not show a box where its truth has a character."""
    if char.isspace():
        return True
    font = face(name, 40)
    shape, absent = font.getmask(char), font.getmask(NO_GLYPH)
    return shape.size != absent.size or bytes(shape) != bytes(absent)
