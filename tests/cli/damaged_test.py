# SPDX-License-Identifier: Apache-2.0
"""Pages of which a part is lost are told, or fail with --strict."""

import json
import unittest

from program import DATA, ProgramTest, bmp

MISSING = "part of the picture is missing (the file ends too early)"
CUT_JPEG = "part of the picture is missing or damaged (Premature end of JPEG file)"


def tiff(rows_stored, rows=40, width=40):
    """A grey page of which only the first rows are in the file, in strips of one row."""
    pixels = b"\xff" * (width * rows_stored)
    offsets = [8 + width * row if row < rows_stored else 10_000_000 for row in range(rows)]
    table = 8 + len(pixels)
    counts = table + 4 * rows
    fields = [(256, 4, 1, width), (257, 4, 1, rows), (258, 3, 1, 8), (259, 3, 1, 1), (262, 3, 1, 1),
              (273, 4, rows, table), (277, 3, 1, 1), (278, 4, 1, 1), (279, 4, rows, counts),
              (65000, 4, 1, 0)]
    number = "little"
    directory = len(fields).to_bytes(2, number)
    for tag, kind, count, value in fields:
        directory += tag.to_bytes(2, number) + kind.to_bytes(2, number)
        directory += count.to_bytes(4, number) + value.to_bytes(4, number)
    start = counts + 4 * rows
    return (b"II*\0" + start.to_bytes(4, number) + pixels
            + b"".join(offset.to_bytes(4, number) for offset in offsets)
            + width.to_bytes(4, number) * rows + directory + bytes(4))


class Damaged(ProgramTest):
    def assert_only_own_lines(self, result):
        """What decoders print does not reach the user."""
        for line in result.stderr.decode().splitlines():
            self.assertTrue(line.startswith("zelk: "), line)

    def test_a_cut_picture_is_recognised_with_a_warning(self):
        cut = self.file("cut.bmp", bmp(30, 40)[:2000])
        result = self.run_program(cut)
        self.assert_result(result, 0, b"30x40 default\n")
        self.assert_complains(result, f"{cut}: page 1: warning: {MISSING}")

    def test_a_whole_picture_has_none(self):
        whole = self.file("whole.bmp", bmp(30, 40))
        result = self.run_program("--strict", "-q", whole, self.file("whole.tif", tiff(40)))
        self.assert_result(result, 0, b"30x40 default\n40x40 default\n")
        self.assertEqual(result.stderr, b"")

    def test_a_cut_jpeg_is_told_in_every_place(self):
        report = self.folder / "report.json"
        jpeg = DATA / "hostile/truncated-third.jpg"
        result = self.run_program("--format", "json,html", "-d", self.folder, "--report", report,
                                  jpeg)
        self.assert_result(result, 0)
        self.assert_complains(result, f"page 1: warning: {CUT_JPEG}")
        self.assert_only_own_lines(result)
        output = json.loads((self.folder / "truncated-third.json").read_text())
        self.assertEqual(output["warnings"], [{"page": 1, "warning": CUT_JPEG}])
        page = json.loads(report.read_text())["documents"][0]["pages"][0]
        self.assertEqual(page["warning"], CUT_JPEG)
        self.assertIn(CUT_JPEG, (self.folder / "truncated-third.html").read_text())

    def test_rows_of_a_tiff_that_are_not_there_are_told(self):
        cut = self.file("cut.tif", tiff(20))
        result = self.run_program(cut)
        self.assert_result(result, 0, b"40x40 default\n")
        self.assert_complains(result, f"{cut}: page 1: warning: part of the picture is missing")
        self.assert_only_own_lines(result)

    def test_strict_makes_it_a_failure(self):
        report = self.folder / "report.json"
        cut = self.file("cut.bmp", bmp(30, 40)[:2000])
        whole = self.file("whole.bmp", bmp(5, 6))
        result = self.run_program("--strict", "--report", report, cut, whole)
        self.assert_result(result, 5, b"5x6 default\n")
        self.assert_complains(result, f"{cut}: page 1: {MISSING}")
        page = json.loads(report.read_text())["documents"][0]["pages"][0]
        self.assertEqual((page["state"], page["cause"]), ("failed", MISSING))
        self.assertNotIn("warning", page)

    def test_strict_counts_for_the_limit_of_failed_pages(self):
        cut = self.file("cut.bmp", bmp(30, 40)[:2000])
        result = self.run_program("--strict", "--max-failed-pages", "0", cut)
        self.assert_result(result, 6, b"")

    def test_strict_takes_no_pages_of_a_run_without_it(self):
        cut = self.file("cut.bmp", bmp(30, 40)[:2000])
        out = ("-o", self.folder / "out.txt", "--resume", cut)
        self.assert_result(self.run_program(*out), 0)
        self.assert_result(self.run_program("--strict", *out), 5)


if __name__ == "__main__":
    unittest.main()
