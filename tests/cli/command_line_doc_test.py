# SPDX-License-Identifier: Apache-2.0
"""docs/command-line.md: its examples do what it says, in its order, and it is complete."""

import html
import json
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

# Words of each of their pages without blanks, None for the missing page.
PAGES = {
    "letter": ["12pointtext"],
    "notice": ["关于开展安全检查的通知"],
    "report": ["会议纪要", "MEMORANDUM"],
    "damaged": ["Firstpagesurvives", None, "Thirdpagesurvives"],
    "secret": ["关于开展安全检查的通知", "TheWeatherStationontheHill"],
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


def documents_of(name, commands):
    """Names of the documents that a made file holds: the one that it is named for, else all that
    the example is about."""
    stem = name.rpartition("/")[2].partition(".")[0]
    if stem in PAGES:
        return [stem]
    found = [match for match in re.findall(r"([a-z]+)\.(?:tif|png|pdf)\b|\b(scans)$", commands,
                                           re.MULTILINE)]
    documents = [document for one, folder in found
                 for document in ([one] if one else ["notice", "letter"])]
    return [document for document in documents if document in PAGES]


def text_of(page):
    """Of a page in JSON."""
    return page and "".join(line["text"] for block in page["blocks"] for line in block["lines"])


def pages_in(path):
    """The texts of a made file's pages, each document's in a list of its own; texts and PDFs do
    not tell their documents."""
    if path.suffix == ".json":
        found = [json.loads(line) for line in path.read_text(encoding="utf-8").splitlines()]
        return [[text_of(page) for page in document["pages"]] for document in found]
    if path.suffix == ".html":
        return [[html.unescape(text) for text in
                 re.findall(r'<div class="text"[^>]*>(.*?)</div>', path.read_text(encoding="utf-8"),
                            re.DOTALL)]]
    if path.suffix == ".pdf":
        shown = subprocess.run(["pdftotext", path, "-"], check=True, capture_output=True)
        return [shown.stdout.decode("utf-8").split("\f")[:-1]]
    return [[path.read_text(encoding="utf-8")]]


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
            self.check_content(path, documents_of(name, example.commands))

    def check_content(self, path, documents):
        """The file holds these documents, page by page, and nothing else."""
        if path.suffix == ".jsonl" or path.name == "run.json":
            content = path.read_text(encoding="utf-8")
            found = re.findall(r'"name":"(?:scans/)?(?:2024/)?([a-z]+)\.', content)
            self.assertLessEqual(set(documents), set(found), path.name)
            return
        wanted = [PAGES[document] for document in documents]
        found = pages_in(path)
        if path.suffix in (".pdf", ".html"):
            wanted = [[page for document in wanted for page in document]]
        if path.suffix == ".txt":
            every = "(?s:.*)".join(re.escape(page) for page in sum(wanted, []) if page)
            self.assertTrue(wanted and every)
            self.assertRegex(re.sub(r"\s", "", found[0][0]), every, path.name)
            return
        self.assertTrue(wanted and wanted[0], path.name)
        self.assertEqual(list(map(len, found)), list(map(len, wanted)), path.name)
        for page, text in zip(sum(wanted, []), sum(found, [])):
            self.assertIn(page or "", re.sub(r"\s", "", text or ""), path.name)
            self.assertTrue(page or not text, f"{path.name}: {text!r}")

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
        self.run_example(Example("echo 12 point text > letter.txt; echo b; exit 2\n"
                                 "# makes: letter.txt\n# exit code: 2\n", "b\n"))

    def test_missing_content_would_be_found(self):
        shutil.copy(DATA / "english.tif", self.folder / "letter.tif")
        shutil.copy(DATA / "chinese.png", self.folder / "notice.png")
        whole = "zelk -o all.json letter.tif notice.png\n# makes: all.json\n"
        self.run_example(Example(whole, None))
        for form in ("txt", "json"):
            for given in ("letter*", "n*.png", "n*.png letter*"):
                commands = (f"# letter.tif notice.png\nzelk -o all.{form} {given}\n"
                            f"# makes: all.{form}\n")
                with self.subTest(commands), self.assertRaises(AssertionError):
                    self.run_example(Example(commands, None))

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
