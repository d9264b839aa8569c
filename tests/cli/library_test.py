# SPDX-License-Identifier: Apache-2.0
"""The program gives what the library gives to a host that recognises the same document alone."""

import ctypes
import json
import os
import pathlib
import subprocess
import tempfile
import unittest

from program import DATA, PROGRAM, ProgramTest, bmp, pdf

BUILD = pathlib.Path(PROGRAM).parents[1]
TEXT, NUMBER = ctypes.c_char_p, ctypes.c_int


def library():
    loaded = ctypes.CDLL(str(BUILD / "lib/libzelk.so"))
    for name, result, arguments in (
            ("zelk_init_engine", NUMBER, [TEXT]), ("zelk_uninit_engine", None, []),
            ("zelk_load_image_document", NUMBER, [TEXT, NUMBER]),
            ("zelk_set_double_document_filename", ctypes.c_bool, [TEXT]),
            ("zelk_free_image_document", None, []), ("zelk_recognize", NUMBER, []),
            ("zelk_get_ocr_string", TEXT, []), ("zelk_get_ocr_json_string", TEXT, [NUMBER])):
        function = getattr(loaded, name)
        function.restype, function.argtypes = result, arguments
    return loaded


def told_by_tool(*command):
    return subprocess.run(command, check=True, capture_output=True).stdout


@unittest.skipIf("ZELK_SANITIZED" in os.environ, "the interpreter is not instrumented")
class Library(ProgramTest):
    def recognize_in_library(self, document, dpi, engine, target):
        zelk = library()
        self.assertEqual(zelk.zelk_init_engine(os.fsencode(f"{engine}/")), 0)
        pages = zelk.zelk_load_image_document(os.fsencode(document), dpi)
        zelk.zelk_set_double_document_filename(os.fsencode(target))
        self.assertEqual(zelk.zelk_recognize(), 0)
        text = zelk.zelk_get_ocr_string()
        page_texts = [json.loads(zelk.zelk_get_ocr_json_string(page)) for page in range(pages)]
        zelk.zelk_free_image_document()
        zelk.zelk_uninit_engine()
        return text, page_texts

    def pictures(self, document):
        with tempfile.TemporaryDirectory() as folder:
            told_by_tool("pdfimages", "-all", document, f"{folder}/page")
            return [path.read_bytes() for path in sorted(pathlib.Path(folder).iterdir())]

    def assert_same_pdf(self, first, second):
        self.assertGreater(len(self.pictures(first)), 0)
        self.assertEqual(self.pictures(first), self.pictures(second))
        for command in (("pdftotext", "-bbox"), ("pdftotext", "-raw")):
            self.assertEqual(told_by_tool(*command, first, "-"),
                             told_by_tool(*command, second, "-"))

        def sizes(document):
            told = told_by_tool("pdfinfo", "-l", "-1", document).decode().splitlines()
            return [line for line in told if line.startswith("Page")]
        self.assertEqual(sizes(first), sizes(second))

    def compare(self, document, dpi, engine):
        target = self.folder / "library.pdf"
        text, pages = self.recognize_in_library(document, dpi, engine, target)
        for jobs in ("1", "3"):
            out = self.folder / f"out-{jobs}"
            result = self.run_program("--jobs", jobs, "--dpi", str(dpi), "-d", out, "--format",
                                      "text,json,pdf", document, engine=engine)
            self.assert_result(result, 0)
            name = pathlib.Path(document).stem
            self.assertEqual((out / f"{name}.txt").read_bytes(), text)
            self.assertEqual(json.loads((out / f"{name}.json").read_bytes())["pages"], pages)
            self.assert_same_pdf(target, out / f"{name}.pdf")

    def test_pdf_of_many_pages(self):
        document = self.file("many.pdf", pdf(*((100 + number, 72) for number in range(25))))
        self.compare(document, 100, self.ENGINE)

    def test_picture(self):
        self.compare(self.file("picture.bmp", bmp(300, 200)), 300, self.ENGINE)

    def test_english_scan_read_by_the_default_engine(self):
        self.compare(DATA / "english.tif", 200, BUILD / "lib/zelk/engine")

    def test_chinese_picture_read_by_the_default_engine(self):
        self.compare(DATA / "chinese.png", 150, BUILD / "lib/zelk/engine")


if __name__ == "__main__":
    unittest.main()
