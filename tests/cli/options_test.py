# SPDX-License-Identifier: Apache-2.0
"""The options, and what is said about a wrong one."""

import re
import unittest

from program import FAKES, ProgramTest, bmp


class Options(ProgramTest):
    def assert_usage_error(self, result, *texts):
        self.assert_result(result, 1, b"")
        for text in texts:
            self.assertIn(text, result.stderr.decode())

    def test_a_file_is_asked_for(self):
        self.assert_usage_error(self.run_program(), "FILE is required", "--help")

    def test_unknown_options_are_named(self):
        self.assert_usage_error(self.run_program("--colour", "x.png"), "--colour")

    def test_unknown_formats_are_named(self):
        self.assert_usage_error(self.run_program("--format", "xml", "x.png"), "--format", "xml")

    def test_resolution_has_bounds(self):
        page = self.file("a.bmp", bmp(4, 2))
        for dpi in ("36", "2400"):
            with self.subTest(dpi):
                self.assert_result(self.run_program("--dpi", dpi, page), 0, b"4x2 default\n")
        for dpi in ("35", "2401", "-1", "0", "many", "", "99999999999"):
            with self.subTest(dpi):
                self.assert_usage_error(self.run_program(f"--dpi={dpi}", page), "--dpi")

    def test_help_is_about_every_option(self):
        result = self.run_program("--help", engine=None)
        self.assert_result(result, 0)
        options = set(re.findall(r"--[a-z-]+", result.stdout.decode()))
        self.assertLessEqual({"--engine", "--dpi", "--lang", "--list-langs", "--format", "--output",
                              "--help", "--version"}, options)
        self.assertEqual(result.stderr, b"")

    def test_version_is_about_the_libraries_in_use(self):
        result = self.run_program("--version")
        self.assert_result(result, 0)
        lines = result.stdout.decode().splitlines()
        self.assertRegex(lines[0], r"^zelk \d+\.\d+\.\d+$")
        told = dict(line.split(maxsplit=1) for line in lines[1:])
        self.assertRegex(told["program"], r"/zelk$")
        self.assertRegex(told["FreeImage"], r"^3\.\d+\.\d+")
        self.assertRegex(told["PDFium"], r"/libpdfium\w*\.so$")
        self.assertEqual(told["engine"], f"{FAKES}/describing/libQVEngine.so")
        self.assertNotIn("Tesseract", told, "this engine does not stand on it")

    def test_version_is_told_without_an_engine_too(self):
        result = self.run_program("--version", engine=self.folder)
        self.assert_result(result, 0)
        self.assertIn(f"none, {self.folder}/libQVEngine.so: No such file", result.stdout.decode())


if __name__ == "__main__":
    unittest.main()
