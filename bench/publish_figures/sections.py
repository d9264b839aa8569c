# SPDX-License-Identifier: Apache-2.0
"""The sections of the page: what was called, its tables and its plots."""
from . import catalogue, derive
from .page import shown
from .records import documents_of

RATES = list(catalogue.ROUND_TRIP)


def command_line(page):
    page.text('## The command line')
    page.text('`bench/compare` on the first pages of the longest document, `chi_sim+eng` for all '
              'programs.')
    page.absolute_table(('compare_start', catalogue.START[:2]),
                        ('compare_memory', catalogue.START[2:]))
    page.compared_table(('compare_document', catalogue.PROGRAMS[:2]),
                        ('compare_files', catalogue.PROGRAMS[2:]))
    page.text('`bench/tiff_pages`, whether the time for a page grows with its number:')
    page.compared_table(('tiff_pages', catalogue.TIFF_PAGES))
    throughput(page)


def throughput(page):
    page.text('`zelk --jobs N` with the default engine, whole runs from start to end:')
    rows = []
    for jobs in range(1, 1000):
        samples = page.results.samples(f'throughput/{jobs}')
        if samples is None:
            break
        spread = f'{shown(samples.low, 1)} to {shown(samples.high, 1)}'
        rows.append((jobs, shown(samples.median, 1), spread, samples.runs))
    page.table(('workers', 'pages a minute', 'lowest to highest', 'runs'),
               rows or [('', page.results.failure('throughput'), '', '')])
    page.text('![Pages a minute by workers](figures/throughput.png)')


def sandbox(page):
    page.text('## The sandbox')
    page.text('`bench/sandbox_cost`, pairs of runs side by side, each on a processor of its own, '
              'starts by turns; the ratios are medians of those of the pairs. Where pairs '
              'scatter by more than the target leaves, a median that meets it says that the cost '
              'is lost in the scatter, no more.')
    page.compared_table(('sandbox', catalogue.SANDBOX))
    page.absolute_table(('sandbox', catalogue.SANDBOX_START))


def library(page):
    page.text('## The library')
    page.text('`bench/whole_document`, and with `--memory` for documents of several lengths; '
              '`pdfproducer_memory` for the producer, whose pages have 2,000 characters and a '
              'picture.')
    page.compared_table(('whole_document', catalogue.LIBRARY[:1]),
                        ('document_memory', catalogue.LIBRARY[1:]),
                        ('producer_memory', catalogue.PDF[2:]))
    rows = [(name, pages, shown(peak, 1)) for name, prefix in
            (('library and default engine', 'document_memory'), ('producer', 'producer_memory'))
            for pages, peak in derive.curve(page.results.of(prefix), prefix)]
    page.table(('what', 'pages', 'peak memory, MiB'), rows)
    page.text('![Peak memory by pages](figures/memory.png)')


def engine(page):
    page.text('## The default engine')
    page.text('`zelk_bench --benchmark_filter=OpenMp`:')
    page.compared_table(('openmp', catalogue.ENGINE))
    page.absolute_table(('openmp', catalogue.ENGINE_PROCESSOR))
    accuracy(page)


def accuracy(page):
    page.text('`scripts/measure-accuracy`: character error rate in percent, averages over '
              'documents. The baseline is the program `tesseract` with the data that suits the '
              'page.')
    records = page.results.of('accuracy')
    rows = [(kind, documents, shown(rate), *difference(page, kind, rate, baseline))
            for kind, (documents, rate, baseline) in derive.accuracy_kinds(records).items()]
    head = ('error rate', 'baseline', 'points above', 'target', '')
    failure = page.results.failure('accuracy')
    page.table(('kind', 'documents', *head), rows or [(failure, *[''] * 6)])
    page.text('![Character error rate by kind](figures/accuracy.png)')
    page.table(('document', 'language', *head, 'missing in any order'),
               [(row['document'], row['language'], shown(row['rate'], 1),
                 *difference(page, row['document'], row['rate'], row['baseline']),
                 shown(row['missing'], 1)) for row in documents_of(records)])


def difference(page, name, rate, baseline):
    """Baseline, points above it, target, and whether it is met."""
    if baseline is None:
        return ['', '', '', '']
    above = rate - baseline
    return [shown(baseline, 1), f'{above:+.1f}',
            *page.mark(f'accuracy/{name}', f'error rate of {name}, points above its baseline',
                       f'{above:+.1f}', str(catalogue.ACCURACY), catalogue.ACCURACY.met_by(above))]


def searchable_pdf(page):
    page.text('## Searchable PDFs')
    page.text('`searchable_pdf_speed`:')
    page.compared_table(('searchable_pdf_speed', catalogue.PDF[:2]))
    page.text('Bytes beside the JPEG for 2,000 characters, of pages full of running text that are '
              'set for this:')
    page.absolute_table(('full_pages', catalogue.SIZE))
    page.text('![Bytes a character by kind](figures/pdf-size.png)')
    round_trip(page)


def round_trip(page):
    page.text('`scripts/check-searchable-pdf`: character error rates in percent of text that '
              'others read back, averages over pages. A document misses when one of its pages is '
              f'above {limits()}, or has a blank between Han characters, a character more than a '
              'point out of place or a picture that differs.')
    records = page.results.of('round_trip')
    kinds = derive.kinds_of(page.results.of('accuracy'))
    rows = [(kind, documents, pages, f'{characters:,}', *map(shown, rates), misses)
            for kind, (documents, pages, characters, rates, misses)
            in derive.round_trip_kinds(records, kinds).items()]
    failure = page.results.failure('round_trip')
    page.table(('kind', 'documents', 'pages', 'characters', *RATES, 'documents that miss'),
               rows or [(failure, *[''] * (len(RATES) + 4))])
    page.text('The same of the worst page of each document, the largest distance in points of a '
              'character from its box, and the bytes a character beside the JPEGs:')
    page.table(('document', 'pages', 'characters', *RATES, 'off by', 'bytes', 'limits', ''),
               [read_back(page, row) for row in documents_of(records)])


def limits():
    return ', '.join(f'{limit:g} % ({name})'
                     for name, limit in catalogue.ROUND_TRIP.items() if limit)


def read_back(page, row):
    name, misses = row['document'], row['misses']
    told = '; '.join(misses)[:150]
    return (name, row['pages'], f'{row["characters"]:,}', *map(shown, row['rates']),
            shown(row['off']), shown(row['bytes'], 1) if row['characters'] else '',
            *page.mark(f'round_trip/{name}', f'reading back {name}', told, 'none missed',
                       not misses))


def pixels_and_text(page):
    page.text('## Pixels and text')
    page.text('`zelk_bench`, processor time of one thread; ours and the reference take turns.')
    page.compared_table(('bench', catalogue.COPIES))


def hostile(page):
    page.text('## Hostile files')
    rows = documents_of(page.results.of('hostile'))
    page.text(f'`scripts/measure-hostile` on {len(rows)} files, each by itself; what some of them '
              'are about is in [hostile-files.md](hostile-files.md).')
    page.absolute_table(('hostile', catalogue.HOSTILE))
    page.table(('file', 'exit code', 'seconds', 'MB', 'what is said'),
               [(row['document'], row['code'], shown(row['seconds']), shown(row['mb'], 0),
                 row['said']) for row in rows])


ALL = (command_line, sandbox, library, engine, searchable_pdf, pixels_and_text, hostile)
