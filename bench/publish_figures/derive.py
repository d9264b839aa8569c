# SPDX-License-Identifier: Apache-2.0
"""Figures that come from several records: growth of memory, averages by kind of document."""
import collections
import pathlib
import statistics

from .records import documents_of

KIB = 1024
FORMATS = {'.pdf': 'PDF', '.tif': 'TIFF', '.tiff': 'TIFF'}
ABOUT_THE_FILE = (0, 2, 5, 6, 8)  # exit codes of the command line that a file may bring about
LANGUAGES = {('en',): 'Latin', ('zh',): 'Chinese', ('en', 'zh'): 'Mixed'}


def curve(records, prefix):
    """[(pages, MiB)], shortest document first."""
    points = {int(key.split('/')[1]): value / KIB
              for record in records for key, value in record.items()
              if key.startswith(f'{prefix}/')}
    return sorted(points.items())


def growth(records, prefix, shortest):
    """The longest document against the shortest of at least so many pages."""
    points = [point for point in curve(records, prefix) if point[0] >= shortest]
    if len(points) < 2:
        return {}
    few, many = points[0][1], points[-1][1]
    return {f'{prefix}:ours': many, f'{prefix}:reference': few, f'{prefix}:ratio': many / few}


def sizes(records):
    """Bytes beside the JPEG for 2,000 characters of full pages."""
    return {f'size/{pathlib.Path(row["document"]).stem}': row['bytes'] * 2000
            for row in documents_of(records) if 'bytes' in row}


def hostile(records):
    rows = documents_of(records)
    if not rows:
        return {}
    return {'hostile/ended': sum(row['code'] not in ABOUT_THE_FILE for row in rows),
            'hostile/seconds': max(row['seconds'] for row in rows),
            'hostile/mb': max(row['mb'] for row in rows)}


def format_of(name):
    return FORMATS.get(pathlib.Path(name).suffix, 'picture')


def kinds_of(accuracy):
    """{document: 'Latin PDF' and the like}, by the languages of what it says."""
    languages = collections.defaultdict(set)
    for row in documents_of(accuracy):
        languages[row['document']].add(row['language'])
    return {name: f'{LANGUAGES[tuple(sorted(known))]} {format_of(name)}'
            for name, known in languages.items()}


def with_text(records):
    """Documents of which the text layer's size says something."""
    return [row for row in documents_of(records) if row.get('bytes') and row['characters']]


def by_kind(rows, kind_of):
    """{kind: rows}, kinds in order of their names."""
    groups = collections.defaultdict(list)
    for row in rows:
        groups[kind_of(row)].append(row)
    return dict(sorted(groups.items()))


def accuracy_kinds(records):
    """{kind: (documents, error rate, baseline or None)}, averages over documents."""
    groups = by_kind(documents_of(records), lambda row:
                     f'{LANGUAGES[(row["language"],)]} {format_of(row["document"])}')
    return {kind: averages(rows) for kind, rows in groups.items()}


def averages(rows):
    known = [row for row in rows if row['baseline'] is not None]
    compared = known or rows
    baseline = statistics.mean(row['baseline'] for row in known) if known else None
    return len(compared), statistics.mean(row['rate'] for row in compared), baseline


def round_trip_kinds(records, kinds):
    """{kind: (documents, pages, characters, mean rates, documents that miss)}."""
    groups = by_kind(documents_of(records), lambda row: kinds.get(
        row['document'], f'no truth, {format_of(row["document"])}'))
    return {kind: read_back(rows) for kind, rows in groups.items()}


def read_back(rows):
    pages = sum(row['pages'] for row in rows)
    rates = [sum(column) / max(1, pages) for column in zip(*(row['sums'] for row in rows))]
    return (len(rows), pages, sum(row['characters'] for row in rows), rates,
            sum(bool(row['misses']) for row in rows))
