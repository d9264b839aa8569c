# SPDX-License-Identifier: Apache-2.0
"""The example hosts do what they say."""

import json
import os
import pathlib
import subprocess
import unittest

EXAMPLES = pathlib.Path(os.environ["ZELK_EXAMPLES"])
ENGINE = os.environ["ZELK_FAKES"] + "/describing/"
DATA = pathlib.Path(os.environ["ZELK_TEST_DATA"])
PAGE = DATA / "english.tif"


class Examples(unittest.TestCase):
    def run_example(self, name, *arguments):
        """Exit code, and standard output without what the stand-in engine prints there."""
        done = subprocess.run([EXAMPLES / name, *arguments], stdout=subprocess.PIPE, text=True,
                              env={**os.environ, "FAKE_ENGINE": ""}, check=False)
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
        self.assertEqual(self.run_example("json_pages", ENGINE, "/nowhere.png")[0], 3)

    def test_engine_that_is_not_there(self):
        for name in ("document_to_text", "image_list", "json_pages"):
            with self.subTest(name):
                self.assertEqual(self.run_example(name, "/nowhere/", PAGE)[0], 2)


if __name__ == "__main__":
    unittest.main()
