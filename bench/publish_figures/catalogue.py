# SPDX-License-Identifier: Apache-2.0
"""Every figure with its meaning and its target, in the order of the page."""
import dataclasses


@dataclasses.dataclass(frozen=True)
class Target:
    limit: float
    at_least: bool = False

    def met_by(self, value):
        return value >= self.limit if self.at_least else value <= self.limit

    def __str__(self):
        return f'at {"least" if self.at_least else "most"} {self.limit:g}'


@dataclasses.dataclass(frozen=True)
class Figure:
    """One number, or with a reference two and their ratio, which the target is for."""
    key: str
    what: str
    unit: str = ''
    target: Target = None
    reference: str = ''
    digits: int = 2


def at_most(limit):
    return Target(limit)


def at_least(limit):
    return Target(limit, at_least=True)


START = (
    Figure('compare/version', '`zelk --version`', 'ms', at_most(30), digits=0),
    Figure('compare/empty', 'an empty batch, beyond `/bin/true`', 'ms', at_most(100), digits=0),
    Figure('compare/worker', 'resident memory of a worker, English', 'MiB', at_most(350), digits=0),
    Figure('compare/supervisor', 'resident memory of the supervisor', 'MiB', at_most(64), digits=0),
)
PROGRAMS = (
    Figure('compare/tesseract', 'one document to PDF, text and JSON, all cores', 's', at_most(1.08),
           'bare `tesseract` on pages rendered already, processor time by the cores', 1),
    Figure('compare/ocrmypdf', 'the same; ratio: ocrmypdf by zelk', 's', at_least(1.1),
           '`ocrmypdf -O0` with as many jobs', 1),
    Figure('compare/loop', 'files of one page, all cores; ratio: loop by zelk', 's', at_least(1.9),
           'shell loop over `tesseract`, one thread', 1),
)
TIFF_PAGES = (
    Figure('tiff_pages/time', 'a TIFF of 2,000 tiny pages, without recognition, processor time',
           's', at_most(4.5), 'one of 500 pages'),
)
SANDBOX = (
    Figure('sandbox/wall', 'wall time of a document, one worker', 's', at_most(1.02),
           'the same with `--no-sandbox`'),
    Figure('sandbox/processor', 'its processor time', 's', at_most(1.02), 'the same'),
)
SANDBOX_START = (
    Figure('sandbox/start', 'what the rules cost when a worker starts: with them less without',
           'ms', digits=1),
    Figure('sandbox/start_processor', 'the same of processor time', 'ms', digits=1),
)
LIBRARY = (
    Figure('whole/time', 'a whole document through `libzelk.so`, processor time', 's',
           at_most(1.05), '`tesseract -l chi_sim+eng` on the rendered pages, one thread', 1),
    Figure('document_memory', 'peak memory of the longest document, result texts taken off', 'MiB',
           at_most(1.1), 'of the shorter one', 1),
)
ENGINE = (
    Figure('bench/BM_OpenMpContainment/english',
           'a page of English with OpenMP loops on one thread; ratio: gain', 's', None,
           'the same page with Tesseract\'s own threads'),
    Figure('bench/BM_OpenMpContainment/chinese', 'the same of Chinese', 's', None, 'the same'),
)
ENGINE_PROCESSOR = (
    Figure('bench/BM_OpenMpContainment/english/processor', 'the same of processor time, English'),
    Figure('bench/BM_OpenMpContainment/chinese/processor', 'the same of processor time, Chinese'),
)
PDF = (
    Figure('pdf/speed', 'searchable PDF with a stand-in engine, processor time a page', 'ms',
           at_most(1.15), 'rendering by PDFium, the two copies owed, JPEG'),
    Figure('pdf/made', 'the same of a document of scans that the program makes', 'ms',
           at_most(1.15), 'the same'),
    Figure('producer_memory', 'peak memory of the producer, the longest document', 'MiB',
           at_most(1.5), 'the shortest one', 1),
)
SIZE = tuple(
    Figure(f'size/{language}-{dpi}', f'running {name} text at {dpi} dots per inch', 'bytes',
           digits=0)
    for language, name in (('en', 'Latin'), ('zh', 'Chinese')) for dpi in (200, 300))


def turns():
    for bits in ('1_bit', '8_bits', '24_bits'):
        for turn, name in (('clockwise', 'clockwise'), ('half', 'half a turn'),
                           ('anticlockwise', 'anticlockwise')):
            yield Figure(f'bench/rotate/{turn}_{bits}',
                         f'A4 at 300 dots per inch, {bits.replace("_", " ")}, {name}', 'ms',
                         reference='Leptonica')


def conversions():
    for language in ('english', 'chinese'):
        name = language.capitalize()
        for target, to in (('wchar', 'wide characters'), ('utf16', 'UTF-16, then widened')):
            yield Figure(f'bench/widen/{language}_iconv_{target}',
                         f'`utf8towchar`, 4 MB of {name} results', 'ms', reference=f'iconv to {to}')
        yield Figure(f'bench/narrow/{language}_iconv_utf16', f'`wstrtostr`, the same in {name}',
                     'ms', reference='iconv from UTF-16')


COPIES = (
    Figure('bench/BM_PageToRaster', 'page to raster, A4 at 300 dots per inch', 'ms', at_most(1.1),
           'memset and memcpy of the same bytes'),
    Figure('bench/BM_PageWithoutAlpha/1653/2338', 'four to three bytes a pixel, A4 at 200', 'ms',
           reference='memcpy of the page'),
    Figure('bench/BM_PageWithoutAlpha/2480/3508', 'the same at 300', 'ms',
           reference='memcpy of the page'),
    Figure('bench/BM_TiffPages/1654/2339', '2,000 pages of a TIFF scan, A4 at 200, to rasters', 's',
           at_most(4.5), '500 such pages', 1),
    Figure('bench/BM_TiffPages/16/16', 'pages of 16 x 16: the walk to each', 's', None,
           'the same'),
    *turns(), *conversions())
HOSTILE = (
    Figure('hostile/ended', 'files that ended a run otherwise than their kind may', '', at_most(0),
           digits=0),
    Figure('hostile/seconds', 'the longest run', 's', at_most(60), digits=1),
    Figure('hostile/mb', 'the highest peak of a process', 'MB', digits=0),
)
ACCURACY = at_most(2)  # points above the baseline
ROUND_TRIP = dict(zip(('PDFium', 'pdf.js', 'pdftotext -raw', 'pdftotext, any order', 'pdftotext'),
                      (0.1, 0.1, 0.5, 0.5, None)))
