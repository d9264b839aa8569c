# SPDX-License-Identifier: Apache-2.0
"""Many workers give what one gives, in order."""

import json
import os
import pathlib
import subprocess
import unittest

from program import ProgramTest, bmp, pdf


class Jobs(ProgramTest):
    def outputs(self, jobs, *files, engine=ProgramTest.ENGINE):
        out = self.folder / f"jobs-{jobs}"
        result = self.run_program("--jobs", str(jobs), "--format", "text,json,pdf,html", "-d", out,
                                  *files, engine=engine)
        self.assert_result(result, 0)
        return {path.name: path.read_bytes() for path in out.iterdir()}

    def test_bytes_do_not_depend_on_the_number_of_workers(self):
        long = self.file("long.pdf", pdf(*((36 + number, 72) for number in range(40))))
        files = [long] + [self.file(f"{width}.bmp", bmp(width, 9)) for width in range(20, 30)]
        one = self.outputs(1, *files)
        self.assertEqual(len(one), 44)
        for jobs in (2, 3, 7):
            self.assertEqual(self.outputs(jobs, *files), one)

    def test_results_on_standard_output_come_in_the_order_of_the_inputs(self):
        files = [self.file("long.pdf", pdf(*((36 + number, 72) for number in range(20))))]
        files += [self.file(f"{width}.bmp", bmp(width, 9)) for width in range(20, 30)]
        expected = "".join(f"{36 + number}x72 default\n" for number in range(20))
        expected += "".join(f"{width}x9 default\n" for width in range(20, 30))
        result = self.run_program("--jobs", "3", "--dpi", "72", *files, fake="steady")
        self.assert_result(result, 0, expected.encode())
        self.assert_nothing_is_left()

    def test_there_are_as_many_workers_as_cores_that_may_be_used(self):
        files = [self.file(f"{width}.bmp", bmp(width, 9)) for width in range(20, 50)]
        report = self.folder / "report.json"
        core = min(os.sched_getaffinity(0))
        result = self.run_program("--report", report, *files, fake="steady",
                                  wrapper=("taskset", "-c", str(core)))
        self.assert_result(result, 0)
        totals = json.loads(report.read_text(encoding="utf-8"))["totals"]
        self.assertEqual((totals["documents"], totals["workers_started"]), (30, 1))



class ManyDocuments(ProgramTest):
    def test_two_thousand_documents_need_little_of_the_supervisor(self):
        picture = bmp(20, 10)
        inputs = self.folder / "in"
        inputs.mkdir()
        for number in range(2000):
            (inputs / f"{number:04}.bmp").write_bytes(picture)
        process = subprocess.Popen(
            self.command("--jobs", "2", "--quiet", "-d", self.folder / "out", inputs),
            env=self.environment(), stderr=subprocess.PIPE)
        descriptors = 0
        peak = 0
        while process.poll() is None:
            try:
                descriptors = max(descriptors, len(os.listdir(f"/proc/{process.pid}/fd")))
                status = pathlib.Path(f"/proc/{process.pid}/status").read_text(encoding="ascii")
                peak = max([peak] + [int(line.split()[1]) for line in status.splitlines()
                                     if line.startswith("VmHWM")])
            except OSError:
                pass
            subprocess.run(["sleep", "0.1"], check=True)
        self.assertEqual(process.returncode, 0, process.stderr.read())
        process.stderr.close()
        self.assertEqual(len(list((self.folder / "out").glob("*.txt"))), 2000)
        self.assertLess(descriptors, 40)
        self.assertGreater(peak, 0)
        if not os.environ.get("ZELK_SANITIZED"):
            self.assertLess(peak, 64 * 1024)


if __name__ == "__main__":
    unittest.main()
