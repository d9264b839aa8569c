# SPDX-License-Identifier: Apache-2.0
"""Writes the page of figures from the records."""
from . import measure, plot, sections
from .page import Page, known_reasons, shown
from .results import Results

INTRODUCTION = (
    'Written by `bench/publish`; `scripts/setup compare` installs what it calls, so anyone can '
    'repeat it with one command. A run is one call of the program that is named; what is compared '
    'takes turns within each run. Medians stand with the lowest and the highest run. A ratio is '
    'zelk by what it is compared with, unless its row says otherwise.')
TRIAL = '**This was a trial with few pages and runs (`--quick`): no figure here says anything.**'
NO_DATA = (
    'No folder of documents was given: what is in `tests/data` was measured, and long documents '
    'are made of its pages. Baselines are not known for them.')


def write(records, target):
    """Writes `target` and its plots, and returns in a few words what misses."""
    results = Results(records, measure.NAMES)
    page = Page(results, known_reasons())
    for section in sections.ALL:
        section(page)
    target.parent.mkdir(parents=True, exist_ok=True)
    head = Page(results, {})
    introduce(head, results)
    verdict(head, page)
    machine(head, results)
    target.write_text('\n'.join(head.lines + page.lines).rstrip() + '\n', encoding='utf8')
    plot.draw_all(results, target.parent / 'figures')
    return f'{len(page.missed())} of {page.judged_count()} targets missed'


def introduce(head, results):
    head.text('# Figures')
    head.text(INTRODUCTION)
    told = results.measured().values()
    if any(one['plan'] != 'full' for one in told):
        head.text(TRIAL)
    if any(not one['data'] for one in told):
        head.text(NO_DATA)


def verdict(head, page):
    missed, unmeasured = page.missed(), page.unmeasured()
    if missed:
        head.text(f'{len(missed)} of {page.judged_count()} targets are missed:')
        head.table(('what', 'measured', 'target', 'reason'), missed)
    else:
        head.text(f'All {page.judged_count()} targets are met.')
    if unmeasured:
        head.text('Without a figure:')
        head.table(('what', 'why'), unmeasured)


def machine(head, results):
    measured = results.measured()
    if not measured:
        return
    told = next(iter(measured.values()))
    head.text('## The machine')
    head.table(('', ''), [
        ('measured', f'{told["date"]}, sources at {told["state"]}'),
        ('processor', f'{told["processor"]}, {told["cores"]} cores'),
        ('memory', f'{told["memory_gib"]} GiB'),
        ('system', told['system']),
        ('load before it began', shown(told['load'])),
        ('taken by others', f'{shown(100 * others(results), 1)} % of the processors while time was '
                            'measured, at worst'),
        ('took', f'{sum(seconds(results)) / 60:.0f} minutes, measurements that ran side by side '
                 'counted each'),
        *later(measured, told)])
    head.table(('package', 'version'), sorted(told['versions'].items()))


def later(measured, first):
    """What was measured again on its own."""
    for name, told in measured.items():
        if any(told[field] != first[field] for field in ('state', 'processor', 'cores', 'plan')):
            yield name, f'{told["date"]}, sources at {told["state"]}, {told["processor"]}'


def others(results):
    alone = [measurement.__name__ for measurement in measure.ALONE]
    return max((record['others'] for name in alone for record in results.of(name)
                if 'others' in record), default=0.0)


def seconds(results):
    return [record['seconds'] for records in results.records.values() for record in records
            if set(record) == {'seconds', 'others'}]
