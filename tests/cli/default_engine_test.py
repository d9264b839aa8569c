# SPDX-License-Identifier: Apache-2.0
"""The command line with nothing faked: real documents, and the default engine where it is found."""

import json
import os
import pathlib
import re
import subprocess
import unicodedata
import unittest

from program import DATA, PROGRAM, ProgramTest


def letters(text):
    """The text as it is compared: compatibility forms are one, blanks do not count."""
    return re.sub(r"\s+", "", unicodedata.normalize("NFKC", text))


class DefaultEngine(ProgramTest):
    def setUp(self):
        super().setUp()
        for name in ("QV_LANGUAGES", "QV_TESSDATA", "QV_PAGE_SEGMENTATION"):
            os.environ.pop(name, None)

    def recognize(self, *arguments, code=0):
        result = self.run_program(*arguments, engine=None)
        self.assert_result(result, code)
        return result.stdout.decode("utf-8")

    def test_english_picture(self):
        text = self.recognize(DATA / "english.tif")
        self.assertIn("The quick brown dog jumped over the\n", text)
        self.assertEqual(text.count("lazy fox"), 4)

    def test_chinese_picture(self):
        text = self.recognize(DATA / "chinese.png")
        self.assertIn("关于开展安全检查的通知", text)
        self.assertIn("检查的主要内容包括消防设施、电气线路", letters(text))

    def test_pages_of_a_scanned_pdf(self):
        text = self.recognize(DATA / "scan.pdf")
        self.assertIn("市场部提出", letters(text))
        self.assertIn("Do not fold the sheets", text)
        self.assertLess(text.index("会议纪要"), text.index("MEMORANDUM"))

    def test_phrases_of_a_searchable_pdf_are_found_on_their_pages(self):
        out = self.folder / "out.pdf"
        self.recognize("--pdf", out, DATA / "scan.pdf")

        def pages_with(phrase):
            found = subprocess.run(["pdfgrep", "--page-number", "--fixed-strings", phrase, out],
                                   capture_output=True, check=False, text=True)
            return [int(line.split(":")[0]) for line in found.stdout.splitlines()]

        self.assertEqual(pages_with("技术部关于新系统试运行情况的汇报"), [1])
        self.assertEqual(pages_with("printed sheets"), [2])
        self.assertEqual(pages_with("no such phrase"), [])

    def test_one_language_can_be_asked_for(self):
        self.assertIn("quick brown dog", self.recognize("--lang", "eng", DATA / "english.tif"))

    def test_json_holds_the_words_of_each_page(self):
        told = json.loads(self.recognize("--format", "json", DATA / "scan.pdf"))
        self.assertEqual([page["page"]["width"] for page in told["pages"]], [1653] * 2)
        self.assertIn("MEMORANDUM", json.dumps(told["pages"][1]))

    def test_languages_are_listed_and_can_be_used(self):
        languages = self.recognize("--list-langs").split()
        self.assertLessEqual({"eng", "chi_sim"}, set(languages))
        self.assertNotIn("osd", languages)

    def test_languages_of_a_folder_without_any_are_an_error(self):
        wrapper = ["env", f"QV_TESSDATA={self.folder}"]
        result = self.run_program("--list-langs", engine=None, wrapper=wrapper)
        self.assert_result(result, 3, b"")
        self.assert_complains(result, str(self.folder))

    def test_a_language_that_is_not_there_is_named(self):
        result = self.run_program("--lang", "tlh", DATA / "english.tif", engine=None)
        self.assert_result(result, 3, b"")
        self.assertIn(b"tlh", result.stderr)
        self.assert_complains(result, "the package tesseract-ocr-tlh brings it")

    def test_version_is_about_what_the_engine_stands_on(self):
        text = self.recognize("--version")
        self.assertRegex(text, r"(?m)^  Tesseract +5\.")
        self.assertRegex(text, r"(?m)^  Leptonica +leptonica-1\.")
        engine = pathlib.Path(PROGRAM).parents[1] / "lib/zelk/engine/libQVEngine.so"
        self.assertIn(str(engine.resolve()), text)


if __name__ == "__main__":
    unittest.main()
