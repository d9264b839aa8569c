# SPDX-License-Identifier: Apache-2.0
"""The report and --progress json are what their schemas say."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

import jsonschema

SAMPLES = os.environ["ZELK_SAMPLES"]
DOCS = pathlib.Path(os.environ["ZELK_DOCS"])


def validator(name):
    schema = json.loads((DOCS / name).read_text(encoding="utf-8"))
    kind = jsonschema.validators.validator_for(schema)
    kind.check_schema(schema)
    return kind(schema)


class ConsoleSchemas(unittest.TestCase):
    def sample_report(self):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "report.json"
            subprocess.run([SAMPLES, "report", path], check=True)
            return json.loads(path.read_text(encoding="utf-8"))

    def test_report(self):
        report = self.sample_report()
        validator("report.schema.json").validate(report)
        states = [document["state"] for document in report["documents"]]
        self.assertEqual(states, ["delivered", "delivered with failed pages", "unreadable",
                                  "password needed", "failed", "output failed", "skipped",
                                  "interrupted"])
        damaged = report["documents"][1]
        self.assertEqual(damaged["name"], "b\\xFF.pdf")
        self.assertTrue(damaged["name_escaped"])
        self.assertEqual(damaged["worker_memory_kib"], 2000)
        self.assertEqual(damaged["failed_pages"], 1)
        self.assertEqual(damaged["pages"][0],
                         {"page": 1, "state": "recognised", "seconds": 0.5,
                          "worker_memory_kib": 1000})
        self.assertEqual(damaged["pages"][2]["cause"], "it took longer than 180 seconds")
        self.assertEqual(report["totals"]["seconds"], 370.5)

    def test_report_schema_refuses_what_is_not_described(self):
        check = validator("report.schema.json")
        for change in ({"state": "lost"}, {"surprise": 1}, {"seconds": -1}):
            with self.subTest(change):
                report = self.sample_report()
                report["documents"][0].update(change)
                self.assertFalse(check.is_valid(report))

    def test_progress(self):
        run = subprocess.run([SAMPLES, "progress"], check=True, capture_output=True)
        events = [json.loads(line) for line in run.stderr.decode("utf-8").splitlines()]
        check = validator("progress-json.schema.json")
        for event in events:
            check.validate(event)
        kinds = [event["event"] for event in events]
        self.assertEqual(kinds[0], "start")
        self.assertEqual(kinds[-1], "end")
        self.assertEqual({kind: kinds.count(kind) for kind in kinds},
                         {"start": 1, "document": 5, "page": 7, "finished": 8, "end": 1})
        self.assertFalse(check.is_valid({**events[0], "event": "begin"}))
        self.assertFalse(check.is_valid({**events[0], "surprise": 1}))


if __name__ == "__main__":
    unittest.main()
