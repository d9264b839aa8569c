# SPDX-License-Identifier: Apache-2.0
"""Results are delivered whole, or their loss is told."""

import os
import signal
import subprocess
import time
import unittest

from program import ProgramTest, bmp, workers_in


class Output(ProgramTest):
    def setUp(self):
        super().setUp()
        self.page = self.file("page.bmp", bmp(4, 2))
        self.out = self.folder / "out.txt"

    def assert_not_written(self, result, reason):
        self.assertEqual(result.returncode, 4, result.stderr)
        self.assert_complains(result, f"cannot write the output: {reason}")

    def test_file_holds_the_result_and_standard_output_nothing(self):
        self.assert_result(self.run_program("-o", self.out, self.page), 0, b"")
        self.assertEqual(self.out.read_bytes(), b"4x2 default\n")
        self.assertEqual(self.names(), ["out.txt", "page.bmp"])

    def test_new_file_has_the_usual_permissions(self):
        self.assert_result(self.run_program("-o", self.out, self.page, umask=0o027), 0)
        self.assertEqual(self.out.stat().st_mode & 0o7777, 0o640)

    def test_replaced_file_keeps_its_permissions(self):
        self.file("out.txt", b"old").chmod(0o604)
        self.assert_result(self.run_program("-o", self.out, self.page), 0)
        self.assertEqual(self.out.read_bytes(), b"4x2 default\n")
        self.assertEqual(self.out.stat().st_mode & 0o7777, 0o604)

    def test_link_stays_a_link(self):
        target = self.file("target.txt", b"old")
        self.out.symlink_to("target.txt")
        self.assert_result(self.run_program("-o", self.out, self.page), 0)
        self.assertTrue(self.out.is_symlink())
        self.assertEqual(target.read_bytes(), b"4x2 default\n")

    def test_file_is_written_with_what_could_be_read(self):
        result = self.run_program("-o", self.out, self.folder / "none.png", self.page)
        self.assert_result(result, 2, b"")
        self.assertEqual(self.out.read_bytes(), b"4x2 default\n")

    def test_name_without_a_folder_is_in_the_current_one(self):
        self.assert_result(self.run_program("-o", "out.txt", self.page, cwd=self.folder), 0)
        self.assertEqual(self.names(), ["out.txt", "page.bmp"])

    def test_dash_is_standard_output(self):
        result = self.run_program("-o", "-", self.page, cwd=self.folder)
        self.assert_result(result, 0, b"4x2 default\n")
        self.assertEqual(self.names(), ["page.bmp"])

    def test_pipe_is_written_to_and_stays(self):
        # A pipe stands for devices too: with a fault here, a test on one would replace it.
        os.mkfifo(self.out)
        with subprocess.Popen(["cat", self.out], stdout=subprocess.PIPE) as reader:
            self.addCleanup(reader.kill)
            self.assert_result(self.run_program("-o", self.out, self.page), 0, b"")
            if not self.out.is_fifo():
                reader.kill()
            self.assertEqual(reader.stdout.read(), b"4x2 default\n")
        self.assertTrue(self.out.is_fifo())

    def test_interruption_leaves_the_old_file_and_nothing_else(self):
        self.file("out.txt", b"old")
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number), subprocess.Popen(
                    self.command("-o", self.out, self.page), stderr=subprocess.DEVNULL,
                    env={**os.environ, "FAKE_ENGINE": "slow"}) as program:
                while not workers_in(self.folder):
                    self.assertIsNone(program.poll())
                    time.sleep(0.01)
                program.send_signal(number)
                self.assertEqual(program.wait(60), 130)
                self.assertEqual(self.names(), ["out.txt", "page.bmp"])
                self.assertEqual(self.out.read_bytes(), b"old")

    def test_input_is_not_overwritten(self):
        os.link(self.page, self.folder / "same.bmp")
        for output in ("page.bmp", "./page.bmp", "same.bmp"):
            with self.subTest(output):
                result = self.run_program("-o", output, "page.bmp", cwd=self.folder)
                self.assert_result(result, 1, b"")
                self.assert_complains(result, "page.bmp is an input")
                self.assertEqual(self.page.read_bytes(), bmp(4, 2))

    def test_missing_folder(self):
        self.assert_not_written(self.run_program("-o", self.folder / "no/out.txt", self.page),
                                f"{self.folder}/no/out.txt: No such file or directory")

    def test_folder_as_output(self):
        self.assert_not_written(self.run_program("-o", self.folder, self.page),
                                f"{self.folder}: Is a directory")

    def test_folder_without_permission(self):
        closed = self.folder / "closed"
        closed.mkdir(mode=0o500)
        wrapper = ["setpriv", "--bounding-set", "-dac_override"] if os.geteuid() == 0 else []
        self.assert_not_written(self.run_program("-o", closed / "out", self.page, wrapper=wrapper),
                                f"{closed}/out: Permission denied")

    def test_full_disk(self):
        with open("/dev/full", "wb") as full:
            self.assert_not_written(self.run_program(self.page, stdout=full),
                                    "standard output: No space left on device")

    def test_full_disk_below_a_file(self):
        wrapper = ["sh", "-c", 'ulimit -f 0; trap "" XFSZ; exec "$@"', "sh"]
        self.file("out.txt", b"old")
        self.assert_not_written(self.run_program("-o", self.out, self.page, wrapper=wrapper),
                                f"{self.folder}/.zelk-journal")
        self.assertEqual(self.out.read_bytes(), b"old")
        self.assertEqual(self.names(), ["out.txt", "page.bmp"])

    def test_closed_standard_output(self):
        wrapper = ["sh", "-c", 'exec "$@" >&-', "sh"]
        self.assert_not_written(self.run_program(self.page, wrapper=wrapper),
                                "standard output is closed")

    def test_closed_standard_error(self):
        wrapper = ["sh", "-c", 'exec "$@" 2>&-', "sh"]
        result = self.run_program(self.folder / "none.png", self.page, wrapper=wrapper)
        self.assert_result(result, 2, b"4x2 default\n")

    def test_full_disk_below_standard_error(self):
        with open("/dev/full", "wb") as full:
            result = self.run_program(self.folder / "none.png", self.page, stderr=full)
        self.assertEqual((result.returncode, result.stdout), (2, b"4x2 default\n"))


if __name__ == "__main__":
    unittest.main()
