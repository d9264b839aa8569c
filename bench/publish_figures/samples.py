# SPDX-License-Identifier: Apache-2.0
"""Several runs of one figure as a median with its spread."""
import dataclasses
import statistics


@dataclasses.dataclass(frozen=True)
class Samples:
    median: float
    low: float
    high: float
    runs: int


def summed_up(values):
    """Of numbers; a program that sums up itself gives [median, lowest, highest]."""
    if all(isinstance(value, list) for value in values):
        medians, lows, highs = zip(*values)
        return Samples(statistics.median(medians), min(lows), max(highs), len(values))
    return Samples(statistics.median(values), min(values), max(values), len(values))
