// SPDX-License-Identifier: Apache-2.0
// The command line: recognises files one after another through the C interface of libzelk.so.
#include <fmt/format.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <system_error>

#include "document.h"
#include "engine_location.h"
#include "languages.h"
#include "options.h"
#include "output.h"
#include "versions.h"
#include "zelkAPI.h"

namespace {

using cli::ExitCode;
using cli::Options;
using cli::Output;

// A message that cannot be written is dropped: the exit code still tells.
void complain(const std::string& text) {
  std::fputs(("zelk: " + text + "\n").c_str(), stderr);
}

std::unique_ptr<Output> open_output(const Options& options, int results) {
  if (options.output.empty() || options.output == "-") return std::make_unique<Output>(results);
  return std::make_unique<Output>(options.output);
}

ExitCode show(const std::string& text, int results) {
  Output output(results);
  output.write(text);
  output.finish();
  return cli::kAllDone;
}

ExitCode recognize_files(const Options& options, const std::string& engine_dir, int results) {
  const auto is_output = [&](const std::string& file) {
    return cli::same_file(file, options.output) || cli::same_file(file, options.pdf);
  };
  const auto overwritten = std::find_if(options.files.begin(), options.files.end(), is_output);
  if (overwritten != options.files.end()) {
    complain(fmt::format("{} is an input, it cannot be the output too", *overwritten));
    return cli::kUsage;
  }

  // Before anything takes time: an output that cannot be made, an engine that is not there.
  const std::unique_ptr<Output> output = open_output(options, results);
  const std::string missing = cli::missing_engine_reason(engine_dir);
  if (!missing.empty() || zelk_init_engine(engine_dir.c_str()) != 0) {
    complain("no engine: " +
             (missing.empty() ? engine_dir + cli::kEngineFile + " did not start" : missing));
    return cli::kNoEngine;
  }

  cli::silence_decoders();
  ExitCode exit_code = cli::kAllDone;
  for (const std::string& file : options.files) {
    const cli::Shortfall shortfall = cli::recognize_file(file, options, *output);
    if (!shortfall.input.empty()) {
      complain(file + ": " + shortfall.input);
      exit_code = cli::kSomeInputsUnreadable;
    }
    if (!shortfall.pdf.empty()) {
      complain(
          fmt::format("{}: the searchable PDF was not written: {}", options.pdf, shortfall.pdf));
      exit_code = cli::kOutputFailed;
    }
  }
  output->finish();
  zelk_uninit_engine();
  return exit_code;
}

ExitCode run(const Options& options, int results) {
  if (options.language) setenv("QV_LANGUAGES", options.language->c_str(), 1);
  const std::string engine_dir = cli::engine_directory(options.engine_dir);
  if (options.version) return show(cli::version_text(engine_dir), results);
  if (options.list_languages) {
    std::string reason;
    const std::string list = cli::language_list(engine_dir, reason);
    if (!list.empty()) return show(list, results);
    complain(reason);
    return cli::kNoEngine;
  }
  return recognize_files(options, engine_dir, results);
}

}  // namespace

int main(int argc, char** argv) {
  const int results = cli::claim_standard_output();
  // A reader that has gone and a file that may not grow are write errors like any other.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    const cli::ParsedOptions parsed = cli::parse_options(argc, argv);
    if (parsed.options) return run(*parsed.options, results);
    if (parsed.exit_code == cli::kAllDone) return show(parsed.message, results);
    complain(parsed.message);
    return parsed.exit_code;
  } catch (const std::system_error& error) {
    complain(fmt::format("cannot write the output: {}", error.what()));
    return cli::kOutputFailed;
  } catch (const std::exception& error) {
    complain(error.what());
    return cli::kOutputFailed;
  }
}
