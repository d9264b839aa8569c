# SPDX-License-Identifier: Apache-2.0
"""Runs the command line program, and makes small documents for it."""

import os
import pathlib
import struct
import subprocess
import tempfile
import time
import unittest

PROGRAM = os.environ["ZELK_PROGRAM"]
FAKES = pathlib.Path(os.environ["ZELK_FAKES"])
DATA = pathlib.Path(os.environ["ZELK_TEST_DATA"])

# How a crash is told; sanitizers catch the signal and end the process.
CRASHED = ("the worker ended by itself (exit code 1)" if os.environ.get("ZELK_SANITIZED") else
           "the worker crashed (SIGSEGV)")


def bmp(width, height):
    """A white 24-bit picture."""
    pixels = b"\xff" * ((width * 3 + 3) // 4 * 4 * height)
    info = struct.pack("<IiiHHIIiiII", 40, width, height, 1, 24, 0, len(pixels), 3780, 3780, 0, 0)
    return struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54) + info + pixels


def pdf(*page_sizes):
    """Empty pages of the given sizes in points."""
    kids = " ".join(f"{3 + i} 0 R" for i in range(len(page_sizes)))
    bodies = ["<< /Type /Catalog /Pages 2 0 R >>",
              f"<< /Type /Pages /Kids [{kids}] /Count {len(page_sizes)} >>"]
    bodies += [f"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 {width} {height}] >>"
               for width, height in page_sizes]
    text = "%PDF-1.4\n"
    offsets = []
    for number, body in enumerate(bodies, 1):
        offsets.append(len(text))
        text += f"{number} 0 obj\n{body}\nendobj\n"
    start = len(text)
    text += f"xref\n0 {len(bodies) + 1}\n0000000000 65535 f \n"
    text += "".join(f"{offset:010} 00000 n \n" for offset in offsets)
    text += f"trailer\n<< /Size {len(bodies) + 1} /Root 1 0 R >>\nstartxref\n{start}\n%%EOF\n"
    return text.encode("ascii")


def wait_until_none(processes, seconds=5):
    """What is left of them then: what was killed takes a moment to go."""
    end = time.monotonic() + seconds
    while (left := processes()) and time.monotonic() < end:
        time.sleep(0.05)
    return left


def workers_in(folder):
    """Process numbers of those that run in a folder or below."""
    found = []
    for process in pathlib.Path("/proc").iterdir():
        try:
            if process.name.isdigit() and os.readlink(process / "cwd").startswith(str(folder)):
                found.append(int(process.name))
        except OSError:
            pass  # it has ended, or is another user's
    return found


def processes_of(folder):
    """Process numbers of workers with their scratch folders below a folder, and of what their
    engines started."""
    found = []
    for process in pathlib.Path("/proc").iterdir():
        try:
            if process.name.isdigit() and any(
                    variable.startswith(f"TMPDIR={folder}/".encode())
                    for variable in (process / "environ").read_bytes().split(b"\0")):
                found.append(int(process.name))
        except OSError:
            pass  # it has ended, or is another user's
    return found


class ProgramTest(unittest.TestCase):
    """A folder of its own for each test, and the program with the describing stand-in engine."""

    ENGINE = FAKES / "describing"

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.scratch = pathlib.Path(scratch.name)

    def file(self, name, content):
        path = self.folder / name
        path.write_bytes(content)
        return path

    def names(self):
        return sorted(entry.name for entry in self.folder.iterdir())

    def command(self, *arguments, engine=ENGINE, wrapper=()):
        chosen = [] if engine is None else ["--engine", engine]
        return [*wrapper, PROGRAM, *chosen, *arguments]

    def environment(self, fake="", faults=""):
        """What the stand-in engine is told to do."""
        return {**os.environ, "FAKE_ENGINE": fake, "FAKE_FAULTS": faults,
                "FAKE_FOLDER": str(self.folder), "TMPDIR": str(self.scratch)}

    def run_program(self, *arguments, engine=ENGINE, wrapper=(), fake="", faults="", **options):
        environment = self.environment(fake, faults)
        options = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "timeout": 240, **options}
        return subprocess.run(self.command(*arguments, engine=engine, wrapper=wrapper),
                              env=environment, check=False, **options)

    def assert_result(self, result, code, output=None):
        """The exit code, and what went to standard output."""
        self.assertEqual(result.returncode, code, result.stderr)
        if output is not None:
            self.assertEqual(result.stdout, output)

    def assert_nothing_is_left(self):
        """Neither unfinished files nor workers."""
        self.assertEqual(os.listdir(self.scratch), [])
        self.assertEqual([name for name in self.names() if name.startswith(".zelk")], [])
        left = wait_until_none(lambda: workers_in(self.folder) + workers_in(self.scratch))
        self.assertEqual(left, [])

    def assert_complains(self, result, *texts):
        """Each text is part of a line on standard error that starts with the program's name."""
        lines = [line for line in os.fsdecode(result.stderr).splitlines()
                 if line.startswith("zelk: ")]
        for text in texts:
            self.assertTrue(any(text in line for line in lines), f"{text!r} is not in {lines}")
