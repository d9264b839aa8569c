// SPDX-License-Identifier: Apache-2.0
#include "supervisor/supervisor.h"

#include <fmt/format.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <list>
#include <memory>
#include <set>
#include <system_error>
#include <utility>

#include "exchange/files.h"
#include "supervisor/delivery.h"
#include "supervisor/document_run.h"
#include "supervisor/engine_identity.h"
#include "supervisor/exit_codes.h"
#include "supervisor/interruption.h"
#include "supervisor/journal.h"
#include "supervisor/readable_paths.h"
#include "supervisor/record_key.h"
#include "supervisor/run_folder.h"
#include "supervisor/run_guard.h"
#include "supervisor/worker_pool.h"

namespace cli {
namespace {

constexpr int kLargestWindow = 8;  // pages

// Where finished pages are kept beyond the run: beside the outputs; nowhere when there are no
// files.
std::string journal_folder(const Options& options) {
  if (!options.directory.empty()) return options.directory;
  if (options.output.empty() || options.output == "-") return "";
  const std::filesystem::path output(options.output);
  std::error_code error;
  if (std::filesystem::exists(output, error) && !std::filesystem::is_regular_file(output, error)) {
    return "";  // a pipe or a device
  }
  const std::string folder = output.parent_path().string();
  return folder.empty() ? "." : folder;
}

void make_output_folder(const std::string& folder) {
  std::error_code ignored;
  const auto status = std::filesystem::status(folder, ignored);
  if (std::filesystem::exists(status) && !std::filesystem::is_directory(status)) {
    throw Error(ErrorKind::kOutput, folder + " is no folder, --directory needs one");
  }
  make_folders(folder);
}

std::unique_ptr<Journal> open_journal(const Options& options) {
  if (!options.output.empty() && options.output != "-") check_writable(options.output);
  const std::string folder = journal_folder(options);
  if (!options.directory.empty()) make_output_folder(folder);
  return folder.empty() ? nullptr : std::make_unique<Journal>(folder, options.resume);
}

PageOptions page_options(const Options& options) {
  return {options.dpi.value_or(0), options.max_pixels, options.skip_text, options.strict};
}

int cores_available() {
  cpu_set_t cores;
  return sched_getaffinity(0, sizeof cores, &cores) == 0 ? std::max(1, CPU_COUNT(&cores)) : 1;
}

bool any_pictures(const Inputs& inputs) {
  return std::any_of(inputs.documents.begin(), inputs.documents.end(), needs_pictures);
}

class Supervisor {
 public:
  Supervisor(const Options& options, EngineLocation engine, Inputs inputs, Output& results,
             RunListener& listener);
  ExitCode run(std::string& complaint);

 private:
  void work();
  void tell_of_hopeless_inputs();
  void activate();
  bool take_standard_input(InputDocument& input);
  std::optional<Job> next_job();
  std::optional<std::string> attach(DocumentRun& document, const std::string& digests);
  void deliver_ready();
  void deliver_document(DocumentRun& document);
  void make_folders(const InputDocument& input) const;
  void drop_finished();
  std::string order_of(const DocumentRun& document) const;
  void end(const DocumentOutcome& outcome);
  void interrupt();
  WorkerPool::Setting pool_setting() const;

  const Options& _options;
  EngineLocation _engine;
  Inputs _inputs;
  RunListener& _listener;
  std::string _output_folder;  // that holds the journal; empty without one
  std::unique_ptr<Journal> _journal;
  RunFolder _folder;
  RunGuard _guard;
  std::string _engine_identity;
  DocumentRun::Setting _document_setting;
  Delivery _delivery;
  WorkerPool _pool;
  std::list<std::unique_ptr<DocumentRun>> _documents;  // at work, in the order of the inputs
  std::size_t _next_input = 0;
  std::set<ExitCode> _exit_codes;
  RunTotals _totals;
  std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
};

Supervisor::Supervisor(const Options& options, EngineLocation engine, Inputs inputs,
                       Output& results, RunListener& listener)
    : _options(options),
      _engine(std::move(engine)),
      _inputs(std::move(inputs)),
      _listener(listener),
      _output_folder(journal_folder(options)),
      _journal(open_journal(options)),
      _folder(_journal ? _journal->path() : ""),
      _guard(_folder),
      _document_setting{options, _folder.path(), listener, nullptr},
      _delivery(results, _folder.path(), options.page_break),
      _pool(pool_setting()) {
  if (!_journal) return;
  _engine_identity = engine_identity(_engine);
  _document_setting.attach = [this](DocumentRun& document, const std::string& digests) {
    return attach(document, digests);
  };
}

WorkerPool::Setting Supervisor::pool_setting() const {
  WorkerPool::Setting setting;
  std::error_code ignored;
  setting.start.engine_dir = std::filesystem::absolute(_engine.directory, ignored).string();
  setting.start.sandbox = _options.sandbox;
  setting.start.readable = readable_paths(_engine.directory, _engine.data_folder);
  setting.start.memory_limit_mib = _options.memory_limit;
  setting.start.page = page_options(_options);
  setting.start.password = _options.password;
  setting.start.pictures = any_pictures(_inputs);
  setting.run_folder = _folder.path();
  setting.jobs = _options.jobs > 0 ? _options.jobs : cores_available();
  setting.page_timeout = _options.page_timeout;
  setting.recycle = _options.recycle;
  setting.echo = _options.verbose;
  return setting;
}

std::optional<std::string> Supervisor::attach(DocumentRun& document, const std::string& digests) {
  const std::string key = record_key(digests, _engine_identity, _pool.page_options(),
                                     place_of(document.input(), _output_folder));
  std::optional<std::string> folder = _journal->open_document(key);
  if (!folder) return {};
  document.set_journal_key(key);
  if (std::optional<DocumentOutcome> delivered = _journal->delivered(key, order_of(document))) {
    delivered->name = document.input().name;
    document.outcome() = std::move(*delivered);
    document.finish(document.outcome().state, "");
  }
  return folder;
}

std::string Supervisor::order_of(const DocumentRun& document) const {
  return order_text(document.input(), document.wanted(), _options.page_break, _output_folder);
}

ExitCode Supervisor::run(std::string& complaint) {
  _listener.run_started(static_cast<int>(_inputs.documents.size() + _inputs.unreadable.size()));
  tell_of_hopeless_inputs();
  try {
    work();
    if (!_pool.sandbox_gap().empty()) {
      complaint = fmt::format("the sandbox is not whole: the kernel lacks {}", _pool.sandbox_gap());
    }
    if (!_pool.engine_failure().empty()) {
      complaint =
          fmt::format("no engine: {}{} {}", _engine.directory, kEngineFile, _pool.engine_failure());
      _exit_codes.insert(kNoEngine);
    }
  } catch (const Error& error) {
    complaint = sentence_of(error);
    _totals.is_reader_gone = error.kind() == ErrorKind::kReaderGone;
    _exit_codes.insert(exit_code_of(error));
  }
  if (_pool.engine_failure().empty()) interrupt();
  _pool.dismiss_all();
  _totals.seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
  _totals.workers_started = _pool.workers_started();
  _totals.worker_memory_kib = _pool.peak_memory_kib();
  struct rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  _totals.supervisor_memory_kib = usage.ru_maxrss;
  _listener.run_finished(_totals);
  return first_of(_exit_codes);
}

void Supervisor::work() {
  const Interruption interruption;
  while (_pool.engine_failure().empty()) {
    if (interruption.requested()) {
      _exit_codes.insert(kInterrupted);
      return;
    }
    activate();
    _pool.give_out([this] { return next_job(); });
    deliver_ready();
    drop_finished();
    if (_documents.empty() && _next_input == _inputs.documents.size()) {
      _delivery.finish();
      return;
    }
    // A document may just have become ready for its next step, with no worker at work.
    if (!_pool.is_idle()) _pool.wait(interruption.mask_while_waiting());
    _listener.tick();
  }
}

void Supervisor::tell_of_hopeless_inputs() {
  for (const InputComplaint& input : _inputs.unreadable) {
    DocumentOutcome outcome;
    outcome.name = input.name;
    outcome.state = DocumentState::kUnreadable;
    outcome.cause = input.reason;
    end(outcome);
  }
  for (const std::string& name : _inputs.skipped) {
    DocumentOutcome outcome;
    outcome.name = name;
    outcome.state = DocumentState::kSkipped;
    end(outcome);
  }
}

// ---- documents ----

void Supervisor::activate() {
  const auto unfinished = std::count_if(
      _documents.begin(), _documents.end(),
      [](const auto& document) { return !document->is_assembled() && !document->is_finished(); });
  const int wanted = 2 * _pool.capacity() + 2 - static_cast<int>(unfinished);
  for (int count = 0; count < wanted && _next_input < _inputs.documents.size(); ++count) {
    InputDocument& input = _inputs.documents[_next_input];
    const int id = static_cast<int>(++_next_input);
    if (input.name == "-" && !take_standard_input(input)) continue;
    _documents.push_back(std::make_unique<DocumentRun>(std::move(input), id, _document_setting));
  }
}

// False when there is nothing to be read there, which has been told then.
bool Supervisor::take_standard_input(InputDocument& input) {
  input.files = {_folder.path("standard-input")};
  try {
    spool_to_file(STDIN_FILENO, "standard input", input.files.front());
    return true;
  } catch (const Error& error) {
    if (error.kind() != ErrorKind::kInput) throw;
    DocumentOutcome outcome;
    outcome.name = input.name;
    outcome.state = DocumentState::kUnreadable;
    outcome.cause = error.number() == EISDIR  ? "standard input is a folder"
                    : error.number() == EBADF ? "standard input is closed"
                                              : error.what();
    end(outcome);
    return false;
  }
}

// Earlier documents come first, so that results for standard output need not wait. Windows shrink
// towards the end, so that no worker is left with many pages when the others have none.
std::optional<Job> Supervisor::next_job() {
  int waiting = 0;
  for (const auto& document : _documents) waiting += document->waiting_pages();
  const int window = std::clamp(waiting / (4 * _pool.capacity()), 1, kLargestWindow);
  for (const auto& document : _documents) {
    if (std::optional<Job> job = document->next_job(window)) return job;
  }
  return {};
}

void Supervisor::deliver_ready() {
  bool is_turn = true;  // nothing earlier has still to write where this one does
  for (const auto& document : _documents) {
    if (document->is_finished()) continue;
    const InputDocument& input = document->input();
    const bool waits = !is_turn && (writes_to_standard_output(input) || shares_a_file(input));
    if (document->is_assembled() && !waits) {
      deliver_document(*document);
    } else {
      is_turn = false;
    }
  }
}

void Supervisor::deliver_document(DocumentRun& document) {
  const DocumentState state = document.outcome().state;
  make_folders(document.input());
  const std::string failure = _delivery.deliver(document);
  if (!failure.empty()) {
    document.finish(DocumentState::kOutputFailed, failure);
    return;
  }
  document.finish(state, "");
  if (document.journal_key().empty() || shares_a_file(document.input())) return;
  if (state == DocumentState::kDelivered) {
    _journal->mark_delivered(document.journal_key(), order_of(document), document.outcome());
  } else if (_options.resume) {
    _journal->keep();  // the pages that failed are tried again by the next run
  }
}

// Inside of --directory; what fails is told when the output cannot be written.
void Supervisor::make_folders(const InputDocument& input) const {
  if (_options.directory.empty()) return;
  for (const InputDocument::Target& target : input.targets) {
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(target.path).parent_path(), ignored);
  }
}

void Supervisor::drop_finished() {
  for (auto place = _documents.begin(); place != _documents.end();) {
    DocumentRun& document = **place;
    if (!document.is_finished() || _pool.works_on(document)) {
      ++place;
      continue;
    }
    const bool stays = document.outcome().state == DocumentState::kFailed ||
                       document.outcome().state == DocumentState::kOutputFailed ||
                       document.outcome().state == DocumentState::kInterrupted;
    if (stays && _journal) _journal->keep();
    if (_journal) _journal->close_document(document.journal_key());
    document.remove_files();
    end(document.outcome());
    place = _documents.erase(place);
  }
}

// What is left when the run ends early.
void Supervisor::interrupt() {
  const bool is_done = _documents.empty() && _next_input == _inputs.documents.size();
  if (_journal && (!is_done || _delivery.has_unfinished())) _journal->keep();
  for (const auto& document : _documents) {
    if (!document->is_finished()) document->finish(DocumentState::kInterrupted, "interrupted");
    end(document->outcome());
  }
}

void Supervisor::end(const DocumentOutcome& outcome) {
  ++_totals.documents;
  _totals.pages += static_cast<int>(outcome.pages.size());
  for (const PageOutcome& page : outcome.pages) _totals.failed_pages += !page.failure.empty();
  _exit_codes.insert(exit_code_of(outcome.state));
  _listener.document_finished(outcome);
}

}  // namespace

ExitCode run_documents(const Options& options, EngineLocation engine, Inputs inputs,
                       Output& results, RunListener& listener, std::string& complaint) {
  return Supervisor(options, std::move(engine), std::move(inputs), results, listener)
      .run(complaint);
}

}  // namespace cli
