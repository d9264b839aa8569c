# SPDX-License-Identifier: Apache-2.0
"""Programs and libraries take nothing from the folder in which they are run."""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD = pathlib.Path(os.environ["ZELK_BUILD"])
LIBDIR = os.environ["ZELK_LIBDIR"]
ROOT = pathlib.Path(os.environ["ZELK_ROOT"])
PROGRAM_BUILT = "ZELK_PROGRAM" in os.environ
ENGINE_BUILT = "ZELK_ENGINE" in os.environ

PLANTED = """#include <unistd.h>
__attribute__((constructor)) static void planted(void) {
  static const char said[] = "a planted library runs";
  _exit(write(1, said, sizeof said - 1) < 0 ? 98 : 97);
}
"""


def needed(file):
    """Names of the libraries that a file asks the loader for."""
    said = subprocess.run(["readelf", "--wide", "--dynamic", file], capture_output=True, text=True,
                          check=True).stdout
    return re.findall(r"\(NEEDED\).*\[(.*)\]", said)


def open_with_loader(library):
    return [sys.executable, "-c", "import ctypes, sys; ctypes.CDLL(sys.argv[1])", library]


class RunPath(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.planted = self.folder / "planted.so"
        source = self.folder / "planted.c"
        source.write_text(PLANTED, encoding="utf-8")
        subprocess.run(["cc", "-shared", "-fPIC", source, "-o", self.planted], check=True)

    def assert_ignores_planted_libraries(self, file, command):
        """Runs the command where every library that the file needs lies planted."""
        place = self.folder / file.name
        place.mkdir(exist_ok=True)
        names = [name for name in needed(file) if "/" not in name]
        self.assertNotEqual(names, [])
        for name in names:
            (place / name).unlink(missing_ok=True)
            (place / name).symlink_to(self.planted)
        done = subprocess.run(command, cwd=place, capture_output=True, text=True, check=False)
        self.assertNotIn("planted", done.stdout)
        self.assertEqual(done.returncode, 0, done.stderr[-200:])

    def examine(self, programs, libraries):
        """Both what a run shows and what the check says of the same files."""
        shipped = [libraries / "libzelk.so"]
        if ENGINE_BUILT:
            shipped.append(libraries / "zelk/engine/libQVEngine.so")
        for library in shipped:
            with self.subTest(library.name):
                self.assert_ignores_planted_libraries(library, open_with_loader(library))
        if PROGRAM_BUILT:
            shipped += [programs / "zelk", programs / "zelk-engine-check"]
        for program in shipped:
            if program.parent == programs:
                with self.subTest(program.name):
                    self.assert_ignores_planted_libraries(program, [program, "--help"])
        done = subprocess.run([ROOT / "scripts/check-hardening", *shipped], capture_output=True,
                              text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_in_the_build_folder(self):
        self.examine(BUILD / "bin", BUILD / "lib")

    def test_installed(self):
        prefix = self.folder / "prefix"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        self.examine(prefix / "bin", prefix / LIBDIR)


if __name__ == "__main__":
    unittest.main()
