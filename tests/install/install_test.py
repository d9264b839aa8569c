# SPDX-License-Identifier: Apache-2.0
"""An installation is complete, serves CMake and pkg-config, and can be moved."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

BUILD = os.environ["ZELK_BUILD"]
LIBDIR = os.environ["ZELK_LIBDIR"]
FAKES = pathlib.Path(os.environ["ZELK_FAKES"])
CONSUMER = pathlib.Path(__file__).parent / "consumer"
PROGRAM_BUILT = "ZELK_PROGRAM" in os.environ
ENGINE_BUILT = "ZELK_ENGINE" in os.environ


def run(*command, **options):
    """Standard output of a command that must succeed."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, **options)
    if done.returncode != 0:
        raise AssertionError(f"{command} gave {done.returncode}:\n{done.stdout}")
    return done.stdout


class Installation(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        staged = self.folder / "staged"
        run("cmake", "--install", BUILD, "--prefix", staged)
        # The place of installation is another one than that of use.
        self.prefix = self.folder / "moved"
        staged.rename(self.prefix)
        self.lib = self.prefix / LIBDIR
        # An engine that is there in every configuration.
        self.engine = self.folder / "engine"
        shutil.copytree(FAKES / "describing", self.engine)

    def installed(self):
        return {str(path.relative_to(self.prefix)) for path in self.prefix.rglob("*")
                if not path.is_dir()}

    def test_holds_what_hosts_engine_authors_and_users_need(self):
        expected = {f"{LIBDIR}/libzelk.so", f"{LIBDIR}/libzelk.so.1", f"{LIBDIR}/libzelk.so.1.0.0",
                    f"{LIBDIR}/pkgconfig/zelk.pc", f"{LIBDIR}/cmake/zelk/zelkConfig.cmake",
                    f"{LIBDIR}/cmake/zelk/zelkConfigVersion.cmake",
                    f"{LIBDIR}/cmake/zelk/zelkTargets.cmake",
                    "include/zelk/zelkAPI.h", "include/zelk/zelk_export.h",
                    "include/zelk/engine/qv_engine.h",
                    "include/zelk/writers/pdflib_exception.h", "share/doc/zelk/README.md",
                    "share/doc/zelk/LICENSE"}
        if PROGRAM_BUILT:
            expected |= {"bin/zelk", "bin/zelk-engine-check", "share/man/man1/zelk.1",
                         "share/man/man1/zelk-engine-check.1",
                         "share/bash-completion/completions/zelk"}
        expected |= {f"{LIBDIR}/zelk/engine/libQVEngine.so"} if ENGINE_BUILT else set()
        installed = self.installed()
        self.assertLessEqual(expected, installed)
        beside = {name for name in installed - expected
                  if not name.startswith((f"{LIBDIR}/cmake/zelk/zelkTargets-", "share/doc/zelk/"))}
        self.assertEqual(beside, set())

    def test_soname_link_leads_to_the_library(self):
        self.assertEqual(os.readlink(self.lib / "libzelk.so"), "libzelk.so.1")
        self.assertEqual(os.readlink(self.lib / "libzelk.so.1"), "libzelk.so.1.0.0")

    def test_cmake_package_serves_a_consumer(self):
        build = self.folder / "build"
        run("cmake", "-S", CONSUMER, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}")
        run("cmake", "--build", build)
        self.assertIn("started", run(build / "consumer", f"{self.engine}/"))
        engine_dir = pathlib.Path((build / "engine_dir").read_text(encoding="utf-8"))
        self.assertEqual(engine_dir, self.lib / "zelk/engine")

    def test_pkg_config_file_serves_a_consumer(self):
        environment = {**os.environ, "PKG_CONFIG_PATH": str(self.lib / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", "zelk", env=environment).split()
        program = self.folder / "consumer"
        run("cc", CONSUMER / "consumer.c", "-o", program, *flags)
        said = run(program, f"{self.engine}/", env={**os.environ, "LD_LIBRARY_PATH": str(self.lib)})
        self.assertIn("started", said)
        version = run("pkg-config", "--modversion", "zelk", env=environment)
        self.assertEqual(version, "1.0.0\n")
        engine_dir = run("pkg-config", "--variable=engine_dir", "zelk", env=environment).strip()
        self.assertTrue(engine_dir.endswith("/"))
        self.assertEqual(os.path.realpath(engine_dir), str((self.lib / "zelk/engine").resolve()))

    def test_host_in_cpp_catches_what_the_writer_throws(self):
        environment = {**os.environ, "PKG_CONFIG_PATH": str(self.lib / "pkgconfig")}
        flags = run("pkg-config", "--cflags", "--libs", "zelk", env=environment).split()
        program = self.folder / "catching"
        run("g++", "-std=c++11", CONSUMER / "catching.cpp", "-o", program, *flags)
        page = CONSUMER.parents[1] / "data/english.tif"
        output = self.folder / "full.pdf"
        said = run(program, f"{self.engine}/", page, output,
                   env={**os.environ, "LD_LIBRARY_PATH": str(self.lib)})
        self.assertIn("caught PDFlib::Exception", said)
        self.assertIn(str(output), said)

    @unittest.skipUnless(PROGRAM_BUILT, "the program is not built")
    def test_program_runs_from_a_moved_prefix(self):
        program = self.prefix / "bin/zelk"
        said = run(program, "--version", "--engine", self.engine)
        self.assertIn(f"{program.resolve()}", said)
        self.assertNotIn(BUILD, said)

    @unittest.skipUnless(PROGRAM_BUILT, "the program is not built")
    def test_program_looks_for_the_engine_beside_the_library(self):
        engine = self.lib / "zelk/engine/libQVEngine.so"
        engine.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(self.engine / "libQVEngine.so", engine)
        link = self.folder / "zelk"
        link.symlink_to(self.prefix / "bin/zelk")
        page = CONSUMER.parents[1] / "data/english.tif"
        for program in (self.prefix / "bin/zelk", link):
            self.assertIn("640x480", run(program, page))


if __name__ == "__main__":
    unittest.main()
