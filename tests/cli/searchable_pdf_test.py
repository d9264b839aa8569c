# SPDX-License-Identifier: Apache-2.0
"""The searchable PDF beside the text: written whole or its loss told, at no cost for the text."""

import subprocess
import unittest

from program import ProgramTest, bmp, pdf


class SearchablePdf(ProgramTest):
    def setUp(self):
        super().setUp()
        self.page = self.file("page.bmp", bmp(4, 2))
        self.out = self.folder / "out.pdf"

    def assert_sound(self, pages):
        check = subprocess.run(["qpdf", "--check", self.out], capture_output=True, check=False)
        self.assertEqual(check.returncode, 0, check.stdout + check.stderr)
        shown = subprocess.run(["qpdf", "--show-npages", self.out], capture_output=True, check=True)
        self.assertEqual(int(shown.stdout), pages)

    def test_text_goes_to_standard_output_and_the_pdf_to_its_file(self):
        result = self.run_program("--pdf", self.out, self.page)
        self.assert_result(result, 0, b"4x2 default\n")
        self.assert_sound(pages=1)
        self.assertEqual(self.names(), ["out.pdf", "page.bmp"])

    def test_pdf_of_a_pdf_has_all_its_pages(self):
        document = self.file("a.pdf", pdf((30, 20), (40, 20), (50, 20)))
        self.assert_result(self.run_program("--pdf", self.out, document), 0)
        self.assert_sound(pages=3)

    def test_new_file_replaces_the_old_one(self):
        self.out.write_bytes(b"old")
        self.assert_result(self.run_program("--pdf", self.out, self.page), 0)
        self.assert_sound(pages=1)

    def test_missing_folder_costs_only_the_pdf(self):
        self.out = self.folder / "none" / "out.pdf"
        result = self.run_program("--pdf", self.out, self.page)
        self.assert_result(result, 4, b"4x2 default\n")
        self.assert_complains(result, f"{self.page}: cannot write {self.out}: No such file")

    def test_folder_of_that_name_costs_only_the_pdf(self):
        self.out.mkdir()
        result = self.run_program("--pdf", self.out, self.page)
        self.assert_result(result, 4, b"4x2 default\n")
        self.assert_complains(result, f"{self.page}: cannot write {self.out}: Is a directory")

    def test_full_disk_costs_only_the_pdf(self):
        self.out.symlink_to("/dev/full")
        result = self.run_program("--pdf", self.out, self.page)
        self.assert_result(result, 4, b"4x2 default\n")
        self.assert_complains(result, f"cannot write {self.out}: No space left on device")

    def test_unreadable_document_leaves_an_old_pdf_alone(self):
        self.out.write_bytes(b"old")
        result = self.run_program("--pdf", self.out, self.folder / "none.png")
        self.assert_result(result, 2, b"")
        self.assertEqual(self.out.read_bytes(), b"old")

    def test_input_is_not_the_output(self):
        document = self.file("a.pdf", pdf((30, 20)))
        before = document.read_bytes()
        result = self.run_program("--pdf", document, document)
        self.assert_result(result, 1, b"")
        self.assert_complains(result, "it cannot be the output too")
        self.assertEqual(document.read_bytes(), before)

    def test_name_must_end_in_pdf(self):
        self.assert_result(self.run_program("--pdf", self.folder / "out.txt", self.page), 1, b"")

    def test_one_document_at_a_time(self):
        result = self.run_program("--pdf", self.out, self.page, self.page)
        self.assert_result(result, 1, b"")
        self.assertEqual(self.names(), ["page.bmp"])


if __name__ == "__main__":
    unittest.main()
