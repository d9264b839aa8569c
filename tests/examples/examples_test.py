# SPDX-License-Identifier: Apache-2.0
"""The example hosts do what they say."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

EXAMPLES = pathlib.Path(os.environ["ZELK_EXAMPLES"])
ENGINE = os.environ["ZELK_FAKES"] + "/describing/"
DATA = pathlib.Path(os.environ["ZELK_TEST_DATA"])
PAGE = DATA / "english.tif"


def pdf_of_widths(*widths):
    """A PDF with one empty page for each width in points."""
    kids = " ".join(f"{number} 0 R" for number in range(3, 3 + len(widths)))
    objects = ["<< /Type /Catalog /Pages 2 0 R >>",
               f"<< /Type /Pages /Kids [{kids}] /Count {len(widths)} >>",
               *(f"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 {width} 36] >>" for width in widths)]
    pdf, places = "%PDF-1.4\n", []
    for number, body in enumerate(objects, 1):
        places.append(f"{len(pdf):010} 00000 n \n")
        pdf += f"{number} 0 obj\n{body}\nendobj\n"
    size = len(objects) + 1
    return (f"{pdf}xref\n0 {size}\n0000000000 65535 f \n{''.join(places)}trailer\n"
            f"<< /Size {size} /Root 1 0 R >>\nstartxref\n{len(pdf)}\n%%EOF\n")


class Examples(unittest.TestCase):
    def run_example(self, name, *arguments, faults=""):
        """Exit code, and standard output without what the stand-in engine prints there."""
        done = subprocess.run([EXAMPLES / name, *arguments], stdout=subprocess.PIPE, text=True,
                              stderr=subprocess.PIPE, check=False,
                              env={**os.environ, "FAKE_ENGINE": "", "FAKE_FAULTS": faults})
        self.complaints = done.stderr
        lines = [line for line in done.stdout.splitlines() if not line.startswith("chatter: ")]
        return done.returncode, lines

    def test_document_to_text(self):
        self.assertEqual(self.run_example("document_to_text", ENGINE, PAGE),
                         (0, ["640x480 default"]))
        self.assertEqual(self.run_example("document_to_text", ENGINE, "/nowhere.png"), (3, []))
        self.assertEqual(self.run_example("document_to_text")[0], 1)

    def test_image_list(self):
        self.assertEqual(self.run_example("image_list", ENGINE, PAGE, "/nowhere.png", PAGE),
                         (0, ["640x480 default"] * 2))
        self.assertEqual(self.run_example("image_list")[0], 1)

    def test_json_pages(self):
        document = DATA / "hostile/missing-page-object.pdf"
        code, lines = self.run_example("json_pages", ENGINE, document)
        self.assertEqual(code, 0)
        text = "".join(lines)
        self.assertEqual(text.count('"width"'), 2)
        self.assertEqual(json.loads(text[:text.index("}") + 1])["width"], 1700)
        self.assertEqual(self.complaints, "1 of 3 pages have no JSON\n")
        self.assertEqual(self.run_example("json_pages", ENGINE, "/nowhere.png")[0], 3)

    def test_json_pages_goes_on_behind_pages_that_the_engine_failed_on(self):
        with tempfile.NamedTemporaryFile("w", suffix=".pdf") as document:
            document.write(pdf_of_widths(72, 36, 36, 144))
            document.flush()
            code, lines = self.run_example("json_pages", ENGINE, document.name, faults="refuse@100")
        self.assertEqual(code, 0)
        widths = [line for line in lines if "width" in line]
        self.assertEqual(widths, [' "width": 200,', ' "width": 400,'])
        self.assertEqual(self.complaints, "2 of 4 pages have no JSON\n")

    def test_engine_that_is_not_there(self):
        for name in ("document_to_text", "image_list", "json_pages"):
            with self.subTest(name):
                self.assertEqual(self.run_example(name, "/nowhere/", PAGE)[0], 2)


if __name__ == "__main__":
    unittest.main()
