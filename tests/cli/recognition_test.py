# SPDX-License-Identifier: Apache-2.0
"""What the command line delivers, and where."""

import json
import os
import unittest

from program import DATA, FAKES, ProgramTest, bmp, pdf


class Text(ProgramTest):
    def test_files_come_out_in_the_order_given(self):
        wide = self.file("a.bmp", bmp(40, 20))
        tall = self.file("b.bmp", bmp(20, 40))
        self.assert_result(self.run_program(tall, wide, tall), 0,
                           b"20x40 default\n40x20 default\n20x40 default\n")

    def test_pages_of_a_document_come_out_in_order(self):
        document = self.file("three.pdf", pdf((72, 36), (36, 72), (72, 72)))
        self.assert_result(self.run_program("--dpi", "72", document), 0,
                           b"72x36 default\n36x72 default\n72x72 default\n")

    def test_what_the_engine_prints_goes_to_standard_error(self):
        result = self.run_program("--verbose", self.file("a.bmp", bmp(40, 20)))
        self.assert_result(result, 0, b"40x20 default\n")
        self.assertEqual(result.stderr.count(b"chatter: "), 3)

    def test_what_the_engine_prints_is_for_those_who_ask(self):
        result = self.run_program(self.file("a.bmp", bmp(40, 20)))
        self.assert_result(result, 0, b"40x20 default\n")
        self.assertEqual(result.stderr, b"")

    def test_what_a_failing_start_prints_goes_to_standard_error(self):
        result = self.run_program(self.file("a.bmp", bmp(4, 2)), engine=FAKES / "refusing")
        self.assert_result(result, 3, b"")
        self.assertIn(b"7", result.stderr)

    def test_resolution_of_pdf_pages_is_200_unless_told(self):
        document = self.file("one.PDF", pdf((72, 36)))
        self.assert_result(self.run_program(document), 0, b"200x100 default\n")
        self.assert_result(self.run_program("--dpi", "2400", document), 0, b"2400x1200 default\n")

    def test_languages_reach_the_engine(self):
        page = self.file("a.bmp", bmp(4, 2))
        self.assert_result(self.run_program("--lang", "chi_sim+eng", page), 0, b"4x2 chi_sim+eng\n")

    def test_an_engine_without_json_is_no_failure(self):
        page = self.file("a.bmp", bmp(4, 2))
        self.assert_result(self.run_program(page, fake="no-json"), 0, b"4x2 default\n")

    def test_a_name_that_looks_like_an_option_follows_two_dashes(self):
        self.file("--dpi.bmp", bmp(4, 2))
        result = self.run_program("--", "--dpi.bmp", cwd=self.folder)
        self.assert_result(result, 0, b"4x2 default\n")

    def test_tiff_pages_need_no_words_of_the_decoder(self):
        result = self.run_program(DATA / "english.tif")
        self.assert_result(result, 0)
        self.assertNotIn(b"TIFF", result.stderr)


class Json(ProgramTest):
    def test_each_file_is_one_line_with_its_pages(self):
        document = self.file("two.pdf", pdf((72, 36), (36, 72)))
        page = self.file("a.bmp", bmp(4, 2))
        result = self.run_program("--format", "json", "--dpi", "72", document, page)
        self.assert_result(result, 0)
        lines = result.stdout.splitlines()
        self.assertEqual([json.loads(line) for line in lines], [
            {"file": str(document), "page_count": 2,
             "pages": [{"width": 72, "height": 36, "languages": "default"},
                       {"width": 36, "height": 72, "languages": "default"}]},
            {"file": str(page), "page_count": 1,
             "pages": [{"width": 4, "height": 2, "languages": "default"}]}])
        self.assertLess(lines[0].find(b'"width"'), lines[0].find(b'"height"'), "order of fields")

    def test_a_page_that_is_no_json_is_null(self):
        page = self.file("a.bmp", bmp(4, 2))
        result = self.run_program("--format", "json", page, fake="broken-json")
        self.assert_result(result, 0)
        self.assertEqual(json.loads(result.stdout)["pages"], [None])

    def test_a_file_name_that_is_not_utf8_is_told_escaped(self):
        page = self.folder / os.fsdecode(b"scan-\xff\xfe.bmp")
        page.write_bytes(bmp(4, 2))
        result = self.run_program("--format", "json", page)
        self.assert_result(result, 0)
        told = json.loads(result.stdout)
        self.assertEqual(told["file"], f"{self.folder}/scan-\\xFF\\xFE.bmp")
        self.assertTrue(told["file_is_escaped"])

    def test_pages_that_were_lost_are_null(self):
        document = DATA / "hostile/missing-page-object.pdf"
        result = self.run_program("--format", "json", document)
        self.assert_result(result, 5)
        told = json.loads(result.stdout)
        self.assertEqual((told["page_count"], len(told["pages"])), (3, 3))
        self.assertIsNone(told["pages"][1])
        self.assertEqual(told["failed_pages"],
                         [{"page": 2, "cause": "the page is damaged or has no area"}])


class Engine(ProgramTest):
    def test_a_folder_without_engine_is_named(self):
        output = self.file("out.txt", b"old")
        result = self.run_program("-o", output, self.file("a.bmp", bmp(4, 2)), engine=self.folder)
        self.assert_result(result, 3, b"")
        self.assert_complains(result, f"{self.folder}/libQVEngine.so: No such file or directory")
        self.assertEqual(output.read_bytes(), b"old")

    def test_an_engine_that_does_not_start_is_named(self):
        result = self.run_program(self.file("a.bmp", bmp(4, 2)), engine=FAKES / "refusing")
        self.assert_result(result, 3, b"")
        self.assert_complains(result, f"{FAKES}/refusing/libQVEngine.so did not start")

    def test_a_path_too_long_for_the_library_is_refused(self):
        deep = self.folder / ("d" * 120) / ("e" * 120)
        deep.mkdir(parents=True)
        (deep / "libQVEngine.so").symlink_to(FAKES / "describing/libQVEngine.so")
        result = self.run_program(self.file("a.bmp", bmp(4, 2)), engine=deep)
        self.assert_result(result, 3, b"")
        self.assert_complains(result, "241 are the most")

    def test_a_path_of_the_greatest_length_serves(self):
        room = 241 - len(f"{self.folder}//")
        deep = self.folder / ("d" * room)
        deep.mkdir()
        (deep / "libQVEngine.so").symlink_to(FAKES / "describing/libQVEngine.so")
        result = self.run_program(self.file("a.bmp", bmp(4, 2)), engine=deep)
        self.assert_result(result, 0, b"4x2 default\n")

    def test_a_relative_folder_serves(self):
        (self.folder / "own").symlink_to(FAKES / "describing")
        self.file("a.bmp", bmp(4, 2))
        self.assert_result(self.run_program("a.bmp", engine="own", cwd=self.folder), 0,
                           b"4x2 default\n")


if __name__ == "__main__":
    unittest.main()
