# SPDX-License-Identifier: Apache-2.0
"""The manual page is sound, and bash completes options, their values and names of documents."""

import os
import pathlib
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(os.environ["ZELK_SOURCE"])


class ManualPage(unittest.TestCase):
    def shown(self, page):
        return subprocess.run(["man", "--warnings", "-E", "UTF-8", "-l", page], check=True,
                              capture_output=True, env={**os.environ, "MANWIDTH": "80"})

    def test_is_shown_without_warnings(self):
        result = self.shown(SOURCE / "docs/zelk.1")
        self.assertEqual(result.stderr, b"")
        text = result.stdout.decode("utf-8")
        for heading in ("NAME", "SYNOPSIS", "OPTIONS", "EXIT STATUS", "EXAMPLES"):
            self.assertIn(f"\n{heading}\n", text)

    def test_faults_of_a_page_would_be_told(self):
        with tempfile.NamedTemporaryFile(suffix=".1") as page:
            page.write((SOURCE / "docs/zelk.1").read_bytes() + b".EE\n\\fZwrong\n.nonsense\n")
            page.flush()
            self.assertNotEqual(self.shown(page.name).stderr, b"")


class BashCompletion(unittest.TestCase):
    def complete(self, *words):
        """What is offered for the last word."""
        script = ('source "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _zelk; '
                  'for reply in "${COMPREPLY[@]}"; do echo "$reply"; done')
        result = subprocess.run(
            ["bash", "--norc", "-uc", script, "bash", SOURCE / "packaging/bash-completion/zelk",
             *words], check=True, capture_output=True, text=True, cwd=self.folder)
        self.assertEqual(result.stderr, "")
        return sorted(result.stdout.splitlines())

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        for name in ("a scan.PNG", "a.tiff", "a.txt", "a.json", "b.pdf"):
            (self.folder / name).touch()
        (self.folder / "archive").mkdir()

    def test_options(self):
        self.assertEqual(self.complete("zelk", "--pa"),
                         ["--page-break", "--page-timeout", "--pages", "--password"])
        self.assertEqual(self.complete("zelk", "a.tiff", "--res"), ["--resume"])

    def test_values(self):
        self.assertEqual(self.complete("zelk", "--format", "j"), ["json"])
        self.assertEqual(self.complete("zelk", "--format", "text,p"), ["text,pdf"])
        self.assertEqual(self.complete("zelk", "--format", "=", "h"), ["html"])
        self.assertEqual(self.complete("zelk", "--progress", ""), ["json"])
        self.assertEqual(self.complete("zelk", "--dpi", ""), [])

    def test_languages_come_from_the_program(self):
        program = self.folder / "program"
        program.write_text("#!/bin/sh\nprintf 'chi_sim\\neng\\n'\n", encoding="ascii")
        program.chmod(0o755)
        self.assertEqual(self.complete(program, "--lang", "chi_sim+e"), ["chi_sim+eng"])

    def test_documents_and_folders(self):
        self.assertEqual(self.complete("zelk", "a"), ["a scan.PNG", "a.tiff", "archive"])
        self.assertEqual(self.complete("zelk", "-o", "a.t"), ["a.tiff", "a.txt"])
        self.assertEqual(self.complete("zelk", "-d", ""), ["archive"])
        self.assertEqual(self.complete("zelk", "--pdf", ""), ["archive", "b.pdf"])
        self.assertEqual(self.complete("zelk", "@a.t"), ["@a.tiff", "@a.txt"])

    def test_the_function_is_bound_to_the_program(self):
        script = 'source "$0"; complete -p zelk'
        result = subprocess.run(
            ["bash", "--norc", "-c", script, SOURCE / "packaging/bash-completion/zelk"],
            check=True, capture_output=True, text=True)
        self.assertEqual(result.stdout, "complete -F _zelk zelk\n")


if __name__ == "__main__":
    unittest.main()
