# SPDX-License-Identifier: Apache-2.0
"""docs/command-line.md: its examples do what it says, in its order, and it is complete."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

PROGRAM = pathlib.Path(os.environ["ZELK_PROGRAM"])
DATA = pathlib.Path(os.environ["ZELK_TEST_DATA"])
DOCUMENT = pathlib.Path(os.environ["ZELK_DOCS"]) / "command-line.md"

# What the document says that the folder holds.
FILES = {
    "letter.tif": "english.tif",
    "notice.png": "chinese.png",
    "report.pdf": "scan.pdf",
    "damaged.pdf": "hostile/missing-page-object.pdf",
    "secret.pdf": "hostile/user-password-aes256.pdf",
    "scans/letter.tif": "english.tif",
    "scans/2024/notice.png": "chinese.png",
}

FENCE = re.compile(r"^```sh\n(?P<commands>.*?)^```\n(?:^```text\n(?P<output>.*?)^```\n)?",
                   re.MULTILINE | re.DOTALL)


class Example:
    def __init__(self, commands, output):
        self.commands = commands
        self.output = (output or "").splitlines()
        self.made = [name for names in re.findall(r"^# makes: (.*)$", commands, re.MULTILINE)
                     for name in names.split()]
        codes = re.findall(r"^# exit code: (\d+)$", commands, re.MULTILINE)
        self.exit_code = int(codes[0]) if codes else 0


def examples(text):
    return [Example(match["commands"], match["output"]) for match in FENCE.finditer(text)]


def state(path):
    """Changes whenever a file is made anew."""
    if not path.exists():
        return None
    info = path.stat()
    return info.st_ino, info.st_mtime_ns, info.st_ctime_ns


class CommandLineDocument(unittest.TestCase):
    def setUp(self):
        self.text = DOCUMENT.read_text(encoding="utf-8")
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)

    def run_example(self, example):
        """What the example prints, after its promises have been checked."""
        before = {name: state(self.folder / name) for name in example.made}
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith("QV_")}
        environment["PATH"] = f"{PROGRAM.parent}{os.pathsep}{os.environ['PATH']}"
        result = subprocess.run(["bash", "--norc", "-euo", "pipefail", "-c", example.commands],
                                cwd=self.folder, env=environment, check=False, timeout=120,
                                stdin=subprocess.DEVNULL, capture_output=True)
        printed = (result.stdout + result.stderr).decode("utf-8", "replace")
        self.assertEqual(result.returncode, example.exit_code, printed)
        for line in example.output:
            self.assertIn(line, printed)
        for name in example.made:
            path = self.folder / name
            self.assertTrue(path.is_file() and path.stat().st_size > 0, f"{name}: {printed}")
            self.assertNotEqual(state(path), before[name], f"{name} was there before")

    def test_examples_run_in_order(self):
        for name, source in FILES.items():
            (self.folder / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(DATA / source, self.folder / name)
        found = examples(self.text)
        self.assertGreater(len(found), 20)
        for example in found:
            with self.subTest(example.commands):
                self.run_example(example)
        left = [path.name for path in self.folder.rglob(".zelk-*") if path.name != ".zelk-journal"]
        self.assertEqual(left, [], "temporary files")

    def test_broken_promises_would_be_found(self):
        for commands, output in (("false\n", None), ("true\n# exit code: 2\n", None),
                                 ("true\n# makes: x\n", None), ("echo a\n", "b\n"),
                                 ("false\ntrue\n", None), ("false | true\n", None)):
            with self.subTest(commands), self.assertRaises(AssertionError):
                self.run_example(Example(commands, output))
        self.run_example(Example("echo a > x; echo b; exit 2\n# makes: x\n# exit code: 2\n", "b\n"))

    def test_every_example_is_run(self):
        self.assertEqual(len(examples(self.text)), self.text.count("```sh\n"))
        self.assertEqual(sum(bool(example.output) for example in examples(self.text)),
                         self.text.count("```text\n"))

    def test_files_are_those_that_it_lists(self):
        introduction = self.text[:self.text.index("## ")]
        for name in FILES:
            self.assertIn(name.removeprefix("scans/"), introduction)

    def test_every_option_is_told(self):
        page = (DOCUMENT.parent / "zelk.1").read_text(encoding="utf-8").replace("\\-", "-")
        options = set(re.findall(r"\\fB(--[a-z-]+)\\fR", page))
        self.assertGreater(len(options), 20)
        told = set(re.findall(r"--[a-z]+(?:-[a-z]+)*", self.text)) | {"--output", "--directory"}
        self.assertEqual(options - told, set())
        for short in ("-o", "-d"):
            self.assertRegex(self.text, rf"zelk .*{short} ")

    def test_exit_codes_are_those_of_the_help(self):
        table = re.findall(r"^\| (\d+) \| (.*) \|$", self.text, re.MULTILINE)
        shown = subprocess.run([PROGRAM, "--help"], check=True, capture_output=True, text=True)
        codes = re.findall(r"^ +(\d+)  (.*)$", shown.stdout, re.MULTILINE)
        self.assertEqual([code for code, _ in table], [code for code, _ in codes])
        for (_, meaning), (_, helped) in zip(table, codes):
            self.assertTrue(helped.startswith(meaning), (meaning, helped))


if __name__ == "__main__":
    unittest.main()
