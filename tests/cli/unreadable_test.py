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

    def test_unknown_extension(self):
        known = "(known: bmp, jpg, jpeg, png, tif, tiff, pdf)"
        for name in ("page.gif", "page", "page.bmp.txt", "page."):
            with self.subTest(name):
                self.assert_refused(self.file(name, bmp(5, 6)), f"unknown extension {known}")

    def test_text_named_like_a_picture(self):
        for name in ("text.jpg", "text.TIFF"):
            with self.subTest(name):
                self.assert_refused(self.file(name, b"just words\n"),
                                    "the content is not a picture that can be decoded")

    def test_text_named_like_a_pdf(self):
        self.assert_refused(self.file("text.pdf", b"just words\n"), "the content is not a PDF")

    def test_pdf_behind_a_password(self):
        self.assert_refused(DATA / "hostile/user-password-aes256.pdf",
                            "the PDF is damaged, protected by a password or has no pages")

    def test_pdf_without_pages(self):
        self.assert_refused(self.file("none.pdf", pdf()),
                            "the PDF is damaged, protected by a password or has no pages")

    def test_pdf_whose_only_page_cannot_be_rendered(self):
        self.assert_refused(self.file("huge.pdf", pdf((200000, 200000))),
                            "the page could not be read")

    def test_document_of_which_no_page_can_be_rendered(self):
        self.assert_refused(self.file("huge.pdf", pdf((200000, 200000), (200000, 200000))),
                            "none of its 2 pages could be read")

    def test_pages_that_the_engine_cannot_recognise(self):
        page = self.file("a.bmp", bmp(5, 6))
        result = self.run_program(page, fake="failing")
        self.assert_result(result, 2, b"")
        self.assert_complains(result, f"{page}: the page could not be read")

    def test_pages_beside_a_lost_one_are_delivered(self):
        document = self.file("three.pdf", pdf((72, 72), (200000, 200000), (36, 36)))
        result = self.run_program("--dpi", "72", document)
        self.assert_result(result, 2, b"72x72 default\n36x36 default\n")
        self.assert_complains(result, f"{document}: 1 of 3 pages could not be read")

    def test_a_name_with_a_dot_in_its_folder_only(self):
        (self.folder / "scans.png").mkdir()
        self.assert_refused(self.file("scans.png/page", bmp(5, 6)), "unknown extension")


if __name__ == "__main__":
    unittest.main()
