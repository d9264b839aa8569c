# SPDX-License-Identifier: Apache-2.0
"""The project built with a vendor's PDF library: the embedded producer, as a library of its own."""

import fcntl
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(os.environ["ZELK_ROOT"])
BUILD = pathlib.Path(os.environ["ZELK_VENDOR_BUILD"])
PACKAGE = pathlib.Path(os.environ["ZELK_VENDOR_PACKAGE"])
ENGINE = os.environ["ZELK_INK_ENGINE"]
DATA = ROOT / "tests/data"

# Options beside those that the documentation names are there for speed alone.
OPTIONS = ["-DZELK_PDF_PRODUCER=vendor", f"-DPDFLIB_ROOT={PACKAGE}", "-DZELK_BUILD_ENGINE=OFF",
           "-DCMAKE_INSTALL_LIBDIR=lib", "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=",
           "-DCMAKE_C_FLAGS_DEBUG="]

HOST = """
import ctypes, sys
library, engine, document, output = sys.argv[1:]
zelk = ctypes.CDLL(library)
assert zelk.zelk_init_engine(engine.encode()) == 0
assert zelk.zelk_load_image_document(document.encode(), 200) == 1
assert zelk.zelk_set_double_document_filename(output.encode())
assert zelk.zelk_recognize() == 0
zelk.zelk_free_image_document()
zelk.zelk_uninit_engine()
with open("/proc/self/maps") as maps:
    print(*{line.split()[-1] for line in maps if "libpdf.so.6" in line})
"""


def run(*command, **options):
    """Standard output of a command that must succeed."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} gave {done.returncode}:\n{done.stdout[-8000:]}")
    return done.stdout


class VendorBuild(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        BUILD.mkdir(parents=True, exist_ok=True)
        with open(BUILD / "lock", "w", encoding="utf-8") as lock:
            fcntl.flock(lock, fcntl.LOCK_EX)  # each test is a process, and the first one builds
            run("cmake", "-G", os.environ["ZELK_GENERATOR"], "-S", ROOT, "-B", BUILD, *OPTIONS,
                *os.environ["ZELK_COMPILERS"].split("|"))
            run("cmake", "--build", BUILD, "--parallel", "2")

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def installed(self):
        """An installation that was moved after it was made."""
        run("cmake", "--install", BUILD, "--prefix", self.folder / "staged")
        return (self.folder / "staged").rename(self.folder / "moved")

    def assert_holds_marks(self, document):
        """The engine calls every mark of ink a black square."""
        run("qpdf", "--check", document)
        self.assertRegex(run("pdftotext", document, "-"), "■+")

    def assert_writes_with_the_vendors_library(self, library):
        output = self.folder / "searchable.pdf"
        said = run(sys.executable, "-c", HOST, library, ENGINE, DATA / "english.tif", output)
        used = said.splitlines()[-1]  # behind what decoders complain about
        self.assertEqual(used, str(PACKAGE.resolve() / "lib/libpdf.so.6"))
        self.assert_holds_marks(output)

    def assert_asks_for_it_by_name(self, file):
        said = run("readelf", "--wide", "--dynamic", file)
        names = re.findall(r"\(NEEDED\).*\[(.*)\]", said)
        self.assertIn("libpdf.so.6", names)
        self.assertEqual([name for name in names if "/" in name], [])

    def test_library_of_the_build_folder_writes_a_searchable_pdf(self):
        self.assert_asks_for_it_by_name(BUILD / "lib/libzelk.so")
        self.assert_writes_with_the_vendors_library(BUILD / "lib/libzelk.so")

    def test_installed_library_writes_a_searchable_pdf(self):
        library = self.installed() / "lib/libzelk.so"
        self.assert_asks_for_it_by_name(library)
        self.assert_writes_with_the_vendors_library(library)

    def test_installed_program_writes_pdfs_and_takes_passwords_off_them(self):
        program = self.installed() / "bin/zelk"
        self.assert_asks_for_it_by_name(program)
        secret = DATA / "hostile/user-password-aes256.pdf"
        for options, document in ((), DATA / "english.tif"), (("--password", "letmein"), secret):
            output = self.folder / "out.pdf"
            run(program, "--engine", ENGINE, *options, "--dpi", "72", "--pdf", output, document)
            self.assert_holds_marks(output)
            output.unlink()


if __name__ == "__main__":
    unittest.main()
