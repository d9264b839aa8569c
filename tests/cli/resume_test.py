# SPDX-License-Identifier: Apache-2.0
"""Runs that are stopped, killed and taken up again."""

import os
import random
import signal
import subprocess
import time
import unittest

from program import ProgramTest, bmp, pdf, workers_in

PAGES = 30


class Resumed(ProgramTest):
    def setUp(self):
        super().setUp()
        self.documents = self.folder / "in"
        self.documents.mkdir()
        (self.documents / "long.pdf").write_bytes(
            pdf(*((20 + number, 36) for number in range(PAGES))))
        for width in range(5):
            (self.documents / f"single-{width}.bmp").write_bytes(bmp(100 + width, 10))

    def arguments(self, out, *more):
        return ["--dpi", "72", "--jobs", "2", "--format", "text,json,pdf", "-d", self.folder / out,
                *more, self.documents]

    def start(self, out, *more):
        return subprocess.Popen(self.command(*self.arguments(out, *more)),
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                                env=self.environment(fake="steady"))

    def files(self, out):
        folder = self.folder / out
        return {str(path.relative_to(folder)): path.read_bytes()
                for path in folder.rglob("*") if path.is_file()}

    def undisturbed(self):
        result = self.run_program(*self.arguments("undisturbed"), fake="")
        self.assert_result(result, 0)
        return self.files("undisturbed")

    def test_killed_at_thirty_random_moments_it_gives_the_same_bytes(self):
        expected = self.undisturbed()
        self.assertEqual(len(expected), 18)
        generator = random.Random(20)
        resumed = 0
        for kill in range(30):
            process = self.start("killed", "--resume")
            time.sleep(generator.uniform(0.05, 1.2))
            victims = [process.pid]
            if kill % 3 == 0:  # a worker first, the supervisor a moment later
                victims = workers_in(self.folder / "killed")[:1] + victims
            for victim in victims:
                try:
                    os.kill(victim, signal.SIGKILL)
                except ProcessLookupError:
                    pass
                time.sleep(0.05)
            process.communicate()
            resumed += process.returncode == -signal.SIGKILL
            for name, content in self.files("killed").items():
                if not name.startswith(".zelk-journal/"):
                    self.assertEqual(content, expected[name], f"{name} after kill {kill}")
            if process.returncode == 0:  # it was faster: begin anew
                subprocess.run(["rm", "-r", self.folder / "killed"], check=True)
        self.assertGreater(resumed, 15)
        process = self.start("killed", "--resume")
        errors = process.communicate()[1]
        self.assertEqual(process.returncode, 0, errors)
        self.assertEqual(self.files("killed"), expected)
        deadline = time.monotonic() + 10  # the workers of a killed supervisor die with it
        while workers_in(self.folder / "killed") and time.monotonic() < deadline:
            time.sleep(0.1)
        self.assertEqual(workers_in(self.folder / "killed"), [])

    def interrupted(self, number=signal.SIGINT):
        process = self.start("out")
        time.sleep(1.2)
        process.send_signal(number)
        errors = process.communicate(timeout=20)[1]
        return process.returncode, errors

    def test_an_interrupted_run_ends_in_order_and_keeps_its_pages(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            code, errors = self.interrupted(number)
            self.assertEqual(code, 130, errors)
            self.assertEqual(workers_in(self.folder / "out"), [])
            journal = self.folder / "out" / ".zelk-journal"
            self.assertEqual([name for name in os.listdir(journal) if name.startswith("zelk-run")],
                             [])
            self.assertGreater(len(list(journal.rglob("page-*"))), 3)

    def test_a_resumed_run_does_only_what_is_missing(self):
        expected = self.undisturbed()
        self.interrupted()
        kept = len(list((self.folder / "out").rglob("page-*")))
        result = self.run_program(*self.arguments("out", "--resume", "--verbose"), fake="")
        self.assert_result(result, 0)
        recognised = result.stderr.count(b"chatter: recognising")
        self.assertEqual(self.files("out"), expected)
        delivered = sum(1 for name in expected if name.startswith("single") and
                        name.endswith(".txt"))
        self.assertLessEqual(recognised, PAGES + 5 - kept)
        self.assertGreaterEqual(recognised, PAGES + 5 - kept - delivered)

    def test_a_finished_run_leaves_no_journal(self):
        self.undisturbed()
        self.assertNotIn(".zelk-journal", os.listdir(self.folder / "undisturbed"))

    def test_without_resume_the_journal_is_not_believed(self):
        self.interrupted()
        result = self.run_program(*self.arguments("out", "--verbose"), fake="")
        self.assert_result(result, 0)
        self.assertEqual(result.stderr.count(b"chatter: recognising"), PAGES + 5)

    def test_other_settings_and_other_engines_begin_anew(self):
        self.interrupted()
        result = self.run_program(*self.arguments("out", "--resume", "--verbose", "--lang", "xyz"),
                                  fake="")
        self.assert_result(result, 0)
        self.assertEqual(result.stderr.count(b"chatter: recognising"), PAGES + 5)

    def test_damaged_records_are_made_again(self):
        expected = self.undisturbed()
        self.interrupted()
        records = sorted((self.folder / "out").rglob("page-*"))
        records[0].write_bytes(records[0].read_bytes()[:-7])
        records[1].write_bytes(b"")
        damaged = bytearray(records[2].read_bytes())
        damaged[len(damaged) // 2] ^= 1
        records[2].write_bytes(bytes(damaged))
        result = self.run_program(*self.arguments("out", "--resume"), fake="")
        self.assert_result(result, 0)
        self.assertEqual(self.files("out"), expected)

    def test_pipes_in_the_journal_hang_nothing(self):
        expected = self.undisturbed()
        self.interrupted()
        journal = self.folder / "out" / ".zelk-journal"
        records = sorted(journal.rglob("page-*"))
        records[0].unlink()
        for pipe in [records[0], *(folder / name for folder in journal.iterdir()
                                   for name in ("delivered.new", "page-000030.new"))]:
            os.mkfifo(pipe)
        result = self.run_program(*self.arguments("out", "--resume"), fake="", timeout=60)
        self.assert_result(result, 0)
        self.assertEqual(self.files("out"), expected)


if __name__ == "__main__":
    unittest.main()
