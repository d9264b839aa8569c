# SPDX-License-Identifier: Apache-2.0
"""The Python module, on the built library and a stand-in engine."""

import os
import pathlib
import sys
import unittest

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "bindings/python"))
import zelk  # pylint: disable=wrong-import-position

ENGINE = pathlib.Path(os.environ["ZELK_FAKES"]) / "describing"
PAGE = {"width": 640, "height": 480, "languages": "default"}
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

    def test_default_engine_is_beside_the_library(self):
        library = pathlib.Path(os.environ["ZELK_LIBRARY"])
        directory = zelk._default_directory(zelk._load())  # pylint: disable=protected-access
        self.assertEqual(directory, str(library.resolve().parent / "zelk/engine"))


if __name__ == "__main__":
    unittest.main()
