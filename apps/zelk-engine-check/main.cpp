// SPDX-License-Identifier: Apache-2.0
// zelk-engine-check: examines an engine against the contract of engine/qv_engine.h.
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "check.h"
#include "report.h"
#include "runner.h"

namespace {

using namespace engine_check;

enum ExitCode : int {
  kPassed = 0,
  kUsage = 1,
  kNoEngine = 3,
  kNoOutput = 4,
  kWarned = 5,
  kFailed = 6
};

struct Options {
  std::string directory;
  std::string image;
  std::vector<std::string> only;
  double seconds = 120;
  bool json = false;
  bool list = false;
  bool verbose = false;
};

// A folder for one check, removed with all that is in it.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name =
        (std::filesystem::temp_directory_path() / "zelk-engine-check-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
    path_ = name;
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

void add_options(CLI::App& app, Options& options) {
  app.add_option("DIR", options.directory, "Directory of libQVEngine.so")->type_name("");
  app.add_option("--image", options.image, "Page to read (default: a bundled page in English)")
      ->type_name("FILE");
  app.add_option("--only", options.only, "Run this check, or all of a topic; may be repeated")
      ->type_name("NAME")
      ->allow_extra_args(false);
  app.add_option("--timeout", options.seconds, "Time limit of a check (default: 120)")
      ->type_name("SECONDS")
      ->check(CLI::Range(0.1, 86400.0).description(""));
  app.add_flag("--json", options.json, "One JSON object instead of lines");
  app.add_flag("--list", options.list, "List the checks and what they expect");
  app.add_flag("--verbose", options.verbose, "Show what the engine prints on standard error");
  app.footer(
      "Exit code: 0 all passed, 5 warnings, 6 failures, 1 wrong usage, 3 no engine,\n"
      "4 the output cannot be written.");
}

bool is_wanted(const Check& check, const std::vector<std::string>& only) {
  const std::string name = check.name;
  return only.empty() || std::any_of(only.begin(), only.end(), [&name](const std::string& wanted) {
           return name == wanted || name.starts_with(wanted + ".");
         });
}

std::vector<Check> wanted_checks(const std::vector<std::string>& only) {
  std::vector<Check> checks = all_checks();
  std::erase_if(checks, [&only](const Check& check) { return !is_wanted(check, only); });
  return checks;
}

Subject subject_of(const Options& options) {
  Subject subject;
  subject.directory = options.directory;
  if (!subject.directory.ends_with('/')) subject.directory += '/';
  subject.bundled_page = bundled_page();
  subject.page = options.image.empty() ? subject.bundled_page : read_image_file(options.image);
  subject.limit = std::chrono::milliseconds(static_cast<long>(options.seconds * 1000));
  return subject;
}

Finding run_in_scratch(const Check& check, Subject& subject, bool verbose) {
  const ScratchFolder scratch;
  subject.scratch = scratch.path();
  return run_check(check, subject, verbose);
}

void print(const std::string& text) {
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

Report examine(const Options& options, const std::vector<Check>& checks, Subject& subject) {
  Report report{subject.engine_file(), options.image, {}, {}};
  bool useless = false;
  for (const Check& check : checks) {
    if (useless) {
      report.not_run.emplace_back(check.name);
      continue;
    }
    report.findings.push_back(run_in_scratch(check, subject, options.verbose));
    const Finding& finding = report.findings.back();
    if (!options.json) print(line_of(finding));
    useless = check.needed && finding.severity == Severity::kFail;
  }
  print(options.json ? json_of(report) : summary_of(report));
  return report;
}

int complain(ExitCode code, const std::string& text) {
  std::fputs(fmt::format("zelk-engine-check: {}\n", text).c_str(), stderr);
  return code;
}

int run(const Options& options) {
  const std::vector<Check> checks = wanted_checks(options.only);
  if (checks.empty()) return complain(kUsage, "--only: there is no such check, see --list");
  if (options.list) {
    for (const Check& check : checks) print(fmt::format("{:28} {}\n", check.name, check.expected));
    return std::ferror(stdout) == 0 ? kPassed : complain(kNoOutput, "cannot write the output");
  }
  if (options.directory.empty()) return complain(kUsage, "DIR is required, see --help");
  Subject subject = subject_of(options);
  const Finding opened = run_in_scratch(kLibraryOpens, subject, options.verbose);
  if (opened.severity != Severity::kPass) return complain(kNoEngine, opened.seen);
  const Report report = examine(options, checks, subject);
  if (std::ferror(stdout) != 0) return complain(kNoOutput, "cannot write the output");
  constexpr ExitCode kCodes[] = {kPassed, kWarned, kFailed};
  return kCodes[static_cast<int>(report.worst())];
}

int run_program(int argc, char** argv) {
  Options options;
  CLI::App app("Examines a recognition engine against the contract of engine/qv_engine.h.",
               "zelk-engine-check");
  add_options(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kPassed : kUsage;
  }
  return run(options);
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  try {
    return run_program(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "zelk-engine-check: %s\n", error.what());
    return kUsage;
  }
}
