# SPDX-License-Identifier: Apache-2.0
"""Each check of scripts/ finds what it is there for, and does not pass on nothing."""

import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(os.environ["ZELK_ROOT"])
LIBRARY = pathlib.Path(os.environ["ZELK_LIBRARY"])
BUILD = pathlib.Path(os.environ["ZELK_BUILD"])

LICENCE = "// SPDX-License-Identifier: Apache-2.0\n"


class Checks(unittest.TestCase):
    """A small project tree that passes every check, to be broken in one way at a time."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = pathlib.Path(folder.name)
        self.empty = self.tree / "build/empty"
        self.empty.mkdir(parents=True)
        for name in ("src/api/zelkAPI.h", "src/api/zelk_export.h", "src/engine/qv_engine.h",
                     "src/writers/pdflib_exception.h", ".clang-format"):
            (self.tree / name).parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(ROOT / name, self.tree / name)
        self.write("src/text/Text.cpp", f'{LICENCE}#include <iconv.h>\n#include "text/Text.h"\n')
        self.write("src/text/Text.h", f"{LICENCE}#pragma once\nint text();\n")
        self.write("scripts/nothing", "#!/bin/bash\n# SPDX-License-Identifier: Apache-2.0\n")
        self.write(".ci/run", "# SPDX-License-Identifier: Apache-2.0\n")
        subprocess.run(["clang-format", "-i", *self.tree.rglob("*.h"), *self.tree.rglob("*.cpp")],
                       check=True)

    def write(self, name, text):
        path = self.tree / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        return path

    def check(self, rule, *arguments):
        return subprocess.run([ROOT / "scripts" / f"check-{rule}", *arguments],
                              capture_output=True, text=True, check=False)

    def assert_passes(self, rule, *arguments):
        result = self.check(rule, *arguments)
        self.assertEqual(result.returncode, 0, result.stderr)

    def assert_fails(self, text, rule, *arguments):
        result = self.check(rule, *arguments)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn(text, result.stderr)

    def test_no_check_passes_on_an_empty_tree(self):
        for rule in ("format", "headers", "includes", "licence", "scripts", "sizes"):
            with self.subTest(rule):
                self.assert_passes(rule, self.tree)
                self.assertNotEqual(self.check(rule, self.empty).returncode, 0)

    def test_format_finds_a_line_out_of_place(self):
        self.write("src/text/Text.cpp", LICENCE + "int   wide;\n")
        self.assert_fails("src/text/Text.cpp:2", "format", self.tree)

    def test_licence_finds_a_file_without_one(self):
        self.write("src/text/Bare.cpp", "int bare;\n")
        self.assert_fails("src/text/Bare.cpp", "licence", self.tree)

    def test_scripts_finds_a_word_that_may_fall_apart(self):
        self.write("scripts/careless", "#!/bin/bash\nrm $1\n")
        self.assert_fails("scripts/careless line 2", "scripts", self.tree)

    def test_sizes_finds_long_files_and_long_lines(self):
        self.write("src/text/Long.cpp", LICENCE + "\n" * 600)
        self.assert_fails("src/text/Long.cpp: 601 lines", "sizes", self.tree)
        self.write("src/text/Long.cpp", LICENCE + "// " + "é" * 97 + "\n")
        self.assert_passes("sizes", self.tree)
        self.write("src/text/Long.cpp", LICENCE + "// " + "é" * 98 + "\n")
        self.assert_fails("src/text/Long.cpp:2", "sizes", self.tree)
        self.write("src/text/Long.cpp", LICENCE)
        self.write("src/text/Long.h", LICENCE + "\n" * 250)
        self.assert_fails("src/text/Long.h: 251 lines", "sizes", self.tree)

    def test_headers_finds_one_that_needs_another(self):
        self.write("src/text/Needy.h", LICENCE + "#pragma once\nstd::string text();\n")
        self.assert_fails("src/text/Needy.h", "headers", self.tree)

    def test_headers_finds_one_that_cannot_be_included_twice(self):
        self.write("src/text/Once.h", LICENCE + "struct Once {};\n")
        self.assert_fails("src/text/Once.h", "headers", self.tree)

    def test_headers_finds_what_is_no_c(self):
        header = self.tree / "src/api/zelk_export.h"
        once = "#ifndef ONCE\n#define ONCE\nint old_style();\n#endif\n"
        header.write_text(header.read_text() + once)
        self.assert_fails("src/api/zelk_export.h", "headers", self.tree)

    def test_headers_finds_that_an_installed_one_is_missing(self):
        (self.tree / "src/api/zelkAPI.h").unlink()
        self.assert_fails("src/api/zelkAPI.h: missing", "headers", self.tree)

    def test_includes_finds_third_party_headers_out_of_place(self):
        for name, header in (("src/image/A.cpp", "FreeImage.h"), ("src/text/A.cpp", "dlfcn.h"),
                             ("src/api/A.cpp", "fmt/format.h"),
                             ("src/process/A.cpp", "qpdf/QPDF.hh"),
                             ("apps/zelk/A.cpp", "FreeImage.h"), ("tests/A.cpp", "boost/any.hpp")):
            with self.subTest(name):
                path = self.write(name, f"{LICENCE}#include <{header}>\n")
                self.assert_fails(f"{name}: <{header}>", "includes", self.tree)
                path.unlink()

    def test_includes_finds_arrows_that_point_up(self):
        self.write("src/readers/A.cpp", LICENCE + '#include "process/MainProcess.h"\n')
        self.assert_fails("src/readers/A.cpp", "includes", self.tree)

    def test_includes_keeps_pdfium_to_its_reader(self):
        self.write("src/readers/pdfiumreader.cpp", LICENCE + '#include "readers/pdfium_api.h"\n')
        self.assert_passes("includes", self.tree)
        self.write("src/readers/imgreader.cpp", LICENCE + '#include "readers/pdfium_api.h"\n')
        self.assert_fails("src/readers/imgreader.cpp", "includes", self.tree)

    def build(self, source, *flags, name="lib.so"):
        path = self.write("build/source.cpp", source)
        output = self.tree / "build" / name
        subprocess.run(["g++", "-O2", *flags, path, "-o", output], check=True)
        return output

    def test_symbols_are_compared_both_ways(self):
        names = self.write("build/names", "# names\none\ntwo\n")
        one = 'extern "C" int one() { return 1; }\n'
        two = 'extern "C" int two() { return 2; }\n'
        three = 'extern "C" int three() { return 3; }\n'
        shared = ("-shared", "-fPIC")
        self.assert_passes("symbols", self.build(one + two, *shared), names)
        self.assert_fails("-two", "symbols", self.build(one, *shared), names)
        self.assert_fails("+three", "symbols", self.build(one + two + three, *shared), names)

    def test_symbols_finds_unique_ones(self):
        names = self.write("build/names", "_Z3usev\n_ZN1SIiE1xE\n")
        unique = ("template <class T> struct S { static int x; };\n"
                  "template <class T> int S<T>::x = 1;\nint* use() { return &S<int>::x; }\n")
        self.assert_fails("GNU_UNIQUE", "symbols", self.build(unique, "-shared", "-fPIC"), names)

    def test_symbols_of_nothing_are_no_match(self):
        nothing = self.write("build/names", "# nothing\n")
        library = self.build("static int hidden;\n", "-shared", "-fPIC")
        self.assert_fails("nothing to compare", "symbols", library, nothing)

    def test_hardening_finds_what_is_missing(self):
        source = ('#include <cstdio>\n#include <cstring>\nextern "C" void f(const char* s) '
                  '{ char b[99]; std::strcpy(b, s); std::printf("%s", b); }\n')
        good = ("-shared", "-fPIC", "-fstack-protector-strong", "-D_FORTIFY_SOURCE=2",
                "-Wl,-z,relro,-z,now,-z,noexecstack")
        self.assert_passes("hardening", self.build(source, *good))
        for flag, text in (("-Wl,-z,norelro", "no RELRO"), ("-Wl,-z,lazy", "bound lazily"),
                           ("-Wl,-z,execstack", "executable"),
                           ("-fno-stack-protector", "no stack protector"),
                           ("-U_FORTIFY_SOURCE", "no checked calls")):
            with self.subTest(flag):
                self.assert_fails(text, "hardening", self.build(source, *good, flag))
        for path in ("/usr/lib:", "/usr/lib::/lib", "$ORIGIN:lib"):
            with self.subTest(path):
                relative = self.build(source, *good, f"-Wl,-rpath,{path}")
                self.assert_fails("depends on the current folder", "hardening", relative)
        absolute = self.build(source, *good, "-Wl,-rpath,$ORIGIN:${ORIGIN}/../lib:/usr/lib")
        self.assert_passes("hardening", absolute)
        unnamed = self.build("int other() { return 1; }\n", "-shared", "-fPIC", name="other.so")
        by_path = self.build(source, *good, "-Wl,--no-as-needed", unnamed)
        self.assert_fails("needed by its path", "hardening", by_path)
        program = self.build("int main() {}\n", "-no-pie", name="program")
        self.assert_fails("not position independent", "hardening", program)
        self.assert_fails("no files given", "hardening")

    def test_artefacts_finds_more_and_less(self):
        listing = self.write("build/list", "lib/libzelk.so\nlib/libzelk.so.1\n")
        lib = self.tree / "build/out/lib"
        lib.mkdir(parents=True)
        (self.tree / "build/out/bin").mkdir()
        shutil.copy(LIBRARY, lib / "libzelk.so.1")
        self.assert_fails("-lib/libzelk.so", "artefacts", lib.parent, listing)
        (lib / "libzelk.so").symlink_to("libzelk.so.1")
        self.assert_passes("artefacts", lib.parent, listing)
        (lib / "stray.a").touch()
        self.assert_fails("+lib/stray.a", "artefacts", lib.parent, listing)
        (lib / "stray.a").unlink()
        (lib / "libzelk.so").unlink()
        shutil.copy(LIBRARY, lib / "libzelk.so")
        self.assert_fails("not the file beside it", "artefacts", lib.parent, listing)


if __name__ == "__main__":
    unittest.main()
