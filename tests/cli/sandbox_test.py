# SPDX-License-Identifier: Apache-2.0
"""What an engine that turned hostile can do to the machine: nothing but lose its page."""

import unittest

from program import DATA, ProgramTest, pdf

REFUSED = 70
SUCCEEDED = 71
WIDTHS = (36, 72, 108)


class Sandbox(ProgramTest):
    def setUp(self):
        super().setUp()
        self.document = self.file("three.pdf", pdf(*((width, 36) for width in WIDTHS)))
        self.file("secret", b"secret")

    def attempt(self, fault, *arguments):
        return self.run_program("--dpi", "72", *arguments, self.document, faults=f"{fault}@72")

    def assert_refused(self, fault):
        """With the sandbox it fails, and costs its page alone; without, it would have succeeded."""
        result = self.attempt(fault)
        self.assert_result(result, 5, b"36x36 default\n108x36 default\n")
        self.assert_complains(result, f"page 2: the engine refused the page (code {REFUSED})")
        free = self.attempt(fault, "--no-sandbox")
        self.assert_complains(free, f"page 2: the engine refused the page (code {SUCCEEDED})")
        self.assert_nothing_is_left()

    def test_no_socket_is_opened(self):
        self.assert_refused("socket")

    def test_no_program_is_run(self):
        self.assert_refused("exec")

    def test_no_file_is_read_outside(self):
        self.assert_refused("spy")

    def test_no_file_is_written_outside(self):
        result = self.attempt("litter")
        self.assert_result(result, 5)
        self.assertNotIn("litter", self.names())
        self.assert_refused("litter")
        self.assertIn("litter", self.names())

    def test_no_signal_reaches_the_supervisor(self):
        self.assert_refused("signal")

    def test_the_default_engine_needs_no_more(self):
        page = DATA / "english.tif"
        for arguments in ((), ("--no-sandbox",)):
            result = self.run_program(*arguments, "--format", "text", page, engine=None)
            self.assert_result(result, 0)
            self.assertIn(b"This is a lot of 12 point text", result.stdout)

    def test_every_kind_of_document_and_output_can_be_handled_inside(self):
        out = self.folder / "out"
        names = ["english.tif", "chinese.png"]
        result = self.run_program("-d", out, "--format", "text,json,pdf,html", self.document,
                                  *(DATA / name for name in names))
        self.assert_result(result, 0)
        self.assertEqual(len(list(out.iterdir())), 12)


if __name__ == "__main__":
    unittest.main()
