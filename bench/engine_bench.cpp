// SPDX-License-Identifier: Apache-2.0
// What the default engine gains by keeping Tesseract's OpenMP loops on the calling thread: the same
// engine reads the same page with that setting and without it, by turns.
#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <chrono>
#include <ctime>
#include <string>
#include <vector>

#include "process/MainProcess.h"
#include "side_by_side.h"

namespace {

bool contained = true;

struct Seconds {
  std::vector<double> wall;
  std::vector<double> processor;  // of all threads
};

}  // namespace

// A program's own function comes before the OpenMP runtime's, for the engine as well, so what the
// engine sets can be left out.
extern "C" __attribute__((visibility("default"))) void omp_set_max_active_levels(int levels) {
  using Setter = void (*)(int);
  static const auto set = reinterpret_cast<Setter>(dlsym(RTLD_NEXT, "omp_set_max_active_levels"));
  if (contained) set(levels);
}

namespace {

void read(ofd::MainProcess& process, const std::string& page, Seconds& seconds) {
  const auto wall = std::chrono::steady_clock::now();
  const std::clock_t processor = std::clock();
  process.load_image_document(page.c_str(), 200);
  process.recognize();
  seconds.processor.push_back(static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC);
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - wall;
  seconds.wall.push_back(taken.count());
}

void BM_OpenMpContainment(benchmark::State& state, const char* name) {
  ofd::MainProcess process{};
  if (process.init_engine(ZELK_BENCH_ENGINE_DIR) != 0) {
    state.SkipWithError("the default engine does not start");
    return;
  }
  const std::string page = std::string(ZELK_BENCH_DATA "/") + name;
  Seconds ours;
  Seconds reference;
  for ([[maybe_unused]] auto _ : state) {
    contained = false;
    read(process, page, reference);
    contained = true;
    read(process, page, ours);
    state.SetIterationTime(ours.wall.back());
  }
  process.free_image_document();
  process.uninit_engine();
  state.counters["ours_s"] = bench::median(ours.wall);
  state.counters["reference_s"] = bench::median(reference.wall);
  state.counters["speedup"] = bench::median(reference.wall) / bench::median(ours.wall);
  state.counters["processor_time_saved"] =
      bench::median(reference.processor) / bench::median(ours.processor);
}
BENCHMARK_CAPTURE(BM_OpenMpContainment, english, "english.tif")
    ->Iterations(5)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_OpenMpContainment, chinese, "zh-mixed-serif-200.jpg")
    ->Iterations(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
