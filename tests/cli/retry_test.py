# SPDX-License-Identifier: Apache-2.0
"""What a run with --resume takes up again: pages that failed, under wider limits, and nothing that
is done."""

import json
import os
import signal
import subprocess
import time
import unittest

from program import ProgramTest, bmp, pdf

WIDTHS = (36, 72, 108, 144)


class Retried(ProgramTest):
    def setUp(self):
        super().setUp()
        self.document = self.file("four.pdf", pdf(*((width, 36) for width in WIDTHS)))
        self.out = self.folder / "out"

    def recognize(self, *more, faults="", out=None, formats="text", **options):
        return self.run_program("--dpi", "72", "--jobs", "2", "--verbose", "--format", formats,
                                "-d", out or self.out, *more, self.document, faults=faults,
                                **options)

    def assert_recognised(self, result, count):
        self.assertEqual(result.stderr.count(b"chatter: recognising"), count, result.stderr)

    def text(self):
        return (self.out / "four.txt").read_text()

    def test_a_page_that_took_too_long_is_tried_again_with_more_time(self):
        result = self.recognize("--resume", "--page-timeout", "1", faults="hang@72")
        self.assertEqual(result.returncode, 5, result.stderr)
        result = self.recognize("--resume", "--page-timeout", "60")
        self.assert_result(result, 0)
        self.assert_recognised(result, 1)
        self.assertEqual(self.text(), "".join(f"{width}x36 default\n" for width in WIDTHS))
        self.assertEqual(os.listdir(self.out), ["four.txt"])

    @unittest.skipIf(os.environ.get("ZELK_SANITIZED"), "sanitizers need all of the address space")
    def test_a_page_that_took_too_much_memory_is_tried_again_with_more(self):
        result = self.recognize("--resume", "--memory-limit", "400", faults="allocate@144")
        self.assertEqual(result.returncode, 5, result.stderr)
        result = self.recognize("--resume", "--memory-limit", "1000")
        self.assert_result(result, 0)
        self.assert_recognised(result, 1)

    def test_a_page_that_fails_for_ever_is_tried_by_each_run(self):
        for run in range(3):
            result = self.recognize("--resume", faults="refuse@72")
            self.assertEqual(result.returncode, 5, result.stderr)
            self.assert_recognised(result, 2 if run else 5)

    def test_failures_of_an_interrupted_run_are_tried_again(self):
        name = self.file("slow.pdf", pdf(*((200 + width, 36) for width in range(40))))
        process = subprocess.Popen(
            self.command("--dpi", "72", "--jobs", "2", "-d", self.out, self.document, name),
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
            env=self.environment(fake="steady", faults="refuse@72"))
        deadline = time.monotonic() + 60
        while not (self.out / "four.txt").exists() and time.monotonic() < deadline:
            time.sleep(0.02)
        process.send_signal(signal.SIGINT)
        errors = process.communicate()[1]
        self.assertEqual(process.returncode, 130, errors)
        self.assertEqual(self.text().count("\n"), 3)
        self.assert_result(self.recognize("--resume", name), 0)
        self.assertEqual(self.text(), "".join(f"{width}x36 default\n" for width in WIDTHS))

    def failed_beside_done(self):
        """Leaves a journal that holds three of four pages."""
        result = self.recognize("--resume", faults="refuse@72")
        self.assertEqual(result.returncode, 5, result.stderr)

    def test_what_does_not_change_results_lets_pages_stay(self):
        for more in (["--memory-limit", "1000"], ["--page-timeout", "50"], ["--recycle", "2"],
                     ["--jobs", "1"], ["--no-sandbox"], ["--pages", "1-"],
                     ["--max-failed-pages", "3"], ["--format", "text,json"]):
            with self.subTest(more):
                subprocess.run(["rm", "-rf", self.out], check=True)
                self.failed_beside_done()
                result = self.run_program("--dpi", "72", "--verbose", *more, "--resume",
                                          "-d", f"{self.out}/.", self.document)
                self.assert_result(result, 0)
                self.assert_recognised(result, 1)

    def test_what_changes_results_begins_anew(self):
        for more in (["--dpi", "73"], ["--max-pixels", "100000000"], ["--skip-text"],
                     ["--lang", "other"]):
            with self.subTest(more):
                subprocess.run(["rm", "-rf", self.out], check=True)
                self.failed_beside_done()
                dpi = [] if "--dpi" in more else ["--dpi", "72"]
                result = self.run_program(*dpi, "--verbose", *more, "--resume", "-d", self.out,
                                          self.document)
                self.assert_result(result, 0)
                self.assert_recognised(result, 4)

    def test_pictures_are_made_where_the_outputs_now_need_them(self):
        self.failed_beside_done()
        result = self.recognize("--resume", formats="pdf")
        self.assert_result(result, 0)
        self.assert_recognised(result, 4)

    def test_a_folder_that_was_moved_is_taken_up(self):
        self.failed_beside_done()
        moved = self.folder / "moved"
        self.out.rename(moved)
        result = self.recognize("--resume", out=moved)
        self.assert_result(result, 0)
        self.assert_recognised(result, 1)

    def test_copies_of_one_document_have_pages_of_their_own(self):
        copy = self.file("copy.pdf", self.document.read_bytes())
        result = self.recognize("--resume", copy, faults="refuse@72")
        self.assertEqual(result.returncode, 5, result.stderr)
        result = self.recognize("--resume", copy)
        self.assert_result(result, 0)
        self.assert_recognised(result, 2)

    def test_an_engine_that_was_copied_is_the_same(self):
        self.failed_beside_done()
        engine = self.folder / "engine"
        subprocess.run(["cp", "-r", self.ENGINE, engine], check=True)
        result = self.recognize("--resume", engine=engine)
        self.assert_result(result, 0)
        self.assert_recognised(result, 1)

    def test_an_engine_may_know_languages_of_its_own(self):
        # The default engine's data of such a language is missing, which is none of this engine's.
        result = self.recognize("--resume", "--lang", "other")
        self.assert_result(result, 0)

    def test_without_resume_a_delivered_document_leaves_no_journal(self):
        result = self.recognize(faults="refuse@72")
        self.assertEqual(result.returncode, 5)
        self.assertEqual(os.listdir(self.out), ["four.txt"])

    def test_the_report_tells_which_pages_were_kept(self):
        self.failed_beside_done()
        report = self.folder / "report.json"
        self.assert_result(self.recognize("--resume", "--report", report), 0)
        pages = json.loads(report.read_text())["documents"][0]["pages"]
        self.assertEqual([page.get("resumed", False) for page in pages],
                         [True, False, True, True])

    def test_a_list_s_pages_are_kept_as_well(self):
        pictures = [self.file(f"{width}.bmp", bmp(width, 10)) for width in (20, 21, 22)]
        arguments = ["--image-list", "--verbose", "-o", self.folder / "list.txt", "--resume",
                     *pictures]
        result = self.run_program(*arguments, faults="refuse@21")
        self.assertEqual(result.returncode, 5, result.stderr)
        result = self.run_program(*arguments)
        self.assert_result(result, 0)
        self.assert_recognised(result, 1)


if __name__ == "__main__":
    unittest.main()
