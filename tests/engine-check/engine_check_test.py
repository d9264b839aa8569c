# SPDX-License-Identifier: Apache-2.0
"""zelk-engine-check passes engines that keep the contract, and names the rule that one breaks."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["ZELK_ENGINE_CHECK"]
FAKES = pathlib.Path(os.environ["ZELK_FAKES"])
EXAMPLE = os.environ["ZELK_EXAMPLE_ENGINE"]
DEFAULT = os.environ.get("ZELK_DEFAULT_ENGINE")
ROOT = pathlib.Path(os.environ["ZELK_ROOT"])
DATA = ROOT / "tests/data"
SCHEMA = ROOT / "docs/engine-check.schema.json"

# Fault of the stand-in engine: the one check that notices, how badly, and a part of what it saw.
FAULTS = {
    "NeedsDirectory": ("lifecycle.wrong-directory", "fail", "signal 6 (Aborted)"),
    "LeaksAtStart": ("lifecycle.restart", "fail", "KiB more with each start"),
    "LeavesFileOpen": ("lifecycle.descriptors", "fail", "open files are left"),
    "LeavesThread": ("lifecycle.threads", "fail", "1 threads are left"),
    "StaysMapped": ("lifecycle.unmapped", "fail", "stays mapped"),
    "ExitHandler": ("lifecycle.exit-stopped", "fail", "signal 11"),
    "NeedsStop": ("lifecycle.exit-started", "warn", "signal 6"),
    "CrashesOn0x0": ("rasters.0x0", "fail", "signal 11"),
    "ExitsOn1x1": ("rasters.1x1", "fail", "exit code 3"),
    "HangsOn1x40000": ("rasters.1x40000", "fail", "no end within 6 s"),
    "ReadsBehind40000x1": ("rasters.40000x1", "fail", "signal 11"),
    "ThrowsOnNoise": ("rasters.noise", "fail", "noise"),
    "WritesToBlack": ("rasters.black", "fail", "signal 11"),
    "ReadsPadding": ("rasters.padding", "fail", "at 1 bits"),
    "ReadsRasterLater": ("rasters.withdrawn", "fail", "signal 11"),
    "TextAtStart": ("order.results-first", "fail", "before any image"),
    "ReadsNothing": ("order.recognize-first", "fail", "gives 0"),
    "ReadsOn": ("order.recognize-twice", "fail", "another result"),
    "TextOnce": ("order.results-twice", "fail", "another result"),
    "KeepsImage": ("order.refused-raster", "fail", "after a null raster was refused"),
    "KeepsText": ("order.page-after-page", "fail", "what the page before it says"),
    "LoadsAnything": ("order.load-image-file", "fail", "not there is accepted"),
    "ReadsNullPath": ("order.load-image-file", "fail", "signal 11"),
    "LoadsNullPath": ("order.load-image-file", "fail", "a null path is accepted"),
    "SavesNothing": ("order.save-file", "fail", "another text"),
    "Blind": ("results.found", "warn", "no characters"),
    "NullText": ("results.texts", "fail", "null before recognition"),
    "AbsurdLines": ("results.line-count", "fail", "200000 lines"),
    "MoreCharacters": ("results.line-steps", "fail", "line 0: "),
    "EndlessLines": ("results.line-range", "fail", "line -1: true"),
    "BoxesOutside": ("results.boxes", "fail", "left edge -5"),
    "UnevenBottoms": ("results.bottoms", "warn", "line 0: bottoms"),
    "ControlCodes": ("results.codes", "fail", "U+0007"),
    "LinesReversed": ("results.line-order", "fail", "the one before it"),
    "TextWithoutLines": ("results.lines-and-text", "warn", "different from number"),
    "WideDiffers": ("results.narrow-and-wide", "fail", "in wide text"),
    "NotUtf8": ("results.narrow-and-wide", "warn", "not UTF-8"),
    "NoLineFeed": ("results.line-feed", "warn", "last line"),
    "BrokenJson": ("json.4096000-bytes", "fail", "not JSON"),
    "FillsJson": ("json.4096-bytes", "fail", "no zero byte"),
    "OverrunsJson": ("json.16-bytes", "fail", "1 bytes are written behind it"),
    "FillsOneByte": ("json.1-byte", "fail", "no zero byte"),
    "BrokenWhiteJson": ("json.white-page", "fail", "not JSON"),
    "CountsPages": ("resources.determinism", "warn", "another JSON"),
    "LeaksPages": ("resources.pages", "warn", "after 100 pages"),
    "Prints": ("resources.standard-output", "fail", "recognised a page"),
    "IgnoresSignal": ("resources.host", "warn", "instead of"),
    "FailsAfterFork": ("resources.after-fork", "fail", "another result"),
    "HangsInFork": ("resources.in-fork", "warn", "no end within 2 s"),
}
# What a fault may bring about besides, depending on the moment: a thread that begins or runs while
# its library is closed can hold it, and its stack counts as growth.
CONSEQUENCES = {"LeavesThread": ("lifecycle.restart", "lifecycle.unmapped")}


def check(*arguments, fault=""):
    return subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, check=False,
                          env={**os.environ, "FAKE_FAULT": fault})


def not_passed(report):
    return [(finding["check"], finding["result"]) for finding in report["findings"]
            if finding["result"] != "pass"]


class EngineCheck(unittest.TestCase):
    def report(self, *arguments, code, fault=""):
        result = check("--json", *arguments, fault=fault)
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        return json.loads(result.stdout)

    def assert_sound(self, *arguments):
        report = self.report(*arguments, code=0)
        self.assertEqual(report["result"], "pass")
        self.assertEqual(not_passed(report), [])
        self.assertEqual(report["not_run"], [])
        listed = check("--list").stdout.splitlines()
        self.assertEqual([finding["check"] for finding in report["findings"]],
                         [line.split()[0] for line in listed])
        return report

    def test_the_example_engine_is_sound(self):
        self.assert_sound(EXAMPLE)

    def test_the_stand_in_without_its_faults_is_sound(self):
        self.assert_sound(FAKES / "faulty")

    @unittest.skipUnless(DEFAULT, "the default engine is not built")
    def test_the_default_engine_is_sound(self):
        report = self.assert_sound(DEFAULT)
        found = {finding["check"]: finding["seen"] for finding in report["findings"]}
        self.assertIn("in 5 lines", found["results.found"])

    @unittest.skipUnless(DEFAULT, "the default engine is not built")
    def test_the_default_engine_is_sound_on_a_chinese_page(self):
        report = self.report(DEFAULT, "--image", DATA / "zh-landscape-200-palette.png",
                             "--only", "results", "--only", "json", "--only", "rasters.padding",
                             code=0)
        self.assertEqual(not_passed(report), [])

    def test_each_fault_is_found_by_its_check_alone(self):
        for fault, (name, severity, seen) in FAULTS.items():
            with self.subTest(fault):
                code = {"warn": 5, "fail": 6}[severity]
                report = self.report(FAKES / "faulty", "--timeout", "6", code=code, fault=fault)
                found = [(check, result) for check, result in not_passed(report)
                         if check not in CONSEQUENCES.get(fault, ())]
                self.assertEqual(found, [(name, severity)])
                self.assertEqual(report["result"], severity)
                finding = next(f for f in report["findings"] if f["check"] == name)
                self.assertIn(seen, finding["seen"])

    def test_every_check_has_a_fault_that_it_finds(self):
        listed = {line.split()[0] for line in check("--list").stdout.splitlines()}
        elsewhere = {"symbols.entry-points", "symbols.exports", "lifecycle.start"}
        # Like others in what they do, for other rasters.
        alike = {"rasters.white", "rasters.text"}
        self.assertEqual(listed - elsewhere - alike, {name for name, _, _ in FAULTS.values()})

    def test_a_symbol_too_many_is_named(self):
        report = self.report(FAKES / "stray_export", code=6)
        self.assertEqual(not_passed(report), [("symbols.exports", "fail")])
        self.assertEqual(report["findings"][1]["seen"], "stray_function is exported")

    def test_a_missing_entry_point_is_named_and_nothing_else_is_examined(self):
        for symbol in ("qv_init_engine", "qv_get_result_json"):
            with self.subTest(symbol):
                report = self.report(FAKES / f"lacks_{symbol}", code=6)
                self.assertEqual(not_passed(report), [("symbols.entry-points", "fail")])
                self.assertEqual(report["findings"][0]["seen"], f"no {symbol}")
                self.assertIn("lifecycle.start", report["not_run"])

    def test_an_engine_that_does_not_start_is_not_examined_further(self):
        report = self.report(FAKES / "refusing", code=6)
        self.assertEqual(not_passed(report), [("lifecycle.start", "fail")])
        self.assertIn("_qv_init_engine errcode: 7", report["findings"][-1]["seen"])
        self.assertIn("results.found", report["not_run"])

    def test_without_an_engine_there_is_nothing_to_examine(self):
        with tempfile.TemporaryDirectory() as folder:
            result = check(folder)
            self.assertEqual((result.returncode, result.stdout), (3, ""))
            self.assertIn("libQVEngine.so: dlopen () ERROR, Message(", result.stderr)
            pathlib.Path(folder, "libQVEngine.so").write_bytes(b"no library")
            result = check(folder)
            self.assertEqual(result.returncode, 3)
            self.assertIn("file too short", result.stderr)

    def test_wrong_usage(self):
        for arguments in ((), ("--colour", EXAMPLE), ("--timeout", "0", EXAMPLE),
                          ("--only", "nothing", EXAMPLE), ("--image", "/nowhere.png", EXAMPLE)):
            with self.subTest(arguments):
                result = check(*arguments)
                self.assertEqual((result.returncode, result.stdout), (1, ""))
                self.assertNotEqual(result.stderr, "")

    def test_each_finding_is_one_line(self):
        result = check("--only", "json", "--only", "results.found", EXAMPLE)
        self.assertEqual(result.returncode, 0)
        *lines, summary = result.stdout.splitlines()
        self.assertEqual(len(lines), 6)
        for line in lines:
            self.assertRegex(line, r"^pass  (json|results)\.\S+ +expected: .+; seen: .+$")
        self.assertEqual(summary, "6 passed, 0 warned, 0 failed")
        self.assertEqual(result.stderr, "")

    def test_an_output_that_cannot_be_written_is_told(self):
        with open("/dev/full", "w", encoding="utf-8") as full:
            result = subprocess.run([PROGRAM, EXAMPLE, "--only", "json"], stdout=full,
                                    stderr=subprocess.PIPE, check=False)
        self.assertEqual(result.returncode, 4)

    def test_json_conforms_to_its_schema(self):
        def is_valid(text):
            with tempfile.NamedTemporaryFile("w", suffix=".json") as file:
                file.write(text)
                file.flush()
                command = ["/usr/bin/python3", "-W", "ignore", "-m", "jsonschema", "-i", file.name,
                           SCHEMA]
                return subprocess.run(command, capture_output=True, check=False).returncode == 0

        for folder in ("faulty", "refusing"):
            text = check("--json", FAKES / folder, "--only", "lifecycle.start", "--only",
                         "json", fault="BrokenJson").stdout
            self.assertTrue(is_valid(text), text)
        self.assertFalse(is_valid(text.replace('"fail"', '"bad"')))
        self.assertTrue(is_valid(check("--json", EXAMPLE, "--only", "json", "--image",
                                       DATA / "chinese.png").stdout))

    def test_nothing_is_left_in_the_folder_for_temporary_files(self):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([PROGRAM, EXAMPLE], stdout=subprocess.DEVNULL, check=True,
                           env={**os.environ, "TMPDIR": folder})
            self.assertEqual(os.listdir(folder), [])


if __name__ == "__main__":
    unittest.main()
