# SPDX-License-Identifier: Apache-2.0
"""What docs/writing-an-engine.md says of the example engine and of zelk-engine-check is so."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["ZELK_ENGINE_CHECK"]
ROOT = pathlib.Path(os.environ["ZELK_ROOT"])
EXAMPLE = ROOT / "examples/engine"
TEXT = (ROOT / "docs/writing-an-engine.md").read_text(encoding="utf-8")


class Documentation(unittest.TestCase):
    def test_what_it_quotes_is_in_the_example(self):
        source = (EXAMPLE / "ink_engine.cpp").read_text(encoding="utf-8")
        quoted = re.findall(r"```cpp\n(.*?)```", TEXT, re.DOTALL)
        self.assertGreater(len(quoted), 5)
        for code in quoted:
            self.assertIn(code, source)
        exports = re.search(r"```\n(\{.*?)```", TEXT, re.DOTALL).group(1)
        self.assertIn(exports, (EXAMPLE / "ink_engine.map").read_text(encoding="utf-8"))

    def test_the_example_is_as_short_as_it_says(self):
        lines = (EXAMPLE / "ink_engine.cpp").read_text(encoding="utf-8").splitlines()
        self.assertLess(len(lines), 150)

    def test_its_command_builds_an_engine_that_passes(self):
        command = re.search(r"```sh\n(g\+\+.*?)```", TEXT, re.DOTALL).group(1)
        command = command.replace("/usr/local/include/zelk", str(ROOT / "src"))
        with tempfile.TemporaryDirectory() as folder:
            for name in ("ink_engine.cpp", "ink_engine.map"):
                shutil.copy(EXAMPLE / name, folder)
            subprocess.run(["sh", "-ec", command], cwd=folder, check=True)
            done = subprocess.run([PROGRAM, "."], cwd=folder, capture_output=True, text=True,
                                  check=False)
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertIn(" 0 warned, 0 failed", done.stdout)

    def test_its_topics_are_those_of_the_checks(self):
        listed = subprocess.run([PROGRAM, "--list"], capture_output=True, text=True, check=True)
        topics = {line.split(".")[0] for line in listed.stdout.splitlines()}
        self.assertEqual(set(re.findall(r"^\| `([a-z]+)` \|", TEXT, re.MULTILINE)), topics)

    def test_the_manual_page_has_the_options_and_exit_codes_of_the_help(self):
        file = ROOT / "docs/zelk-engine-check.1"
        done = subprocess.run(["man", "--warnings", "-l", file], capture_output=True, text=True,
                              check=True)
        self.assertEqual(done.stderr, "")
        shown = subprocess.run([PROGRAM, "--help"], capture_output=True, text=True, check=True)
        page = file.read_text(encoding="utf-8").replace("\\-", "-")
        self.assertEqual(set(re.findall(r"\\fB(--[a-z]+)\\fR", page)),
                         set(re.findall(r"--[a-z]+", shown.stdout)))
        codes = shown.stdout[shown.stdout.index("Exit code:"):]
        self.assertEqual(set(re.findall(r"^\.B (\d)$", page, re.MULTILINE)),
                         set(re.findall(r"\b\d\b", codes)))


if __name__ == "__main__":
    unittest.main()
