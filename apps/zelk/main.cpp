// SPDX-License-Identifier: Apache-2.0
// The command line: a supervisor that hands documents to workers, which are this program again.
#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string_view>

#include "console/run_listeners.h"
#include "exchange/error.h"
#include "exchange/names.h"
#include "languages.h"
#include "missing_language.h"
#include "options/inputs.h"
#include "options/options.h"
#include "supervisor/delivery.h"
#include "supervisor/engine_location.h"
#include "supervisor/exit_codes.h"
#include "supervisor/output.h"
#include "supervisor/supervisor.h"
#include "versions.h"
#include "worker/worker.h"

namespace {

using cli::ExitCode;
using cli::Options;
using cli::Output;

// A message that cannot be written is dropped: the exit code still tells. Names in it are shown so
// that they cannot command a terminal.
void complain(const std::string& text) {
  std::fputs(("zelk: " + cli::lines_text(text) + "\n").c_str(), stderr);
}

ExitCode show(const std::string& text, Output& results) {
  results.write(text);
  results.finish();
  return cli::kAllDone;
}

ExitCode recognize(const Options& options, const std::string& engine_dir, Output& results) {
  cli::Inputs inputs = cli::find_inputs(options);
  if (!inputs.mistake.empty()) {
    complain(inputs.mistake);
    return cli::kUsage;
  }
  const std::string missing = cli::missing_engine_reason(engine_dir);
  if (!missing.empty()) {
    complain("no engine: " + missing);
    return cli::kNoEngine;
  }
  const std::string lacking = cli::missing_language(engine_dir, options.language);
  if (!lacking.empty()) {
    complain("no engine: " + lacking);
    return cli::kNoEngine;
  }
  const bool writes_results =
      std::any_of(inputs.documents.begin(), inputs.documents.end(), cli::writes_to_standard_output);
  cli::RunListeners listeners(options, writes_results && isatty(results.descriptor()) == 1);
  std::string complaint;
  const ExitCode code = cli::run_documents(
      options, {engine_dir, cli::language_folder(engine_dir), cli::language_files(engine_dir)},
      std::move(inputs), results, listeners, complaint);
  if (!complaint.empty()) complain(complaint);
  results.finish();
  if (listeners.report_failure().empty()) return code;
  complain("cannot write the report: " + listeners.report_failure());
  return code == cli::kInterrupted ? code : cli::kOutputFailed;
}

ExitCode run(const Options& options, Output& results) {
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
  return recognize(options, engine_dir, results);
}

// Ends as other programs do whose reader has gone, for whoever started this one to see. Where
// SIGPIPE is ignored the exit code tells.
ExitCode leave(ExitCode code, bool is_pipe_signal_ignored) {
  if (code == cli::kReaderGone && !is_pipe_signal_ignored) {
    std::signal(SIGPIPE, SIG_DFL);
    std::raise(SIGPIPE);
  }
  return code;
}

ExitCode run_command_line(int argc, char** argv, Output& results) {
  try {
    const cli::ParsedOptions parsed =
        cli::parse_options(argc, argv, isatty(results.descriptor()) == 1);
    if (parsed.options) return run(*parsed.options, results);
    if (parsed.exit_code == cli::kAllDone) return show(parsed.message, results);
    complain(parsed.message);
    return parsed.exit_code;
  } catch (const cli::Error& error) {
    const std::string sentence = cli::sentence_of(error);
    if (!sentence.empty()) complain(sentence);
    return cli::exit_code_of(error);
  } catch (const std::exception& error) {
    complain(fmt::format("ended by an unexpected error: {}", error.what()));
    return cli::kFailedDocuments;
  }
}

// The number that a worker's argument holds; -1, which nothing can be read from, for anything else.
int descriptor_in(std::string_view argument) {
  int number = -1;
  std::from_chars(argument.data(), argument.data() + argument.size(), number);
  return number;
}

// Descriptor 0 must be taken, or the next file that is opened would be read as standard input. This
// one cannot be read.
void keep_standard_input_closed() {
  if (fcntl(STDIN_FILENO, F_GETFD) < 0) static_cast<void>(open("/dev/null", O_WRONLY | O_CLOEXEC));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string_view(argv[1]) == cli::kWorkerArgument) {
    return cli::run_worker(descriptor_in(argv[2]), descriptor_in(argv[3]));
  }
  keep_standard_input_closed();
  Output results(cli::claim_standard_output());
  // A reader that has gone and a file that may not grow are found out by writing.
  const bool is_pipe_signal_ignored = std::signal(SIGPIPE, SIG_IGN) == SIG_IGN;
  std::signal(SIGXFSZ, SIG_IGN);
  return leave(run_command_line(argc, argv, results), is_pipe_signal_ignored);
}
