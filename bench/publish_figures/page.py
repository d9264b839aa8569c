# SPDX-License-Identifier: Apache-2.0
"""A page of Markdown tables that remembers which targets were met."""
import pathlib
import textwrap

REASONS = pathlib.Path(__file__).with_name('reasons.tsv')
UNKNOWN = 'No reason is known yet.'


def known_reasons(path=REASONS):
    """{figure: why it misses its target}."""
    lines = path.read_text(encoding='utf8').splitlines()
    return dict(line.split('\t', 1) for line in lines if line.strip())


def shown(value, digits=2):
    return f'{value:,.{digits}f}'


def escaped(cell):
    return str(cell).replace('|', '\\|').replace('\n', ' ')


class Page:
    def __init__(self, results, reasons):
        self.results, self.reasons = results, reasons
        self.lines, self.verdicts = [], []

    def text(self, paragraph):
        self.lines += [*textwrap.wrap(paragraph, 118, break_long_words=False,
                                      break_on_hyphens=False), '']

    def table(self, head, rows):
        self.lines.append(f'| {" | ".join(head)} |')
        self.lines.append('|---' * len(head) + '|')
        self.lines += [f'| {" | ".join(map(escaped, row))} |' for row in rows]
        self.lines.append('')

    def mark(self, key, what, value, target, met):
        """Remembers what a target says of a value; returns the last cells of its row."""
        self.verdicts.append((key, what, value, target, met))
        return [target, 'met' if met else '**missed**']

    def judged(self, figure, value, digits):
        if figure.target is None:
            return ['', '']
        told = f'{shown(value, digits)} {figure.unit if not figure.reference else ""}'.strip()
        return self.mark(figure.key, figure.what, told, str(figure.target),
                         figure.target.met_by(value))

    def absent(self, figure, measurement, width):
        """The row of a figure that no run told."""
        reason = self.results.failure(measurement) or 'not measured'
        target = '' if figure.target is None else str(figure.target)
        self.verdicts.append((figure.key, figure.what, reason, target, None))
        return [figure.what, reason, *[''] * (width - 4), target, '']

    def absolute(self, measurement, figures):
        """Rows of figures that stand alone."""
        rows = []
        for figure in figures:
            samples = self.results.samples(figure.key)
            if samples is None:
                rows.append(self.absent(figure, measurement, 6))
                continue
            spread = f'{shown(samples.low, figure.digits)} to {shown(samples.high, figure.digits)}'
            median = f'{shown(samples.median, figure.digits)} {figure.unit}'.strip()
            rows.append([figure.what, median, spread, samples.runs,
                         *self.judged(figure, samples.median, figure.digits)])
        return rows

    def compared(self, measurement, figures):
        """Rows of figures with their references."""
        rows = []
        for figure in figures:
            ratio = self.results.samples(f'{figure.key}:ratio')
            if ratio is None:
                rows.append(self.absent(figure, measurement, 8))
                continue
            rows.append([figure.what, self.side(figure, 'ours'), figure.reference,
                         self.side(figure, 'reference'), shown(ratio.median, 3),
                         f'{shown(ratio.low, 3)} to {shown(ratio.high, 3)}',
                         *self.judged(figure, ratio.median, 3)])
        return rows

    def side(self, figure, side):
        samples = self.results.samples(f'{figure.key}:{side}')
        return f'{shown(samples.median, figure.digits)} {figure.unit}' if samples else ''

    ABSOLUTE = ('what', 'median', 'lowest to highest', 'runs', 'target', '')
    COMPARED = ('what', 'zelk', 'against', 'that', 'ratio', 'lowest to highest', 'target', '')

    def absolute_table(self, *groups):
        self.table(self.ABSOLUTE, [row for group in groups for row in self.absolute(*group)])

    def compared_table(self, *groups):
        self.table(self.COMPARED, [row for group in groups for row in self.compared(*group)])

    def missed(self):
        """What misses its target, and why."""
        return [(what, value, target, self.reasons.get(key, UNKNOWN))
                for key, what, value, target, met in self.verdicts if met is False]

    def unmeasured(self):
        return [(what, value) for _, what, value, _, met in self.verdicts if met is None]

    def judged_count(self):
        return sum(met is not None for *_, met in self.verdicts)
