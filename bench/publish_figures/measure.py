# SPDX-License-Identifier: Apache-2.0
"""The measurements: each calls one of the project's programs and yields what a run of it told.

A measurement that fails leaves its reason in its records, and the others go on. What is timed runs
alone; memory, error rates and the like do not depend on what else runs, and are measured as many at
a time as there are cores.
"""
import concurrent.futures
import contextlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from . import machine, parse
from .documents import ROOT

LONGEST = 3600  # seconds: what hangs must not keep the others from running


MISSED = (0, 1)  # of programs that know their own targets
MISSED_BY_XARGS = (0, 123)


class Ended(RuntimeError):
    """A program failed; `output` is what it told before."""

    def __init__(self, program, done):
        said = (done.stderr.strip() or done.stdout.strip() or 'silently').splitlines()[-1]
        super().__init__(f'{pathlib.Path(program).name} ended with {done.returncode}: {said[:300]}')
        self.output = done.stdout


class Bench:
    """What the measurements share: the build, the documents and the plan."""

    def __init__(self, build, documents, plan):
        self.build, self.documents, self.plan = build, documents, plan
        self.cores = os.cpu_count()

    def run(self, *command, codes=(0,)):
        """Output of a program that ends with one of these codes."""
        done = subprocess.run(list(map(str, command)), cwd=ROOT, capture_output=True, text=True,
                              timeout=LONGEST)
        if done.returncode not in codes or 'Traceback' in done.stderr:
            raise Ended(command[0], done)
        return done.stdout

    def rows(self, parser, *command, **options):
        """What a program tells of one document after the other, to where it breaks off."""
        try:
            yield from parser(self.run(*command, **options))
        except Ended as failure:
            with contextlib.suppress(ValueError):  # nothing told is no news beside the failure
                yield from parser(failure.output)
            raise failure

    def program(self, name, *arguments, **options):
        return self.run(self.build / 'bench' / name, *arguments, **options)

    def script(self, name, *arguments, **options):
        return self.run(ROOT / 'bench' / name, '--build', self.build, *arguments, **options)


def bench(b):
    yield from parse.bench(b.program(
        'zelk_bench', '--benchmark_format=json', f'--benchmark_repetitions={b.plan.runs}',
        '--benchmark_filter=-OpenMp', *b.plan.bench_options))


def openmp(b):
    for _ in range(b.plan.runs):
        yield from parse.bench(b.program(
            'zelk_bench', '--benchmark_format=json', '--benchmark_filter=OpenMp'))


def whole_document(b):
    pdf = b.documents.long(b.plan.whole_pages)
    for _ in range(b.plan.runs):
        yield parse.whole_document(b.script('whole_document', '--runs', '1', pdf))


def compare_part(b, part, parser):
    pdf = b.documents.long(b.plan.compare_pages)
    for _ in range(b.plan.runs):
        yield parser(b.script('compare', '--runs', '1', '--jobs', b.cores, '--only', part, pdf))


def compare_start(b):
    yield from compare_part(b, 'start', parse.compare)


def compare_memory(b):
    yield from compare_part(b, 'memory', parse.compare)


def compare_document(b):
    yield from compare_part(b, 'document', parse.compare_document)


def compare_files(b):
    yield from compare_part(b, 'files', parse.compare_files)


def searchable_pdf_speed(b):
    pdf = b.documents.long(b.plan.whole_pages)
    engine = f'{b.build}/bench/steady_engine/'
    for _ in range(b.plan.runs):
        yield parse.speed(
            b.program('searchable_pdf_speed', engine, pdf, codes=MISSED), 'pdf/speed')
    if b.plan.made_document:
        yield parse.speed(b.program('searchable_pdf_speed', engine, codes=MISSED), 'pdf/made')


def sandbox(b):
    pdf = b.documents.long(b.plan.sandbox_pages)
    yield parse.sandbox(b.script('sandbox_cost', '--pairs', b.plan.sandbox_pairs, pdf))


def tiff_pages(b):
    for _ in range(b.plan.runs):
        yield parse.tiff_pages(b.script('tiff_pages', '--runs', '1'))


def throughput(b):
    """Pages a minute by worker processes, one more than there are cores at last."""
    pdf = b.documents.long(b.plan.throughput_pages)
    for _ in range(b.plan.runs):
        figures = {}
        for jobs in range(1, b.cores + 2):
            with tempfile.TemporaryDirectory() as folder:
                began = time.monotonic()
                b.run(b.build / 'bin/zelk', '--quiet', '--jobs', jobs, '-d', folder, pdf)
                minutes = (time.monotonic() - began) / 60
            figures[f'throughput/{jobs}'] = b.plan.throughput_pages / minutes
        yield figures


def document_memory(b):
    pdf = b.documents.longest()
    for pages in sorted(b.plan.document_memory, reverse=True):
        yield parse.document_memory(b.script('whole_document', '--memory', '--pages', pages, pdf))


def producer_memory(b):
    yield parse.producer_memory(
        b.program('pdfproducer_memory', *b.plan.producer_memory, codes=MISSED))


def accuracy(b):
    yield from b.rows(parse.accuracy, ROOT / 'scripts/measure-accuracy', '--build', b.build,
                      b.documents.folder)


def hostile(b):
    yield from b.rows(parse.hostile, ROOT / 'scripts/measure-hostile', b.documents.folder,
                      b.build / 'bin/zelk', codes=MISSED)


def round_trip(b):
    yield from read_back(b, b.documents.folder / 'pages')


def full_pages(b):
    yield from read_back(b, b.documents.set_pages())


def read_back(b, folder):
    return b.rows(parse.round_trip, ROOT / 'scripts/check-searchable-pdf', folder, b.build,
                  codes=MISSED_BY_XARGS)


ALONE = (compare_start, bench, openmp, sandbox, searchable_pdf_speed, whole_document,
         compare_document, compare_files, throughput, tiff_pages, compare_memory)
TOGETHER = (document_memory, round_trip, accuracy, full_pages, hostile, producer_memory)
NAMES = [measurement.__name__ for measurement in ALONE + TOGETHER]


def reason_of(failure, b):
    """In one line, with nothing of where this machine keeps its files."""
    told = ' '.join(str(failure).split()) or type(failure).__name__
    return told.replace(str(b.documents.all), 'DATA').replace(f'{ROOT}/', '')


def take(measurement, b, records):
    """Runs one measurement and keeps what it yields as it comes."""
    name, began = measurement.__name__, time.monotonic()
    print(f'publish: {name} …', file=sys.stderr, flush=True)
    records.begin(name, {'plan': b.plan.name, 'data': b.documents.given, **machine.told()})
    watch = machine.Load()
    try:
        for record in measurement(b):
            records.add(name, record)
        ending = 'done'
    except Exception as failure:  # whatever it is, the other measurements go on
        ending = reason_of(failure, b)
        records.add(name, {'failed': ending})
    seconds = time.monotonic() - began
    records.add(name, {'seconds': seconds, 'others': watch.share_of_others()})
    print(f'publish: {name}: {ending}, {seconds:.0f} s', file=sys.stderr, flush=True)


def take_all(b, records, only):
    wanted = [[m for m in group if not only or m.__name__ in only] for group in (ALONE, TOGETHER)]
    for measurement in wanted[0]:
        take(measurement, b, records)
    with concurrent.futures.ThreadPoolExecutor(b.cores) as pool:
        list(pool.map(lambda measurement: take(measurement, b, records), wanted[1]))


TARGETS = ('zelk', 'zelk_cli', 'zelk_engine', 'zelk_bench', 'run_document', 'page_rasters',
           'pdfproducer_memory', 'steady_engine', 'searchable_pdf_speed', 'layer_recorder',
           'pdfium_reader')


def build(folder):
    """A release build of what is measured and of what measures."""
    if not shutil.which('ninja'):
        raise RuntimeError('ninja is missing: scripts/setup compare installs what is needed')
    subprocess.run(['cmake', '--preset', 'release', '-B', folder, '-D', 'ZELK_BUILD_BENCHMARKS=ON',
                    '-D', 'ZELK_BUILD_TESTS=ON'], cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(['cmake', '--build', folder, '--target', *TARGETS], cwd=ROOT, check=True,
                   stdout=sys.stderr)
