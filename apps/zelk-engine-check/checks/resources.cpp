// SPDX-License-Identifier: Apache-2.0
// What the engine takes, leaves behind and changes in its host.
#include <fmt/format.h>

#include "check.h"
#include "forked.h"
#include "process_state.h"
#include "session.h"

namespace engine_check {
namespace {

constexpr int kRuns = 5;
constexpr int kFirstPages = 10;
constexpr int kPages = 100;
constexpr long kPagesKib = 4096;

void determinism(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading first = session.read(subject.page);
  for (int run = 2; run <= kRuns; ++run) {
    const Reading again = session.read(subject.page);
    if (!same_content(first, again)) verdict.warn(fmt::format("another text in run {}", run));
    if (again.json != first.json) verdict.warn(fmt::format("another JSON in run {}", run));
  }
  verdict.note("the same in 5 runs");
}

void growth(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const GreyPage page = top_of(subject.bundled_page, 110);
  for (int i = 0; i < kFirstPages; ++i) session.read(page);
  const long before = resident_kib();
  for (int i = 0; i < kPages; ++i) session.read(page);
  const long kib = resident_kib() - before;
  const std::string seen = fmt::format("{} KiB more after {} pages", kib, kPages);
  if (kib > kPagesKib) verdict.warn(seen);
  verdict.note(seen);
}

void silence(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  session.read(subject.page);
  session.engine().load_image_file("/nowhere.png", 0);
  session.read(uniform_page(100, 100, 255));
  session.stop();
  const std::string printed = standard_output();
  if (!printed.empty()) {
    verdict.fail(fmt::format("{} bytes, \"{}\"", printed.size(), printed.substr(0, 60)));
  }
  verdict.note("nothing");
}

void host_unchanged(const Subject& subject, Verdict& verdict) {
  const std::string before = host_settings();
  Session session(subject);
  session.read(subject.page);
  const std::string during = host_settings();
  session.stop();
  const std::string after = host_settings();
  for (const std::string& now : {during, after}) {
    if (now != before) verdict.warn(fmt::format("{} instead of {}", now, before));
  }
  verdict.note("all as before");
}

void used_in_fork(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading before = session.read(subject.page);
  const ForkedEnd end = run_forked(subject.limit / 3, [&] {
    if (!same_content(before, session.read(subject.page))) throw NotStarted("another result");
  });
  if (!end.clean()) verdict.warn("the forked process reads a page: " + end.words);
  verdict.note("the same result");
}

void host_after_fork(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading before = session.read(subject.page);
  run_forked(subject.limit / 3, [] {});
  if (!same_content(before, session.read(subject.page))) verdict.fail("another result");
  session.stop();
  verdict.note("the same result");
}

constexpr Check kChecks[] = {
    {"resources.determinism", "the same result in 5 runs", determinism},
    {"resources.pages", "no growth over 100 pages", growth},
    {"resources.standard-output", "nothing printed on standard output", silence},
    {"resources.host",
     "working directory, locale, signals and environment of the host as they were", host_unchanged},
    {"resources.after-fork", "a host that has forked reads on", host_after_fork},
    {"resources.in-fork", "a forked process reads with the engine that it inherits", used_in_fork},
};

}  // namespace

std::span<const Check> resource_checks() {
  return kChecks;
}

}  // namespace engine_check
