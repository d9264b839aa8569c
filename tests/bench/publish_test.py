# SPDX-License-Identifier: Apache-2.0
"""What bench/publish makes of the output of programs: figures, medians, tables, misses."""

import pathlib
import tempfile
import unittest

from publish_figures import catalogue, derive, documents, measure, parse, plan, write
from publish_figures.page import UNKNOWN, Page, known_reasons
from publish_figures.records import Records, documents_of, failure_of
from publish_figures.results import Results
from publish_figures.samples import summed_up

TOLD = {'plan': 'full', 'data': True, 'date': '2026-01-02 03:04 UTC', 'state': 'abc', 'cores': 2,
        'processor': 'some', 'memory_gib': 8.0, 'system': 'Debian', 'versions': {'qpdf': '1'},
        'load': 0.1}


class Samples(unittest.TestCase):
    def test_the_median_stands_with_the_lowest_and_the_highest_run(self):
        samples = summed_up([3.0, 1.0, 10.0])
        self.assertEqual((samples.median, samples.low, samples.high, samples.runs), (3, 1, 10, 3))

    def test_what_a_program_has_summed_up_keeps_its_spread(self):
        samples = summed_up([[2.0, 1.0, 3.0], [4.0, 0.5, 5.0]])
        self.assertEqual((samples.median, samples.low, samples.high, samples.runs), (3, 0.5, 5, 2))


class Output(unittest.TestCase):
    def test_of_benchmarks_is_a_ratio_of_ours_by_the_reference(self):
        run, = parse.bench('''{"benchmarks": [
            {"run_name": "BM_A/3/4/manual_time", "name": "", "run_type": "iteration",
             "repetition_index": 0, "ours_ms": 1.0, "reference_ms": 4.0, "speedup": 4.0},
            {"run_name": "BM_A/3/4/manual_time", "name": "", "run_type": "aggregate"}]}''')
        self.assertEqual(run, parse.compared('bench/BM_A/3/4', 1.0, 4.0))
        self.assertEqual(run['bench/BM_A/3/4:ratio'], 0.25)

    def test_of_each_repetition_is_a_run(self):
        entry = ('{"run_name": "rotate/x/manual_time", "name": "", "run_type": "iteration", '
                 '"repetition_index": %d, "ours_ms": %d, "reference_ms": 2}')
        runs = parse.bench(f'{{"benchmarks": [{entry % (0, 1)}, {entry % (1, 3)}]}}')
        self.assertEqual([run['bench/rotate/x:ours'] for run in runs], [1, 3])

    def test_of_a_benchmark_that_failed_is_an_error(self):
        with self.assertRaisesRegex(ValueError, 'the results differ'):
            parse.bench('{"benchmarks": [{"name": "widen", "run_type": "iteration", '
                        '"error_occurred": true, "error_message": "the results differ"}]}')

    def test_of_openmp_is_what_is_gained(self):
        run, = parse.bench('''{"benchmarks": [
            {"run_name": "BM_O/english/iterations:5/manual_time", "name": "", "ours_s": 1,
             "reference_s": 5, "speedup": 5, "processor_time_saved": 6,
             "run_type": "iteration"}]}''')
        self.assertEqual(run['bench/BM_O/english:ratio'], 5)
        self.assertEqual(run['bench/BM_O/english/processor'], 6)

    def test_of_a_whole_document(self):
        run = parse.whole_document('100 pages: zelk by default 70.8 s, tesseract -l chi_sim+eng '
                                   '104.8 s, ratio 0.676\n')
        self.assertEqual(run, parse.compared('whole/time', 70.8, 104.8, 0.676))

    def test_of_memory_by_pages(self):
        self.assertEqual(parse.document_memory('peak without result texts: 20 pages 1200 KiB, '
                                              '500 pages 1300 KiB, ratio 1.083'),
                         {'document_memory/20': 1200, 'document_memory/500': 1300})
        self.assertEqual(parse.producer_memory(
            '   50 pages: peak  15616 KB, 10.76 ms a page, 6905 bytes a page beside the image\n'
            ' 5000 pages: peak  15792 KB, 8.32 ms a page, 5604 bytes a page beside the image\n'
            'image 876971 bytes, ratio 1.01, at most 1.50'),
            {'producer_memory/50': 15616, 'producer_memory/5000': 15792})

    def test_of_the_comparison(self):
        head = '| what | measured | target |\n|---|---|---|\n'
        self.assertEqual(parse.compare(head + '| zelk --version | 20 ms | at most 30 |\n'),
                         {'compare/version': 20})
        run = parse.compare_document(
            head + '| zelk, PDF + text + JSON, 40 pages, a+b, 2 jobs | 18.0 s | |\n'
            '| bare tesseract, processor time by 2 | 20.0 s | |\n| ratio | 0.902 | at most 1.08 |\n'
            '| ocrmypdf -O0 | 24.0 s | |\n| ocrmypdf by zelk | 1.33 | at least 1.1 |\n')
        self.assertEqual(run, {**parse.compared('compare/tesseract', 18, 20, 0.902),
                               **parse.compared('compare/ocrmypdf', 18, 24, 1.33)})

    def test_of_the_pages_of_a_tiff(self):
        self.assertEqual(parse.tiff_pages('500 pages 0.22 s, 2000 pages 0.89 s, ratio 4.05\n'),
                         {'tiff_pages/time:ours': 0.89, 'tiff_pages/time:reference': 0.22,
                          'tiff_pages/time:ratio': 4.05})

    def test_of_the_searchable_pdf_and_of_the_sandbox(self):
        self.assertEqual(parse.speed(
            '100 pages, processor time a page: searchable PDF 21.20 ms, rendering, copies and JPEG '
            '19.40 ms, ratio 1.093, at most 1.15; wall time: ratio 1.1', 'pdf/speed'),
            parse.compared('pdf/speed', 21.2, 19.4, 1.093))
        head = '| what | median | lowest to highest | target |\n|---|---|---|---|\n'
        self.assertEqual(parse.sandbox(head + '| difference | -2.0 ms | -64.9 to 122.4 |  |\n'),
                         {'sandbox/start': [-2.0, -64.9, 122.4]})

    def test_of_error_rates_is_a_row_for_each_document_and_language(self):
        rows = parse.accuracy(
            '| file | | baseline | default |\n|---|---|---|---|\n'
            '| a.pdf | en | 1.5 / 0.2 | 1.4 / 0.1 / 0.07 s |\n'
            '| b.png | zh |  | 2.0 / 1.0 / 1.00 s |\n'
            '| average | en | 1.50 / 0.20 | 1.40 / 0.10 / 0.07 s |\n')
        self.assertEqual([(row['document'], row['rate'], row['baseline']) for row in rows],
                         [('a.pdf', 1.4, 1.5), ('b.png', 2.0, None)])

    def test_of_the_round_trip_keeps_the_worst_page_and_every_miss(self):
        line = 'a.pdf'.ljust(44) + '    %d  1000         %.2f         0.00         0.00' \
            '         0.10         5.00   0.190\n'
        row, = parse.round_trip(
            'document page\n' + line % (1, 0.5) + line % (2, 0.3) +
            'a.pdf'.ljust(44) + ' 2.20 bytes a character beside the pictures\n'
            'MISSED a.pdf: page 1: pdfium 0.50 %\n')
        self.assertEqual((row['pages'], row['characters'], row['bytes']), (2, 2000, 2.2))
        self.assertEqual((row['rates'][0], row['sums'][0]), (0.5, 0.8))
        self.assertEqual(row['misses'], ['page 1: pdfium 0.50 %'])

    def test_that_is_not_as_expected_is_an_error(self):
        for parser in (parse.whole_document, parse.document_memory, parse.bench,
                       parse.producer_memory, parse.compare_document, parse.compare_files,
                       parse.accuracy, parse.round_trip):
            with self.subTest(parser.__name__), self.assertRaises(ValueError):
                parser('Segmentation fault\n')


class Derived(unittest.TestCase):
    def test_growth_is_the_longest_by_the_shortest_that_counts(self):
        records = [{'m/1': 50 * 1024.0}, {'m/500': 110 * 1024.0}, {'m/20': 100 * 1024.0}]
        self.assertEqual(derive.growth(records, 'm', 20), {
            'm:ours': 110, 'm:reference': 100, 'm:ratio': 1.1})
        self.assertEqual(derive.growth(records[:1], 'm', 1), {})

    def test_kinds_are_language_and_format(self):
        rows = [{'document': name, 'language': language, 'rate': rate, 'baseline': baseline}
                for name, language, rate, baseline in
                (('a.pdf', 'en', 1.0, 3.0), ('b.pdf', 'en', 2.0, 4.0), ('b.pdf', 'zh', 8.0, None),
                 ('c.tiff', 'zh', 5.0, 5.0))]
        self.assertEqual(derive.accuracy_kinds(rows), {
            'Chinese PDF': (1, 8.0, None), 'Chinese TIFF': (1, 5.0, 5.0),
            'Latin PDF': (2, 1.5, 3.5)})
        self.assertEqual(derive.kinds_of(rows),
                         {'a.pdf': 'Latin PDF', 'b.pdf': 'Mixed PDF', 'c.tiff': 'Chinese TIFF'})


class Running(unittest.TestCase):
    def test_text_is_of_one_script_and_long_enough(self):
        latin = documents.running_text(['one\n两 two ', 'three'], is_han=False)
        self.assertTrue(''.join(latin).startswith('one two three one two three'))
        han = ''.join(documents.running_text(['中 a 文。'], is_han=True))
        self.assertEqual((han[:6], len(han)), ('中文。中文。', documents.CHARACTERS))


class Broken(RuntimeError):
    pass


class OnePage(unittest.TestCase):
    """A folder of records and the page that is written from it."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.records = Records(self.folder / 'raw')
        self.documents = documents.Documents(None, self.folder / 'documents')

    def keep(self, measurement, *records):
        self.records.begin(measurement, TOLD)
        for record in records:
            self.records.add(measurement, record)

    def page(self, reasons=()):
        return Page(Results(self.records, measure.NAMES), dict(reasons))

    def test_measuring_again_replaces_what_was_there(self):
        self.keep('sandbox', {'x': 1})
        self.keep('sandbox', {'x': 2})
        self.assertEqual(self.records.read('sandbox'), (TOLD, [{'x': 2}]))

    def test_a_failed_measurement_keeps_its_runs_and_the_others_go_on(self):
        def breaks_off(_):
            yield {'a': 1}
            raise Broken(f'out of\npaper in {documents.ROOT}/bench of {self.documents.all}')

        bench = measure.Bench(self.folder, self.documents, plan.QUICK)
        measure.take(breaks_off, bench, self.records)
        records = self.records.read('breaks_off')[1]
        self.assertEqual(records[0], {'a': 1})
        self.assertEqual(failure_of(records), 'out of paper in bench of DATA')

    def rows_of(self, script):
        bench = measure.Bench(self.folder, self.documents, plan.QUICK)
        measure.take(lambda b: b.rows(parse.hostile, 'sh', '-c', script), bench, self.records)
        return self.records.read('<lambda>')[1]

    def test_documents_before_a_program_breaks_off_are_kept(self):
        records = self.rows_of('echo "| f |\n|---|\n| a | 0 | 0.1 | 5 |  |"; echo torn >&2; exit 3')
        self.assertEqual([row['document'] for row in documents_of(records)], ['a'])
        self.assertEqual(failure_of(records), 'sh ended with 3: torn')

    def test_a_row_tells_median_spread_target_and_verdict(self):
        self.keep('compare_start', {'compare/version': 31.0}, {'compare/version': 20.0},
                  {'compare/version': 25.0})
        row, = self.page().absolute('compare_start', catalogue.START[:1])
        self.assertEqual(row[1:], ['25 ms', '20 to 31', 3, 'at most 30', 'met'])

    def test_a_miss_is_marked_and_has_its_reason(self):
        self.keep('whole_document', parse.compared('whole/time', 110.0, 100.0))
        page = self.page([('whole/time', 'Because.')])
        row, = page.compared('whole_document', catalogue.LIBRARY[:1])
        self.assertEqual(row[-3:], ['1.100 to 1.100', 'at most 1.05', '**missed**'])
        self.assertEqual([why for *_, why in page.missed()], ['Because.'])
        other = self.page()
        other.compared('whole_document', catalogue.LIBRARY[:1])
        self.assertEqual([why for *_, why in other.missed()], [UNKNOWN])

    def test_a_reason_is_silent_while_the_target_is_met(self):
        self.keep('whole_document', parse.compared('whole/time', 100.0, 100.0))
        page = self.page([('whole/time', 'Because.')])
        page.compared('whole_document', catalogue.LIBRARY[:1])
        self.assertEqual((page.missed(), page.judged_count()), ([], 1))

    def test_a_target_from_below_is_missed_below_it(self):
        self.assertFalse(catalogue.at_least(1.9).met_by(1.89))
        self.assertTrue(catalogue.at_least(1.9).met_by(1.9))
        self.assertFalse(catalogue.at_most(1.1).met_by(1.11))

    def test_a_failed_figure_stands_with_its_reason(self):
        self.keep('whole_document', {'failed': 'no tesseract'})
        page = self.page()
        row, = page.compared('whole_document', catalogue.LIBRARY[:1])
        self.assertEqual(row[1], 'failed: no tesseract')
        self.assertEqual(page.unmeasured(), [(row[0], 'failed: no tesseract')])

    def test_is_written_from_nothing_and_from_a_little(self):
        write.write(self.records, self.folder / 'figures.md')
        self.keep('sandbox', {'sandbox/wall:ratio': [1.5, 1.4, 1.6], 'sandbox/wall:ours': [3, 3, 3],
                              'sandbox/wall:reference': [2, 2, 2]}, {'seconds': 60, 'others': 0.25})
        said = write.write(self.records, self.folder / 'figures.md')
        text = (self.folder / 'figures.md').read_text(encoding='utf8')
        self.assertEqual(said, '1 of 1 targets missed')
        self.assertIn('| wall time of a document, one worker | 1.500 | at most 1.02 |', text)
        self.assertIn('25.0 % of the processors', text)
        self.assertIn('not measured', text)

    def test_documents_are_told_from_figures(self):
        self.keep('hostile', {'document': 'a', 'code': -11, 'seconds': 1.0, 'mb': 2.0},
                  {'document': 'b', 'code': 8, 'seconds': 3.0, 'mb': 1.0}, {'seconds': 5})
        results = Results(self.records, measure.NAMES)
        self.assertEqual(len(documents_of(results.of('hostile'))), 2)
        self.assertEqual(results.samples('hostile/ended').median, 1)
        self.assertEqual(results.samples('hostile/seconds').median, 3)


class Reasons(unittest.TestCase):
    def test_name_a_figure_and_say_a_sentence(self):
        for key, reason in known_reasons().items():
            self.assertRegex(key, '^[a-z_]+/[^ ]+$')
            self.assertRegex(reason, r'^[A-Z].*\.$')


if __name__ == '__main__':
    unittest.main()
