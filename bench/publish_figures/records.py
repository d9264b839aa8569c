# SPDX-License-Identifier: Apache-2.0
"""Raw results: one file of JSON lines for each measurement, written as they come.

The first line tells how it was measured; then one line for each run ({"figure": value}), or for
each document ({"document": name, ...}), and {"failed": reason} when it broke off. Measuring again
replaces the file.
"""
import json


class Records:
    def __init__(self, folder):
        self.folder = folder

    def path(self, measurement):
        return self.folder / f'{measurement}.jsonl'

    def begin(self, measurement, told):
        self.folder.mkdir(parents=True, exist_ok=True)
        self.path(measurement).unlink(missing_ok=True)
        self.add(measurement, told)

    def add(self, measurement, record):
        with open(self.path(measurement), 'a', encoding='utf8') as file:
            file.write(json.dumps(record, ensure_ascii=False) + '\n')

    def read(self, measurement):
        """(how it was measured, the records); (None, []) when it never was."""
        if not self.path(measurement).exists():
            return None, []
        with open(self.path(measurement), encoding='utf8') as file:
            told, *records = [json.loads(line) for line in file]
        return told, records


def failure_of(records):
    return next((record['failed'] for record in records if 'failed' in record), None)


def values_of(records, figure):
    return [record[figure] for record in records if figure in record]


def documents_of(records):
    return [record for record in records if 'document' in record]
