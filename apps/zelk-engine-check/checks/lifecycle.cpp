// SPDX-License-Identifier: Apache-2.0
// Starting, stopping, closing, and the end of the process.
#include <dlfcn.h>
#include <fmt/format.h>

#include <cstdlib>
#include <filesystem>

#include "check.h"
#include "forked.h"
#include "process_state.h"
#include "session.h"

namespace engine_check {
namespace {

constexpr int kRestarts = 20;
constexpr int kFirstStarts = 5;  // until heap and caches have their size
constexpr long kRestartKib = 256;

void starts(const Subject& subject, Verdict& verdict) {
  QVOcrEngine engine;
  const int code = engine.init_engine(subject.directory.c_str());
  if (code != 0) verdict.fail(fmt::format("{}, {}", code, standard_output()));
  verdict.note("started");
}

// What the library does in a directory where the engine finds nothing of its own.
int start_elsewhere(const Subject& subject, const std::string& directory) {
  void* const library = dlopen(subject.engine_file().c_str(), RTLD_NOW);
  const auto init = reinterpret_cast<QV_INIT_ENGINE_LIB>(dlsym(library, "qv_init_engine"));
  const auto uninit = reinterpret_cast<QV_UNINIT_ENGINE>(dlsym(library, "qv_uninit_engine"));
  const int code = init(directory.c_str());
  if (code == 0) uninit();
  dlclose(library);
  return code;
}

void wrong_directory(const Subject& subject, Verdict& verdict) {
  const std::string empty = subject.scratch / "empty/";
  std::filesystem::create_directory(empty);
  std::string codes;
  for (const std::string& directory : {std::string("/nowhere/"), empty, std::string()}) {
    codes += fmt::format(" {}", start_elsewhere(subject, directory));
  }
  QVOcrEngine engine;
  const int code = engine.init_engine(subject.directory.c_str());
  if (code != 0) verdict.fail(fmt::format("a start in the right directory gives {} then", code));
  verdict.note("codes" + codes);
}

void start_and_stop(const Subject& subject, const GreyPage& page) {
  Session session(subject);
  session.read(page);
  session.stop();
}

void restarts(const Subject& subject, Verdict& verdict) {
  const GreyPage page = top_of(subject.bundled_page, 110);
  for (int i = 0; i < kFirstStarts; ++i) start_and_stop(subject, page);
  const long before = resident_kib();
  for (int i = 0; i < kRestarts; ++i) start_and_stop(subject, page);
  const long growth = (resident_kib() - before) / kRestarts;
  const std::string seen = fmt::format("{} KiB more with each start", growth);
  if (growth > kRestartKib) verdict.fail(seen);
  verdict.note(seen);
}

void descriptors(const Subject& subject, Verdict& verdict) {
  const int before = descriptor_count();
  start_and_stop(subject, subject.bundled_page);
  start_elsewhere(subject, "/nowhere/");
  const int left = descriptor_count() - before;
  if (left > 0) verdict.fail(fmt::format("{} open files are left", left));
  verdict.note("none is left");
}

void threads(const Subject& subject, Verdict& verdict) {
  const int before = thread_count();
  start_and_stop(subject, subject.bundled_page);
  const int left = thread_count() - before;
  if (left > 0) verdict.fail(fmt::format("{} threads are left", left));
  verdict.note("none is left");
}

void unmapped(const Subject& subject, Verdict& verdict) {
  start_and_stop(subject, subject.bundled_page);
  if (is_mapped(subject.engine_file())) {
    verdict.fail("it stays mapped (GNU_UNIQUE symbols, -z nodelete, or opened twice)");
  }
  verdict.note("it is gone");
}

void exits_stopped(const Subject& subject, Verdict& verdict) {
  const ForkedEnd end = run_forked(subject.limit / 2, [&] {
    start_and_stop(subject, subject.bundled_page);
    std::exit(0);
  });
  if (!end.clean()) verdict.fail(end.words);
  verdict.note("a clean end");
}

void exits_started(const Subject& subject, Verdict& verdict) {
  const ForkedEnd end = run_forked(subject.limit / 2, [&] {
    Session(subject).read(subject.bundled_page);
    std::exit(0);
  });
  if (!end.clean()) verdict.warn(end.words);
  verdict.note("a clean end");
}

constexpr Check kChecks[] = {
    {"lifecycle.start", "0 from qv_init_engine in the engine's own directory", starts, true},
    {"lifecycle.wrong-directory", "any code, and a start in the right directory afterwards",
     wrong_directory},
    {"lifecycle.restart", "no growth over 20 starts and stops with a page each", restarts},
    {"lifecycle.descriptors", "no open file left after a stop or a failed start", descriptors},
    {"lifecycle.threads", "no thread left after a stop", threads},
    {"lifecycle.unmapped", "the library's file out of memory after it is closed", unmapped},
    {"lifecycle.exit-stopped", "a clean end of a process that has stopped the engine",
     exits_stopped},
    {"lifecycle.exit-started", "a clean end of a process that has not stopped the engine",
     exits_started},
};

}  // namespace

std::span<const Check> lifecycle_checks() {
  return kChecks;
}

}  // namespace engine_check
