# SPDX-License-Identifier: Apache-2.0
"""Damaged and malicious files: the program names what it cannot read, delivers what it can and goes
on to the next file."""

import os
import unittest

from program import DATA, ProgramTest, bmp

FOLDER = DATA / "hostile"

NO_PICTURE = "the content is not a picture that can be decoded"
NO_PDF = "the content is not a PDF"
CLOSED = "the PDF is damaged, protected by a password or has no pages"
LOST = "the page could not be read"
EMPTY = "the file is empty"

# What is said about each file, and the sizes in pixels of the pages that are delivered. A decoder
# that recovers more, or less, of these is at liberty to do so: then this table follows it.
EXPECTED = {
    "bad-height.bmp": (NO_PICTURE, []),
    "declares-100000x100000.tif": (LOST, []),
    "empty.pdf": (EMPTY, []),
    "empty.png": (EMPTY, []),
    "form-draws-itself.pdf": ("", ["1700x2200"]),
    "fuzz-height-2147483648.pdf": (LOST, []),
    "ifd-points-to-itself.tif": ("", ["16x16"]),
    "mediabox-200000pt.pdf": (LOST, []),
    "missing-page-object.pdf": ("1 of 3 pages could not be read", ["1700x2200", "1700x2200"]),
    "operator-list-cycle.pdf": ("", ["1700x2200"]),
    "page-tree-loop.pdf": ("", ["1700x2200", "1700x2200"]),
    "pdf-content.png": (NO_PICTURE, []),
    "pdfium-cropbox-no-overlap.pdf": (LOST, []),
    "pdfium-encrypted-r3.pdf": (CLOSED, []),
    "pillow-crash-0e16.tif": (LOST, []),
    "pillow-ifd-loop.tiff": ("", ["10x10"]),
    "pillow-truncated.png": (NO_PICTURE, []),
    "plaintext.jpg": (NO_PICTURE, []),
    "plaintext.pdf": (NO_PDF, []),
    "png-content.jpg": ("", ["2339x1654"]),
    "png-content.pdf": (NO_PDF, []),
    "qpdf-bad1.pdf": (NO_PDF, []),
    "qpdf-bad34.pdf": (LOST, []),
    "truncated-40percent.tif": ("", ["2480x1417"]),
    "truncated-70percent.pdf": (CLOSED, []),
    "truncated-half.png": (NO_PICTURE, []),
    "truncated-third.jpg": ("", ["2480x3508"]),
    "user-password-aes256.pdf": (CLOSED, []),
    "zero-pages.pdf": (CLOSED, []),
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
        result = self.run_program(*arguments)
        self.assert_result(result, 2, "".join(f"{size} default\n" for size in output).encode())
        said = [line for line in result.stderr.decode().splitlines() if line.startswith("zelk: ")]
        self.assertEqual(said, [f"zelk: {FOLDER / name}: {reason}"
                                for name, (reason, _) in EXPECTED.items() if reason])

    @unittest.skipIf("ZELK_SANITIZED" in os.environ, "sanitizers reserve more than any limit")
    def test_a_picture_that_outgrows_memory_does_not_end_the_program(self):
        good = self.file("good.bmp", bmp(4, 2))
        # The picture takes 2.7 GB as a page; the limit is for the whole address space.
        wrapper = ["sh", "-c", 'ulimit -v 2500000; exec "$@"', "sh"]
        result = self.run_program(good, FOLDER / BOMB, good, wrapper=wrapper)
        self.assert_result(result, 2, b"4x2 default\n4x2 default\n")
        self.assert_complains(result, f"{FOLDER / BOMB}: ")


if __name__ == "__main__":
    unittest.main()
