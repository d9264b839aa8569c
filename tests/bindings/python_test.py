# SPDX-License-Identifier: Apache-2.0
"""The Python module, on the built library and a stand-in engine."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "bindings/python"))
import zelk  # pylint: disable=wrong-import-position

ENGINE = pathlib.Path(os.environ["ZELK_FAKES"]) / "describing"
PAGE = {"width": 640, "height": 480, "languages": "default"}
INK = os.environ["ZELK_INK_ENGINE"]  # calls every mark of ink a black square
TIFF = ROOT / "tests/data/english.tif"


class Python(unittest.TestCase):
    def setUp(self):
        os.environ.pop("FAKE_ENGINE", None)

    def test_document_gives_text_and_pages(self):
        with zelk.Engine(ENGINE) as engine:
            self.assertEqual(engine.recognize(TIFF), ("640x480 default\n", [PAGE], 1))

    def test_resolution_reaches_pdf_pages(self):
        with zelk.Engine(ENGINE) as engine:
            result = engine.recognize(ROOT / "tests/data/hostile/form-draws-itself.pdf", dpi=100)
        self.assertEqual(result.text, "850x1100 default\n")

    def test_lost_pages_have_no_entry(self):
        with zelk.Engine(ENGINE) as engine:
            result = engine.recognize(ROOT / "tests/data/hostile/missing-page-object.pdf")
        self.assertEqual((result.page_count, len(result.pages)), (3, 2))

    def test_images_are_the_pages_of_one_result(self):
        with zelk.Engine(ENGINE) as engine:
            result = engine.recognize_images([TIFF, "/nowhere.png", TIFF])
            self.assertEqual(result.text, "640x480 default\n" * 2)
            self.assertEqual((result.pages, result.page_count), ([PAGE, PAGE], 3))
            self.assertEqual(engine.recognize_images([TIFF]).page_count, 1)

    def test_pages_that_are_no_json_are_none(self):
        os.environ["FAKE_ENGINE"] = "broken-json"
        with zelk.Engine(ENGINE) as engine:
            self.assertEqual(engine.recognize(TIFF).pages, [None])

    def test_documents_that_cannot_be_opened_raise(self):
        with zelk.Engine(ENGINE) as engine:
            with self.assertRaisesRegex(zelk.Error, "nowhere.png"):
                engine.recognize("/nowhere.png")

    def test_engines_that_cannot_be_started_raise(self):
        with self.assertRaisesRegex(zelk.Error, "/nowhere/ cannot be started"):
            zelk.Engine("/nowhere")

    def test_closed_engine_answers_nothing(self):
        engine = zelk.Engine(ENGINE)
        result = engine.recognize(TIFF)
        engine.close()
        for use in (lambda: engine.recognize(TIFF), lambda: engine.recognize_images([TIFF]),
                    engine.__enter__):
            with self.assertRaisesRegex(zelk.Error, "the engine is closed"):
                use()
        self.assertEqual(result.text, "640x480 default\n")

    def test_closing_twice_leaves_the_next_engine_running(self):
        first = zelk.Engine(ENGINE)
        first.close()
        with zelk.Engine(ENGINE) as second:
            first.close()
            self.assertEqual(second.recognize(TIFF).text, "640x480 default\n")

    def test_default_engine_is_beside_the_library(self):
        library = pathlib.Path(os.environ["ZELK_LIBRARY"])
        directory = zelk._default_directory(zelk._load())  # pylint: disable=protected-access
        self.assertEqual(directory, str(library.resolve().parent / "zelk/engine"))


class SearchablePdf(unittest.TestCase):
    def setUp(self):
        os.environ.pop("FAKE_ENGINE", None)
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.pdf = pathlib.Path(folder.name) / "out.pdf"

    def text_and_sizes(self):
        """The text that others read in the PDF, and the sizes of its pages."""
        text = subprocess.run(["pdftotext", self.pdf, "-"], capture_output=True, text=True,
                              check=True).stdout
        info = subprocess.run(["pdfinfo", "-l", "-1", self.pdf], capture_output=True, text=True,
                              check=True).stdout
        return text, [line.split(":")[1].split("pts")[0].strip() for line in info.splitlines()
                      if "size:" in line and line.startswith("Page ")]

    def test_document_is_written_beside_its_result(self):
        with zelk.Engine(INK) as engine:
            result = engine.recognize(TIFF, dpi=100, pdf=self.pdf)
        self.assertIn("■", result.text)
        text, sizes = self.text_and_sizes()
        self.assertIn("■", text)
        self.assertEqual(sizes, ["460.8 x 345.6"])

    def test_images_are_written_at_their_own_resolution(self):
        with zelk.Engine(INK) as engine:
            engine.recognize(TIFF, dpi=72)
            engine.recognize_images([TIFF, "/nowhere.png", TIFF], dpi=100, pdf=self.pdf)
        self.assertEqual(self.text_and_sizes()[1], ["460.8 x 345.6"] * 2)

    def test_only_the_call_that_names_it_writes_it(self):
        with zelk.Engine(INK) as engine:
            for recognize in (engine.recognize, lambda file: engine.recognize_images([file])):
                engine.recognize(TIFF, pdf=self.pdf)
                self.pdf.unlink()
                recognize(TIFF)
                self.assertFalse(self.pdf.exists())

    def test_pdf_that_cannot_be_written_raises_with_the_result(self):
        with zelk.Engine(ENGINE) as engine:
            for use in (lambda: engine.recognize(TIFF, pdf="/nowhere/out.pdf"),
                        lambda: engine.recognize_images([TIFF], pdf="/nowhere/out.pdf")):
                with self.assertRaisesRegex(zelk.Error, "out.pdf cannot be written") as raised:
                    use()
                self.assertEqual(raised.exception.result.text, "640x480 default\n")

    def test_name_of_another_kind_raises(self):
        with zelk.Engine(ENGINE) as engine:
            with self.assertRaisesRegex(zelk.Error, "out.txt: the name .* ends in .pdf"):
                engine.recognize(TIFF, pdf="out.txt")
            self.assertEqual(engine.recognize(TIFF).text, "640x480 default\n")


if __name__ == "__main__":
    unittest.main()
