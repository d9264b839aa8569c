# SPDX-License-Identifier: Apache-2.0
"""What a person at a terminal sees."""

import os
import pty
import subprocess
import unittest

from program import ProgramTest, pdf


class Terminal(ProgramTest):
    def shown(self, *arguments):
        """All that a terminal shows to which standard output and standard error go."""
        ours, theirs = pty.openpty()
        document = self.file("ten.pdf", pdf(*((36 + number, 36) for number in range(10))))
        with subprocess.Popen(self.command("--dpi", "72", "--jobs", "1", *arguments, document),
                              stdout=theirs, stderr=theirs, stdin=subprocess.DEVNULL,
                              env={**self.environment(fake="steady"), "TERM": "xterm"}) as process:
            os.close(theirs)
            text = b""
            while True:
                try:
                    text += os.read(ours, 65536)
                except OSError:  # the other side is closed
                    break
            os.close(ours)
            self.assertEqual(process.wait(), 0, text)
        return text.decode()

    def test_a_bar_moves_while_files_are_written(self):
        shown = self.shown("-d", self.folder / "out")
        self.assertIn("3/10 pages", shown)
        self.assertIn("9/10 pages", shown)
        self.assertIn("ten.pdf", shown)
        self.assertIn("zelk: 1 document, 10 pages", shown)

    def test_no_bar_is_drawn_into_results(self):
        shown = self.shown()
        self.assertNotIn("/10 pages", shown)
        self.assertEqual([line for line in shown.splitlines() if line.endswith("default")],
                         [f"{36 + number}x36 default" for number in range(10)])


if __name__ == "__main__":
    unittest.main()
