# SPDX-License-Identifier: Apache-2.0
"""The slips of everyday use: what the program says to each, and its exit code.

A sentence is one line. It names the file or the option, says what is wrong and, where there is
one, the remedy. "{F}" is the folder of the test."""

import os
import pathlib
import re
import struct
import subprocess
import tempfile
import unittest
import zlib

from program import DATA, FAKES, PROGRAM, ProgramTest, bmp, pdf

LOCKED = DATA / "hostile/user-password-aes256.pdf"
HELP = "; zelk --help lists the options"
UNKNOWN = "the content is neither a picture of a known kind nor a PDF"
NO_PICTURE = "page 1: the content is not a picture that can be decoded"
DEFAULT_ENGINE = pathlib.Path(PROGRAM).parents[1] / "lib/zelk/engine/libQVEngine.so"


def chunk(name, body, damage=0):
    return struct.pack(">I", len(body)) + name + body + struct.pack(
        ">I", zlib.crc32(name + body) ^ damage)


def png(damage=0):
    """A white picture of 4 x 2 pixels; `damage` changes the checksum of its data."""
    pixels = zlib.compress(b"".join(b"\0" + b"\xff" * 12 for _ in range(2)))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 4, 2, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", pixels, damage) + chunk(b"IEND", b""))


FILES = {
    "page.bmp": bmp(4, 2),
    "three.pdf": pdf((36, 36), (36, 36), (36, 36)),
    "huge.pdf": pdf((2000, 2000)),
    "empty.png": b"",
    "zeros.tif": bytes(5000),
    "text.pdf": b"just words\n",
    "office.pdf": b"PK\x03\x04" + bytes(100),
    "page.jpg": b"\n<!DOCTYPE html>\n<html><body>Not found</body></html>\n",
    "photo.jpg": b"\0\0\0\x18ftypheic" + bytes(100),
    "signature.png": png()[:8],
    "cut.png": png()[:45],
    "half.png": png()[:-12],
    "crc.png": png(damage=1),
    "cut.jpg": b"\xff\xd8\xff\xe0\x00\x10JFIF\0\1\1\0\0\1\0\1\0\0\xff\xdb\x00\x43",
    "cut.tif": b"II*\0" + struct.pack("<I", 5000) + bytes(100),
    "cut.bmp": bmp(40, 20)[:30],
    "cut.pdf": pdf((36, 36))[:60],
    "list": b"{F}/page.bmp\n{F}/absent.png\n",
    "blank.list": b"# nothing\n\n",
}

# name: arguments, exit code, lines on standard error
SLIPS = {
    "no arguments": ([], 1, ["FILE is required" + HELP]),
    "unknown option": (["--colour", "{F}/page.bmp"], 1, ["there is no option --colour" + HELP]),
    "misspelt option": (["--fromat", "pdf", "{F}/page.bmp"], 1,
                        ["there is no option --fromat, --format may be meant" + HELP]),
    "shortened option": (["--page-time", "3", "{F}/page.bmp"], 1,
                         ["there is no option --page-time, --page-timeout may be meant" + HELP]),
    "unknown letter": (["-x", "{F}/page.bmp"], 1, ["there is no option -x" + HELP]),
    "missing value": (["{F}/page.bmp", "--dpi"], 1, ["--dpi: its value is missing" + HELP]),
    "dpi that is no number": (["--dpi", "high", "{F}/page.bmp"], 1,
                              ["--dpi: Value high not in range 36 to 2400" + HELP]),
    "dpi out of range": (["--dpi", "5", "{F}/page.bmp"], 1,
                         ["--dpi: Value 5 not in range 36 to 2400" + HELP]),
    "jobs that are none": (["--jobs", "0", "{F}/page.bmp"], 1,
                           ["--jobs: Value 0 not in range 1 to 1024" + HELP]),
    "memory limit out of range": (["--memory-limit", "1", "{F}/page.bmp"], 1,
                                  ["--memory-limit: Value 1 not in range 64 to 1048576" + HELP]),
    "pages malformed": (["--pages", "3..4", "{F}/three.pdf"], 1,
                        ['--pages: "3..4" is no list such as 3-7,12,20-' + HELP]),
    "pages that run backwards": (["--pages", "3-1", "{F}/three.pdf"], 1,
                                 ['--pages: "3-1" is no list such as 3-7,12,20-' + HELP]),
    "pages beyond the document": (["--pages", "7-", "{F}/three.pdf"], 2,
                                  ["{F}/three.pdf: none of its 3 pages is among --pages"]),
    "options that contradict": (["--verbose", "{F}/page.bmp"], 1,
                                ["--quiet: excludes --verbose" + HELP]),
    "two places for outputs": (["-o", "{F}/a", "-d", "{F}/b", "{F}/page.bmp"], 1,
                               ["--output: excludes --directory" + HELP]),
    "resume without a place": (["--resume", "{F}/page.bmp"], 1,
                               ["--resume: needs --output FILE or --directory DIR" + HELP]),
    "two outputs on one file": (
        ["--report", "{F}/out", "-o", "{F}/out", "{F}/page.bmp"], 1,
        ["the report and {F}/page.bmp would both be written to {F}/out"]),
    "output on its input": (["-o", "{F}/page.bmp", "{F}/page.bmp"], 1,
                            ["{F}/page.bmp is an input, it cannot be the output too"]),
    "absent file": (["{F}/absent.png"], 2, ["{F}/absent.png: No such file or directory"]),
    "file without permission": (["{F}/secret.bmp"], 2, ["{F}/secret.bmp: Permission denied"]),
    "folder without documents": (["{F}/nested"], 2, ["{F}/nested: holds no document"]),
    "empty folder": (["-r", "{F}/hollow"], 2, ["{F}/hollow: holds no document"]),
    "empty file": (["{F}/empty.png"], 2, ["{F}/empty.png: the file is empty"]),
    "zero bytes": (["{F}/zeros.tif"], 2,
                   ["{F}/zeros.tif: the file holds nothing but zero bytes, it was not copied to "
                    "its end"]),
    "text": (["{F}/text.pdf"], 2, ["{F}/text.pdf: " + UNKNOWN + ", it is a text"]),
    "ZIP archive": (["{F}/office.pdf"], 2,
                    ["{F}/office.pdf: " + UNKNOWN + ", it is a ZIP archive"]),
    "HTML page": (["{F}/page.jpg"], 2, ["{F}/page.jpg: " + UNKNOWN + ", it is an HTML page"]),
    "telephone's picture": (["{F}/photo.jpg"], 2,
                            ["{F}/photo.jpg: " + UNKNOWN + ", it is a HEIF picture"]),
    "PNG of a signature only": (
        ["{F}/signature.png"], 2,
        ["{F}/signature.png: " + NO_PICTURE + ": the file holds no more than its signature",
         "{F}/signature.png: the page cannot be read"]),
    "PNG cut": (["{F}/cut.png"], 2,
                ["{F}/cut.png: " + NO_PICTURE + ": the file is cut off within its chunk IDAT",
                 "{F}/cut.png: the page cannot be read"]),
    "PNG with a wrong checksum": (
        ["{F}/crc.png"], 2,
        ["{F}/crc.png: " + NO_PICTURE + ": the checksum of its chunk IDAT is wrong",
         "{F}/crc.png: the page cannot be read"]),
    "JPEG cut": (
        ["{F}/cut.jpg"], 2,
        ["{F}/cut.jpg: " + NO_PICTURE + ": the file is cut off before the data of the picture",
         "{F}/cut.jpg: the page cannot be read"]),
    "TIFF cut": (
        ["{F}/cut.tif"], 2,
        ["{F}/cut.tif: the content is not a picture that can be decoded: the file is cut off: its "
         "directory is at byte 5000, it has 108 bytes"]),
    "BMP cut": (
        ["{F}/cut.bmp"], 2,
        ["{F}/cut.bmp: " + NO_PICTURE + ": the file is cut off: it has 30 of the 2454 bytes that "
         "its header tells", "{F}/cut.bmp: the page cannot be read"]),
    "PDF cut": (["{F}/cut.pdf"], 2,
                ["{F}/cut.pdf: the PDF is damaged: the file is cut off, it does not end in %%EOF"]),
    "PDF behind a password": ([LOCKED], 8, [f"{LOCKED}: a password is needed (--password)"]),
    "wrong password": (["--password", "no", LOCKED], 8, [f"{LOCKED}: the password is wrong"]),
    "list absent": (["@{F}/none.list"], 2, ["@{F}/none.list: No such file or directory"]),
    "list of nothing": (["@{F}/blank.list"], 2, ["@{F}/blank.list: the list names no document"]),
    "list with an absent file": (["@{F}/list"], 2, ["{F}/absent.png: No such file or directory"]),
    "list's picture broken": (
        ["--image-list", "{F}/page.bmp", "{F}/crc.png"], 5,
        ["{F}/page.bmp: page 2: crc.png: the content is not a picture that can be decoded: "
         "the checksum of its chunk IDAT is wrong",
         "{F}/page.bmp: 1 of 2 pages could not be read"]),
    "list's file is no picture": (
        ["--image-list", "{F}/page.bmp", "{F}/office.pdf"], 5,
        ["{F}/page.bmp: page 2: office.pdf: " + UNKNOWN + ", it is a ZIP archive",
         "{F}/page.bmp: 1 of 2 pages could not be read"]),
    "too many pixels": (
        ["--max-pixels", "1000", "{F}/wide.bmp"], 2,
        ["{F}/wide.bmp: page 1: the picture has 200 x 20 pixels, --max-pixels allows 1000",
         "{F}/wide.bmp: the page cannot be read"]),
    "engine folder absent": (
        ["--engine", "{F}/none", "{F}/page.bmp"], 3,
        ["no engine: {F}/none/libQVEngine.so: No such file or directory"]),
    "engine folder without engine": (
        ["--engine", "{F}", "{F}/page.bmp"], 3,
        ["no engine: {F}/libQVEngine.so: No such file or directory"]),
    "output folder absent": (
        ["-o", "{F}/none/out.txt", "{F}/page.bmp"], 4,
        ["cannot write the output: {F}/none/out.txt: No such file or directory"]),
    "output is a folder": (["-o", "{F}", "{F}/page.bmp"], 4,
                           ["cannot write the output: {F}: Is a directory"]),
    "directory is a file": (
        ["-d", "{F}/text.pdf", "{F}/page.bmp"], 4,
        ["cannot write the output: {F}/text.pdf is no folder, --directory needs one"]),
    "directory below a file": (
        ["-d", "{F}/text.pdf/out", "{F}/page.bmp"], 4,
        ["cannot write the output: {F}/text.pdf/out: Not a directory"]),
    "output device full": (["-o", "/dev/full", "{F}/page.bmp"], 4,
                           ["{F}/page.bmp: cannot write /dev/full: No space left on device"]),
    "report's folder absent": (
        ["--report", "{F}/none/run.json", "{F}/page.bmp"], 4,
        ["cannot write the output: {F}/none/run.json: No such file or directory"]),
}


class Slips(ProgramTest):
    def setUp(self):
        super().setUp()
        for name, content in FILES.items():
            self.file(name, content.replace(b"{F}", os.fsencode(self.folder)))
        self.file("wide.bmp", bmp(200, 20))
        self.file("secret.bmp", bmp(4, 2)).chmod(0)
        (self.folder / "hollow").mkdir()
        (self.folder / "nested/below").mkdir(parents=True)
        (self.folder / "nested/below/page.bmp").write_bytes(bmp(4, 2))

    def filled(self, text):
        return os.fspath(text).replace("{F}", str(self.folder))

    def assert_says(self, result, code, *sentences):
        """Every line is one of the program's, and the sentences are among them."""
        self.assertEqual(result.returncode, code, result.stderr)
        lines = os.fsdecode(result.stderr).splitlines()
        for line in lines:
            self.assertTrue(line.startswith("zelk: "), lines)
        for sentence in sentences:
            self.assertIn("zelk: " + self.filled(sentence), lines)

    def test_each_slip_is_told_in_its_own_sentence(self):
        self.assertGreater(len(SLIPS), 40)
        # Superusers may read everything, unless that right is taken away.
        bounds = "-dac_override,-dac_read_search"
        wrapper = ["setpriv", "--bounding-set", bounds] if os.geteuid() == 0 else []
        for name, (arguments, code, sentences) in SLIPS.items():
            engine = None if "--engine" in arguments else self.ENGINE
            with self.subTest(name):
                quiet = [] if not arguments else ["--quiet"]
                result = self.run_program(*quiet, *map(self.filled, arguments), engine=engine,
                                          wrapper=wrapper)
                self.assert_says(result, code, *sentences)

    def test_standard_input_that_is_a_folder(self):
        folder = os.open(self.folder, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        self.assert_says(self.run_program("-q", "-", stdin=folder), 2,
                         "-: standard input is a folder")

    def test_standard_input_that_is_closed(self):
        wrapper = ["sh", "-c", 'exec "$@" <&-', "sh"]
        for more in ([], ["-d", "{F}/out"]):
            result = self.run_program("-q", *map(self.filled, more), "-", wrapper=wrapper)
            self.assert_says(result, 2, "-: standard input is closed")

    def test_standard_input_that_is_empty(self):
        self.assert_says(self.run_program("-q", "-", stdin=subprocess.DEVNULL), 2,
                         "-: the file is empty")

    def test_standard_output_that_is_closed(self):
        wrapper = ["sh", "-c", 'exec "$@" >&-', "sh"]
        self.assert_says(self.run_program("-q", self.folder / "page.bmp", wrapper=wrapper), 4,
                         "cannot write the output: standard output is closed")

    def test_standard_output_that_is_full(self):
        with open("/dev/full", "wb") as full:
            result = self.run_program("-q", self.folder / "page.bmp", stdout=full)
        self.assert_says(result, 4,
                         "cannot write the output: standard output: No space left on device")

    def test_a_page_that_takes_too_long(self):
        result = self.run_program("-q", "--page-timeout", "1", self.folder / "page.bmp",
                                  faults="hang@4")
        self.assert_says(result, 5, "{F}/page.bmp: page 1: no result within 1 seconds "
                                    "(--page-timeout)")

    def test_an_engine_that_refuses_to_start(self):
        result = self.run_program("-q", self.folder / "page.bmp", engine=FAKES / "refusing")
        self.assertEqual(result.returncode, 3)
        self.assertRegex(os.fsdecode(result.stderr),
                         f"^zelk: no engine: {FAKES}/refusing/libQVEngine.so did not start: .*7")

    def test_a_scratch_folder_that_is_absent(self):
        result = self.run_program("-q", self.folder / "page.bmp",
                                  wrapper=["env", f"TMPDIR={self.folder}/none"])
        self.assertEqual(result.returncode, 4)
        self.assertIn(b"cannot write the output: the folder for temporary files (TMPDIR): ",
                      result.stderr)


@unittest.skipIf("ZELK_SANITIZED" in os.environ, "sanitizers need all of the address space")
class ShortOfMemory(ProgramTest):
    def assert_tells_of_the_limit(self, result, code, limit):
        self.assertEqual(result.returncode, code, result.stderr)
        first = os.fsdecode(result.stderr).splitlines()[0]
        self.assertRegex(first, f"--memory-limit (is )?{limit}")
        for untrue in ("cannot be rendered", "cannot be decoded", "damaged"):
            self.assertNotIn(untrue, first)

    def test_a_page_too_large_to_be_rendered(self):
        document = self.file("huge.pdf", pdf((2000, 2000)))
        result = self.run_program("-q", "--dpi", "300", "--memory-limit", "200", document)
        self.assert_tells_of_the_limit(result, 5, 200)

    def test_a_picture_too_large_to_be_decoded(self):
        picture = self.file("wide.bmp", bmp(10000, 8000))
        result = self.run_program("-q", "--memory-limit", "300", picture)
        self.assert_tells_of_the_limit(result, 5, 300)

    def test_an_engine_that_ends_the_process_for_lack_of_memory(self):
        page = self.file("page.bmp", bmp(4, 2))
        result = self.run_program("-q", "--memory-limit", "400", page, faults="reserve@4")
        self.assert_tells_of_the_limit(result, 5, 400)
        self.assertIn(b"crashed (SIGABRT)", result.stderr)

    def test_a_limit_below_what_the_engine_s_libraries_take(self):
        if not DEFAULT_ENGINE.exists():
            self.skipTest("the default engine is not built")
        page = self.file("page.bmp", bmp(4, 2))
        result = self.run_program("-q", "--memory-limit", "64", page, engine=None)
        self.assert_tells_of_the_limit(result, 3, 64)


@unittest.skipUnless(DEFAULT_ENGINE.exists(), "the default engine is not built")
class Languages(ProgramTest):
    """The folder of language data holds English and simplified Chinese."""

    TABLE = {
        "deu": 'no engine: --lang deu: "deu" is not installed; the package tesseract-ocr-deu '
               "brings it; {T} has chi_sim, eng",
        "chi_tra_vert": 'no engine: --lang chi_tra_vert: "chi_tra_vert" is not installed; the '
                        "package tesseract-ocr-chi-tra-vert brings it; {T} has chi_sim, eng",
        "eng+deu": 'no engine: --lang eng+deu: "deu" is not installed; the package '
                   "tesseract-ocr-deu brings it; {T} has chi_sim, eng",
        "deu+fra": 'no engine: --lang deu+fra: "deu" and "fra" are not installed; the package '
                   "tesseract-ocr-deu brings it, the package tesseract-ocr-fra brings it; {T} has "
                   "chi_sim, eng",
        "script/Latin": 'no engine: --lang script/Latin: "script/Latin" is not installed; the '
                        "package tesseract-ocr-script-latn brings it; {T} has chi_sim, eng",
        "ENG": 'no engine: --lang ENG: "ENG" is not installed; "eng" is; {T} has chi_sim, eng',
        "DEU": 'no engine: --lang DEU: "DEU" is not installed; the package tesseract-ocr-deu '
               'brings "deu"; {T} has chi_sim, eng',
        "english": 'no engine: --lang english: "english" is not installed; no language is called '
                   '"english"; {T} has chi_sim, eng',
        "eng,deu": 'no engine: --lang eng,deu: "eng,deu" is no list of languages such as '
                   "eng|chi_sim+eng",
    }

    def setUp(self):
        super().setUp()
        data = tempfile.TemporaryDirectory()
        self.addCleanup(data.cleanup)
        self.data = data.name
        for name in ("eng", "chi_sim", "osd"):
            (pathlib.Path(data.name) / f"{name}.traineddata").write_bytes(b"")
        self.page = self.file("page.bmp", bmp(4, 2))

    def recognize(self, language, data):
        return self.run_program("-q", "--lang", language, self.page, engine=None,
                                wrapper=["env", f"QV_TESSDATA={data}"])

    def test_a_language_that_is_not_installed_is_told_with_its_package(self):
        for language, sentence in self.TABLE.items():
            with self.subTest(language):
                result = self.recognize(language, self.data)
                self.assert_result(result, 3, b"")
                self.assertEqual(os.fsdecode(result.stderr),
                                 f"zelk: {sentence}\n".replace("{T}", self.data))

    def test_a_folder_of_languages_that_is_absent(self):
        result = self.recognize("eng", "/none")
        self.assert_result(result, 3, b"")
        self.assertTrue(re.match(r'zelk: no engine: --lang eng: folder of language data "/none" '
                                 r"cannot be read: No such file or directory\n",
                                 os.fsdecode(result.stderr)), result.stderr)

    def test_another_engine_may_know_other_languages(self):
        result = self.run_program("-q", "--lang", "Klingon", self.page)
        self.assert_result(result, 0, b"4x2 Klingon\n")


if __name__ == "__main__":
    unittest.main()
