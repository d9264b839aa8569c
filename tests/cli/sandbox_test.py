# SPDX-License-Identifier: Apache-2.0
"""What an engine that was taken over can do to the machine and to the document: nothing."""

import os
import pathlib
import re
import unittest

from program import DATA, FAKES, ProgramTest, bmp, pdf

PROBE = FAKES / "probe"
SECURITY = pathlib.Path(__file__).resolve().parents[2] / "SECURITY.md"


def documented():
    """What SECURITY.md says of each way out: in the sandbox, and without it."""
    text = SECURITY.read_text(encoding="utf-8")
    table = re.search(r"\| what is tried \|.*?\n\n", text, re.DOTALL)
    rows = [[cell.strip() for cell in line.strip("|").split("|")]
            for line in table.group().strip().splitlines()[2:]]
    return {row[0]: (row[1], row[2]) for row in rows}


class Escapes(ProgramTest):
    """The probe engine tries each way out on the first page and tells what got through."""

    WITHOUT = {"possible": "possible", "root": "for root", "perhaps": "depends on the kernel",
               "closed": "refused"}

    def setUp(self):
        super().setUp()
        self.document = self.file("document.pdf", pdf((36, 36), (72, 36)))
        self.file("secret", b"secret")

    def probe(self, *arguments):
        """The lines of the report: {section: {name: (result, without)}}."""
        content = self.document.read_bytes()
        names = self.names()
        with open(self.folder / "secret", "rb") as inherited:
            result = self.run_program(*arguments, self.document, engine=PROBE,
                                      pass_fds=[inherited.fileno()])
        self.assert_result(result, 0)
        self.assertEqual(self.document.read_bytes(), content)
        self.assertEqual(self.names(), names)
        found = {"escape": {}, "need": {}}
        for line in result.stdout.decode().splitlines():
            section, name, rest = line.split(": ")
            found[section][name] = tuple(rest.split(", "))
        return found

    @unittest.skipIf(os.environ.get("ZELK_SANITIZED"), "sanitizers need some of it themselves")
    def test_nothing_gets_through(self):
        found = self.probe()
        through = [name for name, (result, _) in found["escape"].items() if result == "through"]
        self.assertEqual(through, [])
        refused = [name for name, (result, _) in found["need"].items() if result != "through"]
        self.assertEqual(refused, [])

    def test_without_the_sandbox_the_probe_can_do_it(self):
        for name, (result, without) in self.probe("--no-sandbox")["escape"].items():
            with self.subTest(name):
                if without == "possible" or (without == "root" and os.geteuid() == 0):
                    self.assertEqual(result, "through")
                if without == "closed":
                    self.assertEqual(result, "refused")

    def test_the_documented_ways_are_those_that_are_tried(self):
        found = self.probe()["escape"]
        self.assertEqual(documented(), {name: ("refused", self.WITHOUT[without])
                                        for name, (_, without) in found.items()})


class Originals(ProgramTest):
    def setUp(self):
        super().setUp()
        self.sizes = (36, 72, 108, 144)
        self.document = self.file("document.pdf", pdf(*((width, 36) for width in self.sizes)))

    def test_a_run_leaves_no_trace_on_its_documents(self):
        before = self.document.stat()
        picture = self.file("a.bmp", bmp(4, 2))
        for arguments in ((self.document,), ("--no-sandbox", self.document),
                          ("--image-list", "-o", self.folder / "list.txt", picture)):
            self.assert_result(self.run_program(*arguments), 0)
        after = self.document.stat()
        self.assertEqual((after.st_ctime_ns, after.st_mtime_ns, after.st_nlink),
                         (before.st_ctime_ns, before.st_mtime_ns, 1))

    def test_a_document_that_is_replaced_is_read_to_its_end(self):
        self.file("other.pdf", pdf((200, 200)))
        result = self.run_program("--dpi", "72", "--jobs", "1", "--recycle", "1", "--no-sandbox",
                                  self.document, faults="replace@36")
        expected = "".join(f"{width}x36 default\n" for width in self.sizes)
        self.assert_result(result, 0, expected.encode())
        self.assertNotIn("other.pdf", self.names())

    def test_a_document_that_shrinks_keeps_the_pages_that_are_done(self):
        result = self.run_program("--dpi", "72", "--jobs", "1", "--recycle", "1", "--no-sandbox",
                                  self.document, faults="shrink@72")
        self.assert_result(result, 5, b"36x36 default\n72x36 default\n")
        self.assert_complains(result, "page 3: ", "page 4: ")


class Documents(ProgramTest):
    def test_the_default_engine_needs_no_more(self):
        page = DATA / "english.tif"
        for arguments in ((), ("--no-sandbox",)):
            result = self.run_program(*arguments, "--format", "text", page, engine=None)
            self.assert_result(result, 0)
            self.assertIn(b"This is a lot of 12 point text", result.stdout)

    def test_every_kind_of_document_and_output_can_be_handled_inside(self):
        out = self.folder / "out"
        document = self.file("three.pdf", pdf((36, 36), (72, 36), (108, 36)))
        result = self.run_program("-d", out, "--format", "text,json,pdf,html", document,
                                  *(DATA / name for name in ("english.tif", "chinese.png")))
        self.assert_result(result, 0)
        self.assertEqual(len(list(out.iterdir())), 12)


if __name__ == "__main__":
    unittest.main()
