# SPDX-License-Identifier: Apache-2.0
"""Files that cannot be read are named with the reason; the others are recognised all the same."""

import os
import unittest

from program import DATA, ProgramTest, bmp, pdf


class Unreadable(ProgramTest):
    def assert_refused(self, path, reason, **options):
        """The file is named with the reason, between two that are recognised."""
        before = self.file("before.bmp", bmp(1, 2))
        after = self.file("after.bmp", bmp(3, 4))
        result = self.run_program(before, path, after, **options)
        self.assert_result(result, 2, b"1x2 default\n3x4 default\n")
        self.assert_complains(result, f"zelk: {os.fspath(path)}: {reason}")

    def test_missing_file(self):
        self.assert_refused(self.folder / "none.png", "No such file or directory")

    def test_folder_without_documents(self):
        (self.folder / "folder.png").mkdir()
        self.assert_refused(self.folder / "folder.png", "holds no document")

    def test_file_without_permission(self):
        path = self.file("secret.bmp", bmp(5, 6))
        path.chmod(0)
        # The superuser may read it nevertheless, unless that right is taken away.
        bounds = "-dac_override,-dac_read_search"
        wrapper = ["setpriv", "--bounding-set", bounds] if os.geteuid() == 0 else []
        self.assert_refused(path, "Permission denied", wrapper=wrapper)

    def test_pipe_is_not_waited_for(self):
        os.mkfifo(self.folder / "pipe.png")
        self.assert_refused(self.folder / "pipe.png", "is not a regular file")

    def test_empty_file(self):
        self.assert_refused(self.file("empty.pdf", b""), "the file is empty")

    def test_text_named_like_a_document(self):
        for name in ("text.jpg", "text.TIFF", "text.pdf", "text"):
            with self.subTest(name):
                self.assert_refused(self.file(name, b"just words\n"),
                                    "the content is neither a picture of a known kind nor a PDF")

    def test_the_content_counts_and_not_the_name(self):
        for name in ("page.pdf", "page", "page.bmp.txt", "page."):
            with self.subTest(name):
                self.assert_result(self.run_program(self.file(name, bmp(5, 6))), 0,
                                   b"5x6 default\n")
        document = self.file("document.png", pdf((36, 36)))
        self.assert_result(self.run_program("--dpi", "72", document), 0, b"36x36 default\n")

    def test_pdf_without_pages(self):
        self.assert_refused(self.file("none.pdf", pdf()), "the PDF has no pages")

    def test_pdf_whose_only_page_cannot_be_rendered(self):
        self.assert_refused(self.file("flat.pdf", pdf((36, 0.1))),
                            "page 1: the page, 36 x 0.1 points at 200")

    def test_document_of_which_no_page_can_be_rendered(self):
        self.assert_refused(self.file("flat.pdf", pdf((36, 0.1), (36, 0.1))),
                            "none of its 2 pages can be read")

    def test_a_page_that_the_engine_refuses_is_delivered_without_text(self):
        page = self.file("a.bmp", bmp(5, 6))
        result = self.run_program(page, fake="failing")
        self.assert_result(result, 5, b"")
        self.assert_complains(result, f"{page}: page 1: the engine refused the page (code 1)")

    def test_pages_beside_a_lost_one_are_delivered(self):
        document = self.file("three.pdf", pdf((72, 72), (36, 0.1), (36, 36)))
        result = self.run_program("--dpi", "72", document)
        self.assert_result(result, 5, b"72x72 default\n36x36 default\n")
        self.assert_complains(result, f"{document}: page 2: the page, 36 x 0.1 points")


class Password(ProgramTest):
    DOCUMENT = DATA / "hostile/user-password-aes256.pdf"

    def test_pdf_behind_a_password_is_told_with_a_code_of_its_own(self):
        good = self.file("good.bmp", bmp(1, 2))
        result = self.run_program(good, self.DOCUMENT, good)
        self.assert_result(result, 8, b"1x2 default\n1x2 default\n")
        self.assert_complains(result, f"{self.DOCUMENT}: a password is needed (--password)")

    def test_with_the_password_it_is_read(self):
        result = self.run_program("--password", "letmein", "--dpi", "36", self.DOCUMENT)
        self.assert_result(result, 0)
        self.assertRegex(result.stdout, rb"^(\d+x\d+ default\n)+$")

    def test_wrong_password(self):
        result = self.run_program("--password", "no", self.DOCUMENT)
        self.assert_result(result, 8, b"")
        self.assert_complains(result, f"{self.DOCUMENT}: the password is wrong")


if __name__ == "__main__":
    unittest.main()
