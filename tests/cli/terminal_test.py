# SPDX-License-Identifier: Apache-2.0
"""What reaches a terminal does not command it, and a reader that goes ends the run quietly."""

import os
import pty
import signal
import subprocess
import unicodedata
import unittest

from program import FAKES, ProgramTest, bmp, pdf

EVIL = "\x1b[2J\x1b]0;owned\x07\x9b31m\x7f"


class Terminal(ProgramTest):
    def shown(self, *arguments, fake="", **options):
        """What standard output and standard error show on a terminal, and the exit code."""
        ours, theirs = pty.openpty()
        with subprocess.Popen(self.command(*arguments, **options), stdout=theirs, stderr=theirs,
                              stdin=subprocess.DEVNULL, cwd=self.folder,
                              env=self.environment(fake=fake)) as process:
            os.close(theirs)
            text = b""
            while True:
                try:
                    text += os.read(ours, 65536)
                except OSError:  # the other side is closed
                    break
            os.close(ours)
        return text.replace(b"\r\x1b[K", b""), process.returncode  # the bar's own

    def assert_harmless(self, shown):
        text = shown.decode("utf-8")  # would fail for stray bytes
        controls = {character for character in text if unicodedata.category(character) == "Cc"}
        self.assertLessEqual(controls, set("\t\n\f\r"), shown)

    def test_recognised_text(self):
        self.file("page.bmp", bmp(20, 9))
        for more, evil in (([], EVIL + "\rgone"), (["--format", "json"], "owned\x9b31m\x7f")):
            with self.subTest(more):
                shown, code = self.shown("--lang", evil, *more, "page.bmp")
                self.assertEqual(code, 0)
                self.assert_harmless(shown)
                self.assertIn("owned".encode(), shown)
        whole = self.run_program("--lang", EVIL, "page.bmp", cwd=self.folder)
        self.assertEqual(whole.stdout.decode("utf-8"), f"20x9 {EVIL}\n", "as it is elsewhere")

    def test_names_of_documents_and_options(self):
        self.file(f"{EVIL}.bmp", b"nothing of use")
        for arguments in (["--verbose", f"{EVIL}.bmp"], [f"{EVIL}\n.png"], [f"--{EVIL}", "x"],
                          ["--format", EVIL, "x"], ["-o", f"{EVIL}/x", f"{EVIL}.bmp"],
                          ["--pages", EVIL, "x"], ["--progress", "json", f"{EVIL}.bmp"],
                          [f"@{EVIL}"], ["--report", f"{EVIL}/x", f"{EVIL}.bmp"],
                          ["-d", f"{EVIL}.bmp/x", f"{EVIL}.bmp"]):
            with self.subTest(arguments):
                shown, code = self.shown(*arguments)
                self.assertNotEqual(code, 0)
                self.assertIn(b"owned", shown)
                self.assert_harmless(shown)

    def test_names_of_engines_and_languages(self):
        engine = self.folder / EVIL
        shown, code = self.shown("x.png", engine=engine)
        self.assert_harmless(shown)
        shown, code = self.shown("--version", engine=engine)
        self.assertEqual(code, 0)
        self.assert_harmless(shown)
        engine.mkdir()
        (engine / "libQVEngine.so").symlink_to(FAKES / "describing/libQVEngine.so")
        (engine / "tessdata").mkdir()
        (engine / "tessdata" / f"{EVIL}\n.traineddata").touch()
        (engine / "tessdata" / "eng.traineddata").touch()
        (engine / "engine.conf").write_text("tessdata = tessdata\n", encoding="ascii")
        shown, code = self.shown("--list-langs", engine=engine)
        self.assert_harmless(shown)


class Reader(ProgramTest):
    def test_that_goes_ends_the_run_quietly(self):
        files = [self.file(f"{width}.bmp", bmp(width, 9)) for width in range(20, 60)]
        process = subprocess.Popen(self.command("--jobs", "2", *files), stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, env=self.environment(fake="steady"))
        process.stdout.readline()
        process.stdout.close()
        with process.stderr as stream:
            self.assertEqual(stream.read(), b"")
        self.assertEqual(process.wait(60), -signal.SIGPIPE)
        self.assert_nothing_is_left()

    def test_that_has_gone_is_seen_in_the_exit_code_of_a_shell(self):
        document = self.file("long.pdf", pdf(*((60 + number, 9) for number in range(4))))
        script = '"$@" | true; echo "${PIPESTATUS[0]}"'
        result = self.run_program(document, document.with_name("none"),
                                  wrapper=["bash", "-c", script, "bash"])
        self.assertEqual(result.stdout, b"141\n")
        self.assertNotIn(b"Broken pipe", result.stderr)
        script = f"trap '' PIPE; {script}"
        result = self.run_program(document, wrapper=["bash", "-c", script, "bash"])
        self.assertEqual((result.stdout, result.stderr), (b"141\n", b""))

    def test_that_has_gone_does_not_mind_help(self):
        reading, writing = os.pipe()
        os.close(reading)
        with open(writing, "wb") as pipe:
            result = self.run_program("--help", stdout=pipe)
        self.assertEqual((result.returncode, result.stderr), (-signal.SIGPIPE, b""))


if __name__ == "__main__":
    unittest.main()
