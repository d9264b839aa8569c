// SPDX-License-Identifier: Apache-2.0
#include "supervisor/document_run.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "exchange/error.h"
#include "exchange/files.h"
#include "options/page_ranges.h"
#include "supervisor/own_text_notice.h"

namespace cli {
namespace {

constexpr int kAttempts = 2;  // the second one alone in a fresh worker

std::string output_name(std::size_t target) {
  return fmt::format("output-{}", target);
}

// What a worker says that it left need not be true.
bool is_file(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(std::filesystem::symlink_status(path, ignored));
}

int take_front(std::deque<int>& pages) {
  const int page = pages.front();
  pages.pop_front();
  return page;
}

}  // namespace

bool needs_pictures(const InputDocument& input) {
  return std::any_of(input.targets.begin(), input.targets.end(), [](const auto& target) {
    return target.format == Format::kPdf || target.format == Format::kHtml;
  });
}

DocumentRun::DocumentRun(InputDocument input, int id, const Setting& setting)
    : _input(std::move(input)),
      _id(id),
      _setting(setting),
      _folder(fmt::format("{}/document-{}", setting.run_folder, id)) {
  make_folders(_folder);
  const bool keep = _input.files.size() == 1;  // a list may be longer than descriptors last
  for (const std::string& file : _input.files)
    _sources.push_back({SourceFile(file, keep), "", false, false, 0, {}, ""});
  _outcome.name = _input.name;
}

std::string DocumentRun::record_path(int page) const {
  return _folder + "/" + page_record_name(page);
}

std::string DocumentRun::picture_path(int page) const {
  return fmt::format("{}/document-{}/{}", _setting.run_folder, _id, page_picture_name(page));
}

std::string DocumentRun::input_name(std::size_t source) const {
  return fmt::format("input-{}-{}", _id, source);
}

std::string DocumentRun::output_path(std::size_t target) const {
  return fmt::format("{}/document-{}.{}", _setting.run_folder, _id, output_name(target));
}

// ---- giving out ----

std::optional<Job> DocumentRun::next_job(int window) {
  switch (_stage) {
    case Stage::kOpening:
      return next_opening();
    case Stage::kRecognizing:
      return next_pages(window);
    case Stage::kAssembling:
      if (_assembly_given_out) return {};
      _assembly_given_out = true;
      return Job{Job::Kind::kAssemble, this, 0, {}, _assembly_attempts > 0, 0, 0.0};
    case Stage::kAssembled:
    case Stage::kFinished:
      break;
  }
  return {};
}

std::optional<Job> DocumentRun::next_opening() {
  for (std::size_t index = 0; index < _sources.size(); ++index) {
    Source& source = _sources[index];
    if (source.given_out || source.opened) continue;
    source.given_out = true;
    return Job{Job::Kind::kOpen, this, index, {}, source.attempts > 0, 0, 0.0};
  }
  return {};
}

std::optional<Job> DocumentRun::next_pages(int window) {
  Job job;
  job.kind = Job::Kind::kPages;
  job.document = this;
  if (!_pending.empty()) {
    job.source = page(_pending.front()).source;
    while (!_pending.empty() && job.pages.size() < static_cast<std::size_t>(window) &&
           page(_pending.front()).source == job.source) {
      job.pages.push_back(take_front(_pending));
    }
  } else if (!_retries.empty()) {
    job.pages = {take_front(_retries)};
    job.wants_fresh_worker = true;
    job.seconds_used = page(job.pages.front()).seconds_used;
  } else {
    return {};
  }
  job.source = page(job.pages.front()).source;
  job.id = ++_last_job;
  for (const int number : job.pages) _holders[number] = job.id;
  return job;
}

OrderWithDocument DocumentRun::prepare(const Job& job, const std::string& scratch) {
  if (job.kind == Job::Kind::kAssemble) {
    AssembleOrder order;
    order.document.file = _input.name;
    order.document.page_count = _outcome.page_count;
    order.document.page_break = _setting.options.page_break;
    for (const int number : _wanted) {
      order.document.pages.push_back(page_record_name(number));
      link_or_copy_file(record_path(number), scratch + "/" + page_record_name(number));
    }
    for (std::size_t index = 0; index < _input.targets.size(); ++index) {
      order.targets.push_back({_input.targets[index].format, output_name(index)});
    }
    return {std::move(order), {}};
  }
  const std::string input = input_name(job.source);
  Descriptor document = _sources[job.source].file.open();
  if (job.kind == Job::Kind::kOpen) {
    return {OpenOrder{input, _setting.attach != nullptr}, std::move(document)};
  }
  PagesOrder order{input, {}, list_name(job.source)};
  for (const int number : job.pages) order.pages.push_back({number, page(number).index});
  return {std::move(order), std::move(document)};
}

// ---- taking back ----

void DocumentRun::handle(const Job& job, const Event& event, const std::string& scratch) {
  if (_stage == Stage::kFinished) return;
  if (const auto* const opened = std::get_if<Opened>(&event)) handle_opened(job, *opened, scratch);
  if (const auto* const refused = std::get_if<Refused>(&event)) handle_refused(job, *refused);
  if (const auto* const page = std::get_if<PageFinished>(&event)) handle_page(job, *page, scratch);
  if (std::holds_alternative<JobDone>(event)) {
    job.kind == Job::Kind::kAssemble ? handle_assembled(job, scratch) : handle_end(job);
  }
}

void DocumentRun::handle_assembled(const Job& job, const std::string& scratch) {
  for (std::size_t index = 0; index < _input.targets.size(); ++index) {
    const std::string file = scratch + "/" + output_name(index);
    if (!is_file(file)) return handle_fault(job, 0, "the worker left no output");
    move_file(file, output_path(index));
  }
  _stage = Stage::kAssembled;
}

void DocumentRun::handle_opened(const Job& job, const Opened& event, const std::string& scratch) {
  Source& source = _sources[job.source];
  if (source.opened) return;
  const std::string decrypted = scratch + "/" + event.decrypted;
  if (!event.decrypted.empty() && !is_file(decrypted)) return;  // as good as no answer
  source.opened = true;
  source.digest = event.digest;
  if (!event.decrypted.empty()) {
    source.file.replace(
        fmt::format("{}/{}.decrypted", _setting.run_folder, input_name(job.source)));
    move_file(decrypted, source.file.path());
  }
  source.pages = event.pages;
}

void DocumentRun::handle_refused(const Job& job, const Refused& event) {
  if (_sources.size() == 1) {
    finish(event.needs_password ? DocumentState::kPasswordNeeded : DocumentState::kUnreadable,
           event.reason);
    return;
  }
  // A picture of a list that cannot be opened is one page without a result.
  Source& source = _sources[job.source];
  source.opened = true;
  source.failure = fmt::format("{}: {}", list_name(job.source), event.reason);
  source.pages = {{}};
}

std::string DocumentRun::list_name(std::size_t source) const {
  if (_sources.size() < 2) return "";
  return std::filesystem::path(_input.files[source]).filename().string();
}

// The next step is taken only when a worker is free again: it will be given that step.
void DocumentRun::settle(const Job& job) {
  if (job.kind == Job::Kind::kOpen) open_pages();
  check_pages();
}

// Once every file is open the document's pages are known.
void DocumentRun::open_pages() {
  if (_stage != Stage::kOpening) return;
  if (!std::all_of(_sources.begin(), _sources.end(), [](const Source& s) { return s.opened; }))
    return;
  std::string digests;
  for (std::size_t index = 0; index < _sources.size(); ++index) {
    digests += _sources[index].digest + "\n";
    for (const Opened::Page& size : _sources[index].pages) {
      const int in_source = static_cast<int>(&size - _sources[index].pages.data());
      _pages.push_back({index, in_source, size.width, size.height, 0, _sources[index].failure});
    }
  }
  _outcome.page_count = static_cast<int>(_pages.size());
  _wanted = choose_pages(_setting.options.pages, _outcome.page_count);
  if (_wanted.empty()) {
    finish(DocumentState::kUnreadable,
           _pages.empty() ? "the document has no pages"
                          : fmt::format("none of its {} pages is among --pages", _pages.size()));
    return;
  }
  if (_setting.attach) {
    if (const std::optional<std::string> folder = _setting.attach(*this, digests))
      _folder = *folder;
    if (_stage == Stage::kFinished) return;  // delivered by an earlier run
  }
  _stage = Stage::kRecognizing;
  _setting.listener.document_opened(_input.name, static_cast<int>(_wanted.size()));
  load_records();
}

// Pages that an earlier run has recognised are done. The others wait, those that failed then too:
// what befell them may be over, and limits may be wider now.
void DocumentRun::load_records() {
  for (const int number : _wanted) {
    const std::optional<PageRecord> record = read_page_record(record_path(number));
    const bool is_done = record && record->page == number && record->failure.empty() &&
                         (!record->jpeg.empty() || !wants_pictures());
    if (is_done) {
      page_done({number, "", record->warning, record->seconds, record->memory_kib, true, false,
                 record->has_own_text});
    } else if (!page(number).failure.empty()) {
      record_failure(number, page(number).failure);
    } else {
      _pending.push_back(number);
    }
  }
}

void DocumentRun::handle_page(const Job& job, const PageFinished& event,
                              const std::string& scratch) {
  if (!holds(job, event.number)) return;  // not a page of this job
  const bool is_final = event.failure.empty() || event.is_unreadable || event.is_damaged ||
                        page(event.number).attempts + 1 >= kAttempts;
  if (!is_final) return lose_pages(job, event.number, event.failure, event.seconds);
  const std::string record = scratch + "/" + page_record_name(event.number);
  if (!is_file(record)) return handle_fault(job, event.number, "the worker left no result");
  _holders.erase(event.number);
  move_file(record, record_path(event.number));
  page_done({event.number, event.failure, event.warning, event.seconds, event.memory_kib, false,
             event.is_unreadable, event.has_own_text});
}

// A worker that says a job is done has answered for all of it, or it is at fault.
void DocumentRun::handle_end(const Job& job) {
  const auto left = std::find_if(job.pages.begin(), job.pages.end(),
                                 [&](int number) { return holds(job, number); });
  if (left != job.pages.end()) handle_fault(job, *left, "the worker gave no result");
  if (job.kind == Job::Kind::kOpen && _stage == Stage::kOpening && !_sources[job.source].opened) {
    handle_fault(job, 0, "the worker gave no answer");
  }
  settle(job);
}

void DocumentRun::handle_fault(const Job& job, int number, const std::string& cause,
                               double seconds) {
  if (_stage == Stage::kFinished) return;
  const bool took_all_its_time = seconds >= _setting.options.page_timeout;
  if (job.kind == Job::Kind::kOpen) {
    Source& source = _sources[job.source];
    source.given_out = false;
    if (!source.opened && (++source.attempts >= kAttempts || took_all_its_time)) {
      handle_refused(job, {cause, false});
    }
    settle(job);
    return;
  }
  if (job.kind == Job::Kind::kAssemble) {
    _assembly_given_out = false;
    if (++_assembly_attempts >= kAttempts || took_all_its_time)
      finish(DocumentState::kFailed, "no outputs: " + cause);
    return;
  }
  const std::string name = list_name(job.source);
  lose_pages(job, number, name.empty() ? cause : name + ": " + cause, seconds);
}

void DocumentRun::lose_pages(const Job& job, int number, const std::string& cause, double seconds) {
  give_back(job, number);
  if (number > 0 && _holders.erase(number) > 0) fail_page(number, cause, seconds);
  settle(job);
}

bool DocumentRun::holds(const Job& job, int page) const {
  const auto holder = _holders.find(page);
  return holder != _holders.end() && holder->second == job.id;
}

// The pages of a window behind the one that failed wait again, before all others. Without a page
// to blame the first one left is it.
void DocumentRun::give_back(const Job& job, int& number) {
  if (!holds(job, number)) {
    const auto left = std::find_if(job.pages.begin(), job.pages.end(),
                                   [&](int candidate) { return holds(job, candidate); });
    number = left == job.pages.end() ? 0 : *left;
  }
  for (auto page = job.pages.rbegin(); page != job.pages.rend(); ++page) {
    if (*page == number || !holds(job, *page)) continue;
    _holders.erase(*page);
    _pending.push_front(*page);
  }
}

// --page-timeout is for all attempts of a page together.
void DocumentRun::fail_page(int number, const std::string& cause, double seconds) {
  Page& failed = page(number);
  failed.failure = cause;
  failed.seconds_used += seconds;
  if (++failed.attempts < kAttempts && failed.seconds_used < _setting.options.page_timeout) {
    _retries.push_back(number);
  } else {
    record_failure(number, cause);
  }
}

void DocumentRun::keep_picture(const Job& job, int page, const std::string& scratch) const {
  const std::string picture = scratch + "/" + page_picture_name(page);
  if (holds(job, page) && is_file(picture)) move_file(picture, picture_path(page));
}

void DocumentRun::record_failure(int number, const std::string& cause) {
  const PageRecord nothing;
  PageRecord record = read_page_record(picture_path(number)).value_or(nothing);
  std::error_code ignored;
  std::filesystem::remove(picture_path(number), ignored);
  if (record.page != number) record = nothing;
  record.page = number;
  record.failure = cause;
  record.page_width = page(number).width;
  record.page_height = page(number).height;
  write_page_record(record_path(number), record);
  page_done({number, cause, record.warning, 0.0, 0, false, false, false});
}

void DocumentRun::page_done(const PageOutcome& outcome) {
  _page_outcomes[outcome.page] = outcome;
  _setting.listener.page_finished(_input.name, outcome);
}

void DocumentRun::check_pages() {
  if (_stage != Stage::kRecognizing || _page_outcomes.size() < _wanted.size()) return;
  for (const auto& [number, page] : _page_outcomes) _outcome.pages.push_back(page);
  if (std::all_of(_outcome.pages.begin(), _outcome.pages.end(),
                  [](const PageOutcome& page) { return page.is_unreadable; })) {
    finish(DocumentState::kUnreadable,
           _wanted.size() == 1 ? "the page cannot be read"
                               : fmt::format("none of its {} pages can be read", _wanted.size()));
    return;
  }
  const auto failed = static_cast<double>(
      std::count_if(_outcome.pages.begin(), _outcome.pages.end(),
                    [](const PageOutcome& page) { return !page.failure.empty(); }));
  const FailureLimit& limit = _setting.options.max_failed_pages;
  const double allowed =
      limit.is_percent ? limit.amount / 100.0 * static_cast<double>(_wanted.size()) : limit.amount;
  if (failed > allowed) {
    finish(DocumentState::kFailed,
           fmt::format("{} of {} pages failed, more than --max-failed-pages allows", failed,
                       _wanted.size()));
    return;
  }
  _outcome.notice = own_text_notice(_outcome.pages, _setting.options.skip_text);
  _outcome.state =
      failed > 0 ? DocumentState::kDeliveredWithFailedPages : DocumentState::kDelivered;
  _stage = Stage::kAssembling;
}

void DocumentRun::remove_files() const {
  std::error_code ignored;
  std::filesystem::remove_all(fmt::format("{}/document-{}", _setting.run_folder, _id), ignored);
  for (const Source& source : _sources) {
    const std::string& path = source.file.path();
    if (path.starts_with(_setting.run_folder)) std::filesystem::remove(path, ignored);
  }
  for (std::size_t index = 0; index < _input.targets.size(); ++index) {
    std::filesystem::remove(output_path(index), ignored);
  }
}

void DocumentRun::finish(DocumentState state, const std::string& cause) {
  _stage = Stage::kFinished;
  _outcome.state = state;
  _outcome.cause = cause;
  _outcome.seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - _start).count();
  if (_outcome.pages.empty()) {
    for (const auto& [number, page] : _page_outcomes) _outcome.pages.push_back(page);
  }
  _page_outcomes.clear();
  _pages.clear();
}

}  // namespace cli
