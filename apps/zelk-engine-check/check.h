// SPDX-License-Identifier: Apache-2.0
//
// What a check is: a name, the rule it examines, and a function that runs in a process of its own.
#ifndef ZELK_ENGINE_CHECK_CHECK_H
#define ZELK_ENGINE_CHECK_CHECK_H

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "grey_page.h"

namespace engine_check {

// fail: the contract is broken. warn: it is kept, but hosts suffer, or the rule could not be
// examined.
enum class Severity { kPass, kWarn, kFail };

const char* name_of(Severity severity);

// The engine under examination and what it is examined with.
struct Subject {
  std::string directory;  // as hosts name it: ends in "/"
  GreyPage page;          // of --image, else the bundled page
  GreyPage bundled_page;
  std::filesystem::path scratch;      // an empty folder of this check's own
  std::chrono::milliseconds limit{};  // for the whole check

  std::string engine_file() const { return directory + "libQVEngine.so"; }
};

// What a check saw. Passes unless something is reported.
class Verdict {
 public:
  void warn(std::string seen) { report(Severity::kWarn, std::move(seen)); }
  void fail(std::string seen) { report(Severity::kFail, std::move(seen)); }
  // What was seen when nothing is wrong.
  void note(std::string seen) { note_ = std::move(seen); }

  Severity severity() const { return severity_; }
  // The first few reports, or the note.
  std::string seen() const;

 private:
  void report(Severity severity, std::string seen);

  Severity severity_ = Severity::kPass;
  std::vector<std::string> reports_;
  std::string note_;
};

struct Check {
  const char* name;
  const char* expected;
  void (*run)(const Subject&, Verdict&);
  bool needed = false;  // the checks behind it make no sense when it fails
};

// One table for each topic, in the order in which they run.
std::span<const Check> symbol_checks();
std::span<const Check> lifecycle_checks();
std::span<const Check> raster_checks();
std::span<const Check> order_checks();
std::span<const Check> result_checks();
std::span<const Check> json_checks();
std::span<const Check> resource_checks();

// All of them.
std::vector<Check> all_checks();

// Not in the tables: can the library be opened at all?
extern const Check kLibraryOpens;

}  // namespace engine_check

#endif  // ZELK_ENGINE_CHECK_CHECK_H
