// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_BENCH_SIDE_BY_SIDE_H
#define ZELK_BENCH_SIDE_BY_SIDE_H

#include <benchmark/benchmark.h>

#include <time.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench {

// Processor time of this thread: what other programs take does not count.
inline double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <typename Work>
double secondsOf(Work&& work) {
  const double start = threadSeconds();
  work();
  return threadSeconds() - start;
}

inline double median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Runs our work and the reference's by turns, so that a busy machine slows both, and reports the
// medians in milliseconds and `speedup`, reference time over ours: 2 means twice as fast as the
// reference. Google Benchmark's own time column is that of our work; register with UseManualTime.
template <typename Ours, typename Reference>
void sideBySide(benchmark::State& state, Ours&& ours, Reference&& reference) {
  std::vector<double> ourTimes;
  std::vector<double> referenceTimes;
  ours();
  reference();
  for ([[maybe_unused]] auto _ : state) {
    ourTimes.push_back(secondsOf(ours));
    referenceTimes.push_back(secondsOf(reference));
    state.SetIterationTime(ourTimes.back());
  }
  const double ourMedian = median(ourTimes);
  const double referenceMedian = median(referenceTimes);
  state.counters["ours_ms"] = ourMedian * 1e3;
  state.counters["reference_ms"] = referenceMedian * 1e3;
  state.counters["speedup"] = referenceMedian / ourMedian;
}

}  // namespace bench

#endif  // ZELK_BENCH_SIDE_BY_SIDE_H
