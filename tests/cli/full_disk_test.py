# SPDX-License-Identifier: Apache-2.0
"""What cannot be written ends with exit code 4 whatever the moment, and what the system refuses
otherwise does not. A limit of file sizes stands for a full disk."""

import os
import unittest

from program import FAKES, ProgramTest, bmp, pdf


class FullDisk(ProgramTest):
    def limited(self, blocks, *arguments):
        """No file may grow beyond so many blocks of 512 bytes."""
        wrapper = ["sh", "-c", f'ulimit -f {blocks}; trap "" XFSZ; exec "$@"', "sh"]
        # The sandbox would set a limit of its own.
        return self.run_program("-q", "--dpi", "72", "--no-sandbox", *arguments, wrapper=wrapper)

    def assert_not_written(self, result, *places):
        self.assertEqual(result.returncode, 4, result.stderr)
        told = os.fsdecode(result.stderr)
        self.assertRegex(told, r"cannot write .*: File too large")
        for place in places:
            self.assertIn(str(place), told)

    def test_journal(self):
        document = self.file("page.pdf", pdf((1000, 1000)))
        self.assert_not_written(self.limited(4, "--format", "pdf", "-d", self.folder / "out",
                                             document), f"{self.folder}/out/.zelk-journal")

    def test_scratch_folder(self):
        document = self.file("page.bmp", bmp(1000, 1000))
        # The copy of a document on another file system, or what is made of it.
        self.assert_not_written(self.limited(4, "--format", "pdf", document), self.scratch)

    def test_standard_input_s_copy(self):
        document = self.file("page.bmp", bmp(1000, 1000))
        with open(document, "rb") as stream:
            wrapper = ["sh", "-c", 'ulimit -f 4; trap "" XFSZ; exec "$@"', "sh"]
            result = self.run_program("-q", "-", stdin=stream, wrapper=wrapper)
        self.assert_not_written(result, self.scratch)

    def test_output_while_it_is_assembled(self):
        document = self.file("many.pdf", pdf(*((100 + n, 36) for n in range(300))))
        for formats in ("text", "json"):
            with self.subTest(formats):
                self.assert_not_written(self.limited(8, "--format", formats, "-o",
                                                     self.folder / "out", document))

    def test_searchable_pdf_while_it_is_assembled(self):
        document = self.file("many.pdf", pdf(*((100 + n, 36) for n in range(20))))
        self.assert_not_written(self.limited(16, "--format", "pdf", "-o", self.folder / "out.pdf",
                                             document))

    def test_nothing_is_lost_and_the_rest_is_done_later(self):
        document = self.file("many.pdf", pdf(*((100 + n, 36) for n in range(300))))
        arguments = ["--format", "text", "-o", self.folder / "out", "--resume", document]
        self.assert_not_written(self.limited(8, *arguments))
        result = self.run_program("--dpi", "72", "--verbose", *arguments)
        self.assert_result(result, 0)
        self.assertEqual(result.stderr.count(b"chatter: recognising"), 0)
        self.assertEqual((self.folder / "out").read_text().count("\n"), 300)


@unittest.skipIf("ZELK_SANITIZED" in os.environ, "sanitizers want to be the first library")
class RefusedBySystem(ProgramTest):
    def test_a_process_that_cannot_be_started_is_no_output_that_cannot_be_written(self):
        page = self.file("page.bmp", bmp(4, 2))
        result = self.run_program(page, wrapper=["env", f"LD_PRELOAD={FAKES}/libno_fork.so"])
        self.assert_result(result, 3, b"")
        self.assert_complains(result, "cannot start a worker process: Resource temporarily "
                                      "unavailable; ulimit -a")
        self.assertNotIn(b"output", result.stderr)
        self.assertEqual(os.listdir(self.scratch), [])


if __name__ == "__main__":
    unittest.main()
