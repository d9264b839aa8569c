# SPDX-License-Identifier: Apache-2.0
"""All records of a folder together: figures by their keys, failures by measurement."""
from . import derive
from .records import failure_of, values_of
from .samples import summed_up


class Results:
    def __init__(self, records, names):
        self.told, self.records = {}, {}
        for name in names:
            self.told[name], self.records[name] = records.read(name)
        self.all = [record for name in names for record in self.records[name]]
        self.all += [derive.growth(self.of('document_memory'), 'document_memory', 20),
                     derive.growth(self.of('producer_memory'), 'producer_memory', 1),
                     derive.sizes(self.of('full_pages')), derive.hostile(self.of('hostile'))]

    def of(self, measurement):
        return self.records[measurement]

    def samples(self, key):
        """The figure with its spread, None when no run told it."""
        values = values_of(self.all, key)
        return summed_up(values) if values else None

    def failure(self, measurement):
        """Why a measurement broke off or has nothing; None when it went well."""
        if self.told[measurement] is None:
            return 'not measured'
        failed = failure_of(self.of(measurement))
        return failed and f'failed: {failed}'

    def measured(self):
        return {name: told for name, told in self.told.items() if told is not None}
