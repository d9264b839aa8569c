# SPDX-License-Identifier: Apache-2.0
"""Which documents are read, and where their outputs lie below a folder."""

import os
import unittest

from program import ProgramTest, bmp


class Inputs(ProgramTest):
    def setUp(self):
        super().setUp()
        self.widths = {}

    def page(self, name):
        """A page whose text tells it from the others."""
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        self.widths[name] = 20 + len(self.widths)
        path.write_bytes(bmp(self.widths[name], 9))
        return name

    def assert_outputs(self, expected, *arguments, **options):
        """Each output with the page that it is of, and no other."""
        result = self.run_program("-d", "out", *arguments, cwd=self.folder, **options)
        self.assert_result(result, 0, b"")
        out = self.folder / "out"
        found = {str(path.relative_to(out)): path.read_text(encoding="utf-8")
                 for path in out.rglob("*") if path.is_file()}
        self.assertEqual(found, {output: f"{self.widths[name]}x9 default\n"
                                 for output, name in expected.items()})

    def test_documents_with_one_name_keep_their_folders(self):
        pages = [self.page(name) for name in ("in/y1/a.png", "in/y2/a.png", "in/y1/b.png")]
        expected = {"y1/a.txt": "in/y1/a.png", "y2/a.txt": "in/y2/a.png", "b.txt": "in/y1/b.png"}
        self.assert_outputs(expected, "@/dev/stdin",
                            input="".join(f"{name}\n" for name in pages).encode())
        absolute = [str(self.folder / "in/y1/a.png"), "in/../in/y2/a.png", "./in/y1/b.png"]
        self.assert_outputs(expected, *absolute)

    def test_a_further_document_moves_no_output_that_it_does_not_clash_with(self):
        for name in ("in/y1/a.png", "in/y2/a.png", "other/c.png", "b.png"):
            self.page(name)
        self.assert_outputs({"y1/a.txt": "in/y1/a.png", "y2/a.txt": "in/y2/a.png",
                             "c.txt": "other/c.png", "b.txt": "b.png"},
                            "in/y1/a.png", "in/y2/a.png", "other/c.png", "b.png")

    def test_folders_that_hold_the_same_names(self):
        for name in ("y1/a.png", "y2/a.png", "y2/s/a.png"):
            self.page(name)
        self.assert_outputs({"y1/a.txt": "y1/a.png", "y2/a.txt": "y2/a.png",
                             "s/a.txt": "y2/s/a.png"}, "--recursive", "y1", "y2")

    def test_extensions_tell_apart_first(self):
        for name in ("y1/a.png", "y1/a.bmp", "y2/a.png"):
            self.page(name)
        self.assert_outputs({"y1/a.txt": "y1/a.png", "y2/a.txt": "y2/a.png",
                             "a.bmp.txt": "y1/a.bmp"}, "y1/a.png", "y1/a.bmp", "y2/a.png")
        self.page("y2/a.bmp")
        (self.folder / "out").rename(self.folder / "before")
        self.assert_outputs({"y1/a.png.txt": "y1/a.png", "y1/a.bmp.txt": "y1/a.bmp",
                             "y2/a.png.txt": "y2/a.png", "y2/a.bmp.txt": "y2/a.bmp"},
                            "y1/a.png", "y1/a.bmp", "y2/a.png", "y2/a.bmp")

    def test_one_file_has_one_output_by_whatever_path(self):
        self.page("in/a.png")
        os.symlink("in", self.folder / "link")
        given = ["in/a.png", "in/a.png", "./in/../in/a.png", self.folder / "in/a.png",
                 "link/a.png", "in", "link"]
        self.assert_outputs({"a.txt": "in/a.png"}, *given)
        result = self.run_program("-d", "out", "none.png", "./none.png", cwd=self.folder)
        self.assertEqual(result.stderr.count(b"No such file"), 1)

    def test_another_name_of_a_file_is_another_document(self):
        self.page("in/a.png")
        os.symlink("a.png", self.folder / "in/latest.png")
        self.assert_outputs({"a.txt": "in/a.png", "latest.txt": "in/a.png"}, "in")

    def test_a_picture_may_be_two_pages_of_an_image_list(self):
        self.page("a.png")
        result = self.run_program("--image-list", "a.png", "a.png", cwd=self.folder)
        self.assert_result(result, 0, 2 * b"20x9 default\n")

    def test_lists_of_windows_editors(self):
        self.page("a.png")
        self.page("b.png")
        self.file("list", b"\xef\xbb\xbfa.png\r\nb.png\r\n")
        self.assert_outputs({"a.txt": "a.png", "b.txt": "b.png"}, "@list")
        self.file("list", b"\xef\xbb\xbf# comment\r\na.png")
        result = self.run_program("@list", cwd=self.folder)
        self.assert_result(result, 0, b"20x9 default\n")

    def test_lists_in_another_encoding_are_named_with_it(self):
        self.page("a.png")
        for content, reason in (("a.png\r\n".encode("utf-16"), "the list is UTF-16"),
                                (b"\xfe\xff" + "a.png\n".encode("utf-16-be"), "the list is UTF-16"),
                                ("a.png\n".encode("utf-16-le"), "the list holds zero bytes"),
                                (b"a.png\0b.png\0", "the list holds zero bytes")):
            with self.subTest(content):
                self.file("list", content)
                result = self.run_program("@list", cwd=self.folder)
                self.assert_result(result, 2, b"")
                self.assert_complains(result, "@list: " + reason)


class Outputs(ProgramTest):
    """Names of outputs and what is wrong with some."""

    def setUp(self):
        super().setUp()
        self.file("page.bmp", bmp(20, 9))

    def refused(self, code, *arguments):
        result = self.run_program(*arguments, cwd=self.folder)
        self.assert_result(result, code, b"")
        text = result.stderr.decode("utf-8")
        for part in ("filesystem error", "terminate", "exception"):
            self.assertNotIn(part, text)
        return text

    def test_the_extension_tells_the_format(self):
        for name, start in (("t.pdf", b"%PDF-"), ("T.PDF", b"%PDF-"), ("t.json", b'{"file":'),
                            ("t.html", b"<!DOCTYPE html>"), ("t.htm", b"<!DOCTYPE html>"),
                            ("t.txt", b"20x9 default\n"), ("t.dat", b"20x9 default\n"),
                            ("t", b"20x9 default\n")):
            with self.subTest(name):
                self.assert_result(self.run_program("-o", name, "page.bmp", cwd=self.folder), 0)
                self.assertTrue((self.folder / name).read_bytes().startswith(start))

    def test_a_name_against_its_format_is_refused(self):
        for form, name in (("text", "t.pdf"), ("pdf", "t.txt"), ("html", "t.json"),
                           ("json", "t.HTM")):
            with self.subTest(name):
                self.assertIn(f"the extension of {name} says", self.refused(
                    1, "--format", form, "-o", name, "page.bmp"))
                self.assertFalse((self.folder / name).exists())
        self.assertIn("--pdf", self.refused(1, "--pdf", "a.pdf", "-o", "b.pdf", "page.bmp"))

    def test_places_where_nothing_can_be_written(self):
        self.file("file", b"old")
        closed = self.folder / "closed"
        closed.mkdir()
        for arguments, words in (
                (["-d", "file"],
                 "zelk: cannot write the output: file is no folder, --directory needs one\n"),
                (["-d", "file/below"],
                 "zelk: cannot write the output: file/below: Not a directory\n"),
                (["-o", "closed"], "zelk: cannot write the output: closed: Is a directory\n"),
                (["-o", "no/such/x"],
                 "zelk: cannot write the output: no/such/x: No such file or directory\n")):
            with self.subTest(arguments):
                self.assertEqual(self.refused(4, *arguments, "page.bmp"), words)
        self.assertEqual((self.folder / "file").read_bytes(), b"old")

    def test_an_empty_list_is_named(self):
        self.file("list", b"\n# nothing\n")
        self.assertIn("zelk: @list: the list names no document\n", self.refused(2, "@list"))


if __name__ == "__main__":
    unittest.main()
