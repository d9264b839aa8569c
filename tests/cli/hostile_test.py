# SPDX-License-Identifier: Apache-2.0
"""Damaged and malicious files: the program names what it cannot read, delivers what it can and goes
on to the next file."""

import os
import unittest

from program import DATA, ProgramTest, bmp

FOLDER = DATA / "hostile"

NO_PICTURE = "page 1: the content is not a picture that can be decoded"
UNKNOWN = "the content is neither a picture of a known kind nor a PDF"
CLOSED = "a password is needed (--password)"
LOST = "page 1: the page is damaged or has no area"
ALLOWED = "--max-pixels allows 120000000"
EMPTY = "the file is empty"

# What is said about each file, and the sizes in pixels of the pages that are delivered. A decoder
# that recovers more, or less, of these is at liberty to do so: then this table follows it.
EXPECTED = {
    "bad-height.bmp": (f"page 1: the picture has 6 x 2147483647 pixels, {ALLOWED}", []),
    "declares-100000x100000.tif": (
        f"page 1: the picture has 100000 x 100000 pixels, {ALLOWED}", []),
    "empty.pdf": (EMPTY, []),
    "empty.png": (EMPTY, []),
    "form-draws-itself.pdf": ("", ["1700x2200"]),
    "fuzz-height-2147483648.pdf": (
        "page 1: the page is too large: 595 x 2.14748e+09 points have more pixels at 1 dot per "
        "inch than --max-pixels allows (120000000)", []),
    "ifd-points-to-itself.tif": ("", ["16x16"]),
    "mediabox-200000pt.pdf": (
        "page 1: warning: rendered at 3 instead of 200 dots per inch to stay within --max-pixels",
        ["8333x8333"]),
    "missing-page-object.pdf": (
        "page 2: the page is damaged or has no area", ["1700x2200", "1700x2200"]),
    "operator-list-cycle.pdf": ("", ["1700x2200"]),
    "page-tree-loop.pdf": ("", ["1700x2200", "1700x2200"]),
    "pdf-content.png": ("", ["1653x2338"]),
    "pdfium-cropbox-no-overlap.pdf": (LOST, []),
    "pdfium-encrypted-r3.pdf": (CLOSED, []),
    "pillow-crash-0e16.tif": (NO_PICTURE, []),
    "pillow-ifd-loop.tiff": ("", ["10x10"]),
    "pillow-truncated.png": (NO_PICTURE, []),
    "plaintext.jpg": (UNKNOWN, []),
    "plaintext.pdf": (UNKNOWN, []),
    "png-content.jpg": ("", ["2339x1654"]),
    "png-content.pdf": ("", ["2339x1654"]),
    "qpdf-bad1.pdf": (UNKNOWN, []),
    "qpdf-bad34.pdf": (LOST, []),
    "truncated-40percent.tif": ("", ["2480x1417"]),
    "truncated-70percent.pdf": ("the PDF is damaged", []),
    "truncated-half.png": (NO_PICTURE, []),
    "truncated-third.jpg": (
        "page 1: warning: part of the picture is missing or damaged (Premature end of JPEG file)",
        ["2480x3508"]),
    "user-password-aes256.pdf": (CLOSED, []),
    "zero-pages.pdf": ("the PDF has no pages", []),
}
BOMB = "bomb-30000x30000-1bit.png"


class Hostile(ProgramTest):
    def test_every_file_is_in_the_table(self):
        self.assertEqual(sorted(path.name for path in FOLDER.iterdir()), sorted([*EXPECTED, BOMB]))

    def test_each_is_named_and_the_good_ones_between_are_delivered(self):
        good = self.file("good.bmp", bmp(4, 2))
        arguments = [good]
        output = ["4x2"]
        for name, (_, pages) in EXPECTED.items():
            arguments += [FOLDER / name, good]
            output += [*pages, "4x2"]
        result = self.run_program("--jobs", "2", *arguments)
        self.assert_result(result, 8, "".join(f"{size} default\n" for size in output).encode())
        self.assert_complains(result, *(f"zelk: {FOLDER / name}: {reason}"
                                        for name, (reason, _) in EXPECTED.items() if reason))
        silent = [name for name, (reason, _) in EXPECTED.items() if not reason]
        for line in result.stderr.decode().splitlines():
            if "have text already" not in line:
                self.assertFalse(any(f"/{name}:" in line for name in silent), line)
        self.assert_nothing_is_left()

    @unittest.skipIf("ZELK_SANITIZED" in os.environ, "sanitizers need all of the address space")
    def test_a_picture_that_outgrows_the_memory_limit_costs_only_itself(self):
        good = self.file("good.bmp", bmp(4, 2))
        # The picture takes 2.7 GB as a page.
        result = self.run_program("--max-pixels", "1000000000", good, FOLDER / BOMB, good)
        self.assert_result(result, 5, b"4x2 default\n4x2 default\n")
        self.assert_complains(result, f"{FOLDER / BOMB}: page 1: ")

    def test_a_picture_with_too_many_pixels_is_refused_by_its_header(self):
        result = self.run_program(FOLDER / BOMB)
        self.assert_result(result, 2, b"")
        self.assert_complains(result, "page 1: the picture has 30000 x 30000 pixels, "
                                      "--max-pixels allows 120000000")


if __name__ == "__main__":
    unittest.main()
