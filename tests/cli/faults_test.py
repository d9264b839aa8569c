# SPDX-License-Identifier: Apache-2.0
"""What a fault on one page costs: that page, and nothing else."""

import json
import os
import subprocess
import time
import unittest

from program import CRASHED, ProgramTest, bmp, pdf, processes_of, wait_until_none

WIDTHS = (36, 72, 108, 144, 180, 216)


class FaultyPages(ProgramTest):
    def setUp(self):
        super().setUp()
        self.document = self.file("six.pdf", pdf(*((width, 36) for width in WIDTHS)))

    def recognize(self, faults, *arguments, jobs="2", **options):
        return self.run_program("--dpi", "72", "--jobs", jobs, *arguments, self.document,
                                faults=faults, **options)

    def texts_without(self, *failed):
        return "".join(f"{width}x36 default\n" for width in WIDTHS if width not in failed).encode()

    def assert_only_fails(self, result, cause, *failed):
        self.assert_result(result, 5 if failed else 0, self.texts_without(*failed))
        for width in failed:
            self.assert_complains(result, f"page {WIDTHS.index(width) + 1}: {cause}")
        self.assert_nothing_is_left()

    def test_a_crash_costs_its_page(self):
        self.assert_only_fails(self.recognize("crash@72"), CRASHED, 72)

    def test_a_crash_on_every_page_costs_all_of_them(self):
        faults = ",".join(f"crash@{width}" for width in WIDTHS)
        self.assert_only_fails(self.recognize(faults), CRASHED, *WIDTHS)

    def test_a_page_that_hangs_is_given_up_after_the_timeout(self):
        result = self.recognize("hang@108", "--page-timeout", "2")
        self.assert_only_fails(result, "no result within 2 seconds (--page-timeout)", 108)

    def test_a_page_gets_its_time_once_whatever_is_tried(self):
        target = self.folder / "out.pdf"
        result = self.recognize("hang@108", "--page-timeout", "2", "--verbose", "--format", "pdf",
                                "-o", target)
        self.assertEqual(result.returncode, 5, result.stderr)
        # Once for each page, and pages behind the one that hangs are not begun before it.
        self.assertEqual(result.stderr.count(b"chatter: recognising"), len(WIDTHS))
        listed = subprocess.run(["pdfimages", "-list", target], check=True, capture_output=True)
        self.assertEqual(len(listed.stdout.splitlines()) - 2, len(WIDTHS))

    @unittest.skipIf(os.environ.get("ZELK_SANITIZED"), "sanitizers need all of the address space")
    def test_a_page_without_end_to_its_hunger_is_stopped_at_the_memory_limit(self):
        result = self.recognize("allocate@144", "--memory-limit", "400")
        self.assert_only_fails(result, "the worker crashed (SIGSEGV), short of memory: "
                                       "--memory-limit is 400", 144)

    def test_an_engine_that_ends_the_process_with_success_has_failed(self):
        self.assert_only_fails(self.recognize("exit@36"),
                               "the worker ended by itself (exit code 0)", 36)

    def test_an_engine_that_refuses_a_page_is_quoted(self):
        self.assert_only_fails(self.recognize("refuse@216"),
                               "the engine refused the page (code 5)", 216)

    def test_several_faults_in_one_document_are_told_apart(self):
        result = self.recognize("crash@36,refuse@108,exit@216")
        self.assert_result(result, 5, self.texts_without(36, 108, 216))
        self.assert_complains(result, f"page 1: {CRASHED}", "page 3: the engine refused",
                              "page 6: the worker ended")

    def test_an_engine_that_prints_does_no_harm(self):
        self.assert_only_fails(self.recognize("print@36,print@144"), "")

    def test_what_an_engine_prints_does_not_command_a_terminal(self):
        result = self.recognize("paint@36,paint@144", "--verbose")
        self.assert_only_fails(result, "")
        self.assertNotIn(b"\x1b", result.stderr)
        self.assertEqual(result.stderr.count(b"\\x1B[2J\\x07Gr\xc3\xb6\xc3\x9fe\n"), 2)

    def test_an_engine_that_writes_to_every_descriptor_does_no_harm(self):
        self.assert_only_fails(self.recognize("scribble@36,scribble@180"), "")

    def test_an_engine_that_closes_every_descriptor_costs_its_page(self):
        result = self.recognize("close@72")
        self.assert_only_fails(result, "the worker", 72)

    def test_absurd_counts_are_none(self):
        self.assert_only_fails(self.recognize("absurd@36,absurd@216"), "")

    def test_a_fault_that_does_not_come_again_costs_nothing(self):
        # In the sandbox the engine could not leave the mark by which it knows the second time.
        self.assert_only_fails(self.recognize("once@108", "--no-sandbox"), "")
        self.assertIn("crashed", self.names())

    def test_json_without_an_end_costs_that_page_its_json(self):
        result = self.recognize("endless@72", "--format", "json")
        pages = json.loads(result.stdout)["pages"]
        self.assertIsNone(pages[1])
        self.assertEqual([page["width"] for page in pages if page], [36, 108, 144, 180, 216])

    def test_a_failed_page_is_null_with_its_cause(self):
        result = self.recognize("crash@72", "--format", "json")
        self.assertEqual(result.returncode, 5)
        document = json.loads(result.stdout)
        self.assertEqual(len(document["pages"]), 6)
        self.assertIsNone(document["pages"][1])
        self.assertEqual(document["failed_pages"],
                         [{"page": 2, "cause": CRASHED}])

    def test_a_failed_page_stands_in_the_pdf_as_its_picture(self):
        target = self.folder / "out.pdf"
        result = self.recognize("crash@72,refuse@144", "--format", "pdf", "-o", target)
        self.assertEqual(result.returncode, 5, result.stderr)
        listed = subprocess.run(["pdfimages", "-list", target], check=True, capture_output=True)
        rows = [line.split() for line in listed.stdout.decode().splitlines()[2:]]
        self.assertEqual([(int(row[0]), int(row[3])) for row in rows],
                         list(enumerate(WIDTHS, 1)))

    def test_too_many_failed_pages_fail_the_document(self):
        target = self.folder / "out.txt"
        for limit, code in (("1", 6), ("2", 5), ("33%", 6), ("34%", 5)):
            with self.subTest(limit=limit):
                target.unlink(missing_ok=True)
                result = self.recognize("crash@72,refuse@144", "-o", target,
                                        "--max-failed-pages", limit)
                self.assertEqual(result.returncode, code, result.stderr)
                self.assertEqual(target.exists(), code == 5)

    def test_a_worker_is_replaced_after_the_pages_of_recycle(self):
        result = self.recognize("", "--verbose", "--recycle", "1", jobs="1")
        self.assert_result(result, 0, self.texts_without())
        self.assertEqual(result.stderr.count(b"chatter: started"), 6)

    def test_a_worker_that_is_killed_costs_nothing(self):
        process = subprocess.Popen(
            self.command("--dpi", "72", "--jobs", "1", self.document), stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, env=self.environment(fake="steady"))
        subprocess.run(["sleep", "0.4"], check=True)
        subprocess.run(["pkill", "-KILL", "-P", str(process.pid)], check=True)
        output, errors = process.communicate()
        self.assertEqual((process.returncode, output), (0, self.texts_without()), errors)


class EnginesThatStartProcesses(ProgramTest):
    def setUp(self):
        super().setUp()
        self.document = self.file("three.pdf", pdf(*((width, 36) for width in WIDTHS[:3])))

    def arguments(self, *more):
        return ["--dpi", "72", "--jobs", "1", *more, self.document]

    def test_these_end_with_the_run(self):
        for fault in ("child", "daemon"):
            for more in ((), ("--no-sandbox",)):
                with self.subTest(fault, more=more):
                    result = self.run_program(*self.arguments(*more), faults=f"{fault}@36")
                    self.assert_result(result, 0)
                    self.assertEqual(wait_until_none(lambda: processes_of(self.scratch)), [])

    def test_these_end_and_the_folder_goes_when_the_supervisor_is_killed(self):
        for fault in ("child", "daemon"):
            with self.subTest(fault):
                process = subprocess.Popen(
                    self.command(*self.arguments("--no-sandbox")), stdout=subprocess.DEVNULL,
                    stderr=subprocess.DEVNULL,
                    env=self.environment(faults=f"{fault}@36,hang@72"))
                deadline = time.monotonic() + 20
                while len(processes_of(self.scratch)) < 2 and time.monotonic() < deadline:
                    time.sleep(0.05)
                self.assertEqual(len(processes_of(self.scratch)), 2)
                process.kill()
                process.wait()
                self.assertEqual(wait_until_none(lambda: processes_of(self.scratch)), [])
                self.assertEqual(wait_until_none(lambda: os.listdir(self.scratch)), [])

    def test_what_was_left_with_nobody_to_remove_it_goes_with_the_next_run(self):
        left = self.scratch / "zelk-run-killed" / "worker-1"
        left.mkdir(parents=True)
        (left / "page-000001").write_bytes(b"record")
        self.assert_result(self.run_program(*self.arguments()), 0)
        self.assertEqual(os.listdir(self.scratch), [])


class FaultsAmongDocuments(ProgramTest):
    def test_the_other_documents_are_delivered(self):
        names = [self.file(f"{width}.bmp", bmp(width, 10)) for width in range(10, 30)]
        result = self.run_program("--jobs", "2", "--page-timeout", "2", *names,
                                  faults="crash@13,hang@17,exit@29")
        self.assertEqual(result.returncode, 5)
        expected = "".join(f"{width}x10 default\n" for width in range(10, 30)
                           if width not in (13, 17, 29))
        self.assertEqual(result.stdout.decode(), expected)


class SpoiltProcesses(ProgramTest):
    """An engine that spoils its process on the third page of the first document."""

    KINDS = ("descriptors", "folder", "umask", "locale", "environment", "limits")

    def test_nothing_but_that_page_can_suffer(self):
        long = self.file("long.pdf", pdf(*((width, 36) for width in WIDTHS)))
        others = [self.file(f"{width}.bmp", bmp(width, 10)) for width in (21, 22, 23)]
        arguments = ["--dpi", "72", "--jobs", "1", long, *others]
        sound = self.run_program(*arguments, fake="telling")
        self.assert_result(sound, 0)
        lines = sound.stdout.splitlines()
        self.assertEqual(len(lines), 9)
        for kind in self.KINDS:
            for more in ((), ("--no-sandbox",)):
                with self.subTest(kind, more=more):
                    result = self.run_program(*more, *arguments, fake="telling",
                                              faults=f"{kind}@{WIDTHS[2]}")
                    if result.returncode == 5:
                        self.assert_complains(result, "page 3: ")
                        self.assertEqual(result.stdout.splitlines(), lines[:2] + lines[3:])
                    else:
                        self.assert_result(result, 0, sound.stdout)


class EngineThatCannotStart(ProgramTest):
    def test_an_engine_that_crashes_at_its_start_is_no_engine(self):
        page = self.file("a.bmp", bmp(4, 2))
        result = self.run_program(page, fake="crash-at-start")
        self.assert_result(result, 3, b"")
        self.assert_complains(result, f"libQVEngine.so did not start: {CRASHED}")
        self.assert_nothing_is_left()

    def test_an_engine_that_hangs_at_its_start_is_waited_for_once(self):
        page = self.file("a.bmp", bmp(4, 2))
        result = self.run_program("--verbose", "--jobs", "1", "--page-timeout", "1", page,
                                  fake="hang-at-start")
        self.assert_result(result, 3, b"")
        self.assert_complains(result, "did not start: no result within 1 seconds")
        self.assertEqual(result.stderr.splitlines().count(b"chatter: starting"), 1)
        self.assert_nothing_is_left()


if __name__ == "__main__":
    unittest.main()
