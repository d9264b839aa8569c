# SPDX-License-Identifier: Apache-2.0
"""scripts/run-steps runs every step, adds up the tests, and fails when one of the steps does."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(os.environ["ZELK_ROOT"])
TESTED = "echo '{}% tests passed, {} tests failed out of {}'"


class Steps(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.scripts = pathlib.Path(folder.name, "scripts")
        self.scripts.mkdir()
        shutil.copy(ROOT / "scripts/run-steps", self.scripts)
        self.step("some", TESTED.format(100, 0, 7))
        self.step("more", TESTED.format(100, 0, 20))
        self.step("none", "echo nothing found")

    def step(self, name, command):
        path = self.scripts / name
        path.write_text(f"#!/bin/sh\n{command}\n", encoding="utf-8")
        path.chmod(0o755)

    def run_steps(self, *names):
        done = subprocess.run([self.scripts / "run-steps", *names], capture_output=True, text=True,
                              check=False)
        return done.returncode, done.stdout.splitlines()

    def test_tests_of_all_steps_are_added_up(self):
        code, lines = self.run_steps("some", "none", "more")
        self.assertEqual(code, 0)
        self.assertEqual(lines[-1], "3 of 3 steps passed; 27 tests passed, 0 failed")

    def test_a_step_that_fails_fails_all_and_stops_none(self):
        self.step("some", TESTED.format(71, 2, 7) + "; exit 8")
        code, lines = self.run_steps("some", "more")
        self.assertNotEqual(code, 0)
        self.assertIn("== more", lines)
        self.assertRegex(lines[-3], "^some +FAILED in [0-9]+ s$")
        self.assertEqual(lines[-1], "1 of 2 steps passed; 25 tests passed, 2 failed")

    def test_a_step_without_tests_can_fail_too(self):
        self.step("none", "exit 1")
        code, lines = self.run_steps("some", "none")
        self.assertNotEqual(code, 0)
        self.assertEqual(lines[-1], "1 of 2 steps passed; 7 tests passed, 0 failed")

    def test_steps_without_any_test_are_no_success(self):
        self.assertNotEqual(self.run_steps("none")[0], 0)


if __name__ == "__main__":
    unittest.main()
