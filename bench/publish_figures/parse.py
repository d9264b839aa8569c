# SPDX-License-Identifier: Apache-2.0
"""What the measuring programs print, as dictionaries of figures or of table rows.

A figure is named GROUP/NAME; one that is compared has the parts GROUP/NAME:ours, :reference and
:ratio. Text that does not look as expected is an error, never a missing figure.
"""
import json
import re


def found(pattern, text):
    match = re.search(pattern, text)
    if not match:
        raise ValueError(f'unexpected output: {text.strip()[-200:] or "nothing"}')
    return match


def compared(name, ours, reference, ratio=None):
    ratio = ours / reference if ratio is None else ratio
    return {f'{name}:ours': ours, f'{name}:reference': reference, f'{name}:ratio': ratio}


def cells_of(table):
    """Rows of a Markdown table below its head, as lists of cells."""
    lines = [line.strip() for line in table.splitlines() if line.startswith('|')]
    rows = [re.split(r'(?<!\\)\|', line)[1:-1] for line in lines]
    return [[cell.strip() for cell in row] for row in rows[2:]]


def number(cell):
    return float(found(r'-?\d+(\.\d+)?', cell)[0])


def bench(text):
    """zelk_bench --benchmark_format=json: one dictionary for each repetition."""
    runs = {}
    for entry in json.loads(text)['benchmarks']:
        if entry['run_type'] != 'iteration':
            continue
        if entry.get('error_occurred'):
            raise ValueError(f'{entry["name"]}: {entry["error_message"]}')
        name = 'bench/' + re.sub('/(manual_time|iterations:[0-9]+)', '', entry['run_name'])
        unit = 'ms' if 'ours_ms' in entry else 's'
        figures = compared(name, entry[f'ours_{unit}'], entry[f'reference_{unit}'])
        if 'processor_time_saved' in entry:  # here the reference stands above: what is gained
            figures[f'{name}:ratio'] = entry['speedup']
            figures[f'{name}/processor'] = entry['processor_time_saved']
        runs.setdefault(entry.get('repetition_index', 0), {}).update(figures)
    return list(runs.values())


def whole_document(text):
    match = found(r'zelk .*? ([\d.]+) s, tesseract .*? ([\d.]+) s, ratio ([\d.]+)', text)
    return compared('whole/time', *map(float, match.groups()))


def tiff_pages(text):
    match = found(r'pages ([\d.]+) s, \d+ pages ([\d.]+) s, ratio ([\d.]+)', text)
    short, long, ratio = map(float, match.groups())
    return compared('tiff_pages/time', long, short, ratio)


def document_memory(text):
    """{figure: KiB} for each length."""
    found('peak without result texts', text)
    return {f'document_memory/{pages}': float(peak)
            for pages, peak in re.findall(r'(\d+) pages (\d+) KiB', text)}


def producer_memory(text):
    found('ratio', text)
    return {f'producer_memory/{pages}': float(peak)
            for pages, peak in re.findall(r'(\d+) pages: peak +(\d+) KB', text)}


COMPARE = {
    'zelk --version': 'compare/version',
    'an empty batch beyond /bin/true': 'compare/empty',
    'resident memory of a worker, English': 'compare/worker',
    'of the supervisor': 'compare/supervisor',
}


def compare(text):
    """The rows of bench/compare that stand alone."""
    return {COMPARE[row[0]]: number(row[1]) for row in cells_of(text) if row[0] in COMPARE}


def compare_document(text):
    zelk, share, ratio, ocrmypdf, by_zelk = (number(row[1]) for row in cells_of(text))
    return {**compared('compare/tesseract', zelk, share, ratio),
            **compared('compare/ocrmypdf', zelk, ocrmypdf, by_zelk)}


def compare_files(text):
    zelk, loop, ratio = (number(row[1]) for row in cells_of(text))
    return compared('compare/loop', zelk, loop, ratio)


def speed(text, name):
    match = found(r'PDF ([\d.]+) ms, rendering, copies and JPEG ([\d.]+) ms, ratio ([\d.]+)', text)
    return compared(name, *map(float, match.groups()))


SANDBOX = {
    'start with the sandbox': 'sandbox/start:ours', 'start without': 'sandbox/start:reference',
    'difference': 'sandbox/start', 'difference of processor time': 'sandbox/start_processor',
    'pages with the sandbox': 'sandbox/wall:ours',
    'pages without': 'sandbox/wall:reference', 'ratio, wall time': 'sandbox/wall:ratio',
    'ratio, processor time': 'sandbox/processor:ratio',
}


def sandbox(text):
    """{figure: [median, lowest, highest]}: the pairs are summed up by the program itself."""
    return {SANDBOX[row[0]]: [number(row[1]), *map(float, row[2].split(' to '))]
            for row in cells_of(text)}


def rates(cell):
    """'error rate / missing / seconds' as numbers; None for an empty cell."""
    return [number(part) for part in cell.split('/')] if cell else None


def accuracy(text):
    """A row for each document and language."""
    rows = []
    for name, language, baseline, ours in cells_of(text):
        if name == 'average':
            continue
        rate, missing = rates(ours)[:2]
        known = rates(baseline)
        rows.append({'document': name, 'language': language, 'rate': rate, 'missing': missing,
                     'baseline': known and known[0], 'baseline_missing': known and known[1]})
    if not rows:
        raise ValueError('no document was read')
    return rows


def hostile(text):
    return [{'document': name, 'code': int(code), 'seconds': float(seconds), 'mb': float(peak),
             'said': said} for name, code, seconds, peak, said in cells_of(text)]


def round_trip(text):
    """A row for each document: each extractor's rate of the worst page, and the sum over pages."""
    documents = {}
    for line in text.splitlines()[1:]:
        page = re.fullmatch(r'(\S.*?) +\d+ +(\d+) ((?: *\d+\.\d\d){5}) +([\d.]+)', line)
        size = re.fullmatch(r'(\S.*?) +([\d.]+) bytes a character beside the pictures', line)
        miss = re.fullmatch(r'MISSED (.*?): (.*)', line)
        name = next((match[1] for match in (page, size, miss) if match), None)
        if name is None:
            continue
        row = documents.setdefault(name, {'document': name, 'pages': 0, 'characters': 0,
                                          'rates': [0.0] * 5, 'sums': [0.0] * 5,
                                          'off': 0.0, 'bytes': 0.0, 'misses': []})
        if page:
            row['pages'] += 1
            row['characters'] += int(page[2])
            rates_read = list(map(float, page[3].split()))
            row['rates'] = list(map(max, row['rates'], rates_read))
            row['sums'] = [a + b for a, b in zip(row['sums'], rates_read)]
            row['off'] = max(row['off'], float(page[4]))
        elif size:
            row['bytes'] = float(size[2])
        else:
            row['misses'].append(miss[2])
    if not documents:
        raise ValueError('no document was read back')
    return list(documents.values())
