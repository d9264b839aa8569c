# SPDX-License-Identifier: Apache-2.0
"""Several documents in one file: all of them, in order, or the file as it was."""

import json
import os
import signal
import subprocess
import time
import unittest

from program import ProgramTest, bmp, pdf

WIDTHS = range(20, 50)


def line(width):
    return f"{width}x9 default\n"


class OneFile(ProgramTest):
    def setUp(self):
        super().setUp()
        self.pages = [self.file(f"{width}.bmp", bmp(width, 9)) for width in WIDTHS]
        self.out = self.folder / "all.txt"
        self.whole = "".join(map(line, WIDTHS))

    def test_text_holds_every_document_in_the_order_given(self):
        long = self.file("long.pdf", pdf(*((60 + number, 9) for number in range(6))))
        result = self.run_program("--dpi", "72", "--jobs", "2", "-o", self.out, long, *self.pages,
                                  fake="steady")
        self.assert_result(result, 0, b"")
        first = "".join(line(60 + number) for number in range(6))
        self.assertEqual(self.out.read_text(encoding="utf-8"), first + self.whole)
        self.assertEqual([name for name in self.names() if name.startswith(".")], [])

    def test_json_is_one_line_for_each_document(self):
        for more in (["--format", "json", "-o", "all.json"], ["-o", "all.json"],
                     ["--format", "text,json", "-o", "all"]):
            with self.subTest(more):
                result = self.run_program(*more, *self.pages, cwd=self.folder)
                self.assert_result(result, 0, b"")
                lines = (self.folder / "all.json").read_text(encoding="utf-8").splitlines()
                self.assertEqual([json.loads(text)["file"] for text in lines],
                                 [str(page) for page in self.pages])
                (self.folder / "all.json").unlink()
        self.assertEqual(self.out.read_text(encoding="utf-8"), self.whole)

    def test_a_folder_and_a_list_are_several_documents_too(self):
        self.file("list", b"".join(os.fsencode(page) + b"\n" for page in self.pages))
        for given in (["@list"], ["."]):
            with self.subTest(given):
                self.assert_result(self.run_program("-o", "all.txt", *given, cwd=self.folder), 0)
                self.assertEqual(self.out.read_text(encoding="utf-8"), self.whole)

    def test_failed_documents_are_missing_and_named(self):
        self.file("25.bmp", b"BM is not enough")
        result = self.run_program("--max-failed-pages", "0", "-o", self.out,
                                  self.folder / "none.bmp", *self.pages, faults="refuse@30")
        self.assertIn(result.returncode, (2, 6))
        self.assert_complains(result, "none.bmp: No such file", "25.bmp: ", "30.bmp: ")
        expected = "".join(line(width) for width in WIDTHS if width not in (25, 30))
        self.assertEqual(self.out.read_text(encoding="utf-8"), expected)

    def test_without_any_result_the_old_file_stays(self):
        self.file("all.txt", b"old")
        result = self.run_program("--max-failed-pages", "0", "-o", self.out, *self.pages,
                                  fake="failing")
        self.assert_result(result, 6)
        self.assertEqual(self.out.read_bytes(), b"old")

    def stopped(self, number):
        """A run that is stopped when several documents are done."""
        command = self.command("--jobs", "2", "--verbose", "-o", self.out, *self.pages)
        with subprocess.Popen(command, stderr=subprocess.PIPE,
                              env=self.environment(fake="steady")) as process:
            seen = 0
            while seen < 5:
                seen += b": delivered, " in process.stderr.readline()
            process.send_signal(number)
            process.stderr.read()
        return process.returncode

    def test_stopped_run_leaves_the_old_file_and_is_taken_up_again(self):
        for number, code in ((signal.SIGINT, 130), (signal.SIGKILL, -signal.SIGKILL)):
            with self.subTest(number):
                self.file("all.txt", b"old")
                self.assertEqual(self.stopped(number), code)
                self.assertEqual(self.out.read_bytes(), b"old")
                self.assertEqual([name for name in self.names() if name.startswith(".")],
                                 [".zelk-journal"])
                result = self.run_program("--resume", "--verbose", "-o", self.out, *self.pages)
                self.assert_result(result, 0, b"")
                self.assertEqual(self.out.read_text(encoding="utf-8"), self.whole)
                done = len(WIDTHS) - result.stderr.count(b"chatter: recognising")
                self.assertGreaterEqual(done, 5)
                self.assertNotIn(".zelk-journal", self.names())

    def test_documents_that_failed_are_tried_again_and_join_the_others(self):
        arguments = ["--max-failed-pages", "0", "--resume", "--verbose", "-o", self.out,
                     *self.pages]
        self.assert_result(self.run_program(*arguments, faults="refuse@30"), 6)
        missing = self.whole.replace(line(30), "")
        self.assertEqual(self.out.read_text(encoding="utf-8"), missing)
        (self.folder / "30.bmp").write_bytes(bmp(31, 9))  # mended
        result = self.run_program(*arguments, faults="refuse@30")
        self.assert_result(result, 0)
        self.assertEqual(self.out.read_text(encoding="utf-8"),
                         self.whole.replace(line(30), line(31)))
        self.assertEqual(result.stderr.count(b"chatter: recognising"), 1)

    def test_a_full_disk_leaves_the_old_file(self):
        self.file("all.txt", b"old")
        wrapper = ["sh", "-c", 'ulimit -f 1; trap "" XFSZ; exec "$@"', "sh"]
        pages = [self.file(f"w{number}.bmp", bmp(20, 9)) for number in range(60)]
        result = self.run_program("-o", self.out, *self.pages, *pages, wrapper=wrapper)
        self.assertEqual(result.returncode, 4, result.stderr)
        self.assert_complains(result, "cannot write the output: ")
        self.assertEqual(self.out.read_bytes(), b"old")

    def test_pictures_that_are_one_document_are_as_before(self):
        result = self.run_program("--image-list", "-o", self.out, *self.pages)
        self.assert_result(result, 0, b"")
        self.assertEqual(self.out.read_text(encoding="utf-8"), self.whole)

    def test_formats_that_hold_one_document_need_a_folder(self):
        for arguments in (["-o", "all.pdf"], ["--format", "html", "-o", "all"],
                          ["--format", "text,pdf", "-o", "all"], ["--pdf", "all.pdf"]):
            for given in (self.pages, [self.folder]):
                with self.subTest(arguments, given=len(given)):
                    result = self.run_program(*arguments, *given, cwd=self.folder)
                    self.assert_result(result, 1, b"")
                    self.assert_complains(result, "--directory DIR")
                    self.assertFalse([name for name in self.names() if name.startswith("all")])

    def test_more_documents_than_a_process_may_open_files(self):
        wrapper = ["sh", "-c", 'ulimit -n 256; exec "$@"', "sh"]
        pages = [self.file(f"m{number:03}.bmp", bmp(20, 9)) for number in range(300)]
        result = self.run_program("-o", self.out, *pages, wrapper=wrapper)
        self.assert_result(result, 0, b"")
        self.assertEqual(self.out.read_text(encoding="utf-8"), 300 * line(20))

    def test_a_pipe_gets_all_documents_too(self):
        os.mkfifo(self.out)
        with subprocess.Popen(["cat", self.out], stdout=subprocess.PIPE) as reader:
            self.addCleanup(reader.kill)
            time.sleep(0.05)
            self.assert_result(self.run_program("-o", self.out, *self.pages), 0, b"")
            self.assertEqual(reader.stdout.read().decode(), self.whole)


class PageBreaks(ProgramTest):
    def test_pieces_between_form_feeds_are_the_pages(self):
        long = self.file("long.pdf", pdf(*((60 + number, 9) for number in range(4))))
        one = self.file("one.bmp", bmp(20, 9))
        whole = [line(60), line(61), "", line(63)]
        for arguments in ([], ["-o", self.folder / "x.txt"]):
            with self.subTest(arguments):
                result = self.run_program("--page-break", "--dpi", "72", *arguments, long, one,
                                          faults="refuse@62")
                self.assert_result(result, 5)
                text = result.stdout.decode()
                if arguments:
                    text = arguments[1].read_text(encoding="utf-8")
                self.assertEqual(text.split("\f"), [*whole, line(20)])
        result = self.run_program("--page-break", "--dpi", "72", "--pages", "2,4", long)
        self.assertEqual(result.stdout.decode().split("\f"), [line(61), line(63)])
        result = self.run_program("--dpi", "72", long)
        self.assertNotIn(b"\f", result.stdout)

    def test_it_is_for_texts(self):
        self.file("one.bmp", bmp(20, 9))
        result = self.run_program("--page-break", "--format", "json", "one.bmp", cwd=self.folder)
        self.assert_result(result, 1, b"")
        self.assert_complains(result, "--page-break")


if __name__ == "__main__":
    unittest.main()
