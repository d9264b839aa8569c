// SPDX-License-Identifier: Apache-2.0
#include "supervisor/worker_pool.h"

#include <fmt/format.h>
#include <poll.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "exchange/error.h"

namespace cli {
namespace {

constexpr auto kTimeToLeave = std::chrono::seconds(5);
constexpr int kLongestWait = 500;  // milliseconds: listeners are told the time
constexpr int kFailedStarts = 3;   // then the engine counts as one that cannot be started

}  // namespace

// ---- giving out ----

WorkerPool::Place* WorkerPool::free_place() {
  for (Place& place : _places) {
    if (place.worker != nullptr && place.ready && !place.job) return &place;
  }
  if (_places.size() < static_cast<std::size_t>(_setting.jobs)) return &_places.emplace_back();
  for (Place& place : _places) {
    if (place.worker == nullptr && !place.job) return &place;
  }
  return nullptr;
}

void WorkerPool::give_out(const std::function<std::optional<Job>()>& next_job) {
  while (Place* const place = free_place()) {
    std::optional<Job> job = next_job();
    if (!job) return;
    assign(*place, std::move(*job));
  }
}

void WorkerPool::assign(Place& place, Job job) {
  const bool is_old = place.pages_done >= _setting.recycle && job.kind != Job::Kind::kAssemble;
  const bool is_worn =
      place.worker != nullptr && (is_old || (job.wants_fresh_worker && place.pages_done > 0));
  if (is_worn) dismiss(std::move(place.worker));
  place.job = std::move(job);
  if (place.worker == nullptr) {
    start_worker(place);
  } else {
    begin(place);
  }
}

void WorkerPool::start_worker(Place& place) {
  const std::string scratch = fmt::format("{}/worker-{}", _setting.run_folder, ++_workers_started);
  place.worker = std::make_unique<WorkerProcess>(scratch, _setting.echo);
  place.ready = false;
  place.pages_done = 0;
  place.worker->send({_setting.start, {}});
  begin_waiting(place);
}

void WorkerPool::begin(Place& place) {
  place.page = 0;
  place.pages_started = 0;
  if (place.job->document->is_finished()) {  // while the worker was starting
    place.job.reset();
    return;
  }
  try {
    place.worker->send(place.job->document->prepare(*place.job, place.worker->scratch()));
    begin_waiting(place);
  } catch (const Error& error) {
    const Job job = *std::exchange(place.job, std::nullopt);
    if (error.kind() == ErrorKind::kOutput) {
      job.document->finish(DocumentState::kOutputFailed, sentence_of(error));
    } else {
      job.document->handle_fault(job, 0, std::generic_category().message(error.number()));
    }
  }
}

void WorkerPool::dismiss(std::unique_ptr<WorkerProcess> worker) {
  worker->send({QuitOrder{}, {}});
  _leaving.push_back({std::move(worker), Clock::now() + kTimeToLeave});
}

void WorkerPool::dismiss_all() {
  for (Place& place : _places) {
    if (place.worker != nullptr && place.ready && !place.job) dismiss(std::move(place.worker));
  }
  _places.clear();
  sigset_t none;
  sigemptyset(&none);
  while (!_leaving.empty()) wait(none);
}

// ---- waiting ----

void WorkerPool::begin_waiting(Place& place, double seconds_used) {
  const std::chrono::duration<double> left(_setting.page_timeout - seconds_used);
  place.since = Clock::now();
  place.deadline = place.since + std::chrono::ceil<Clock::duration>(left);
}

double WorkerPool::seconds_spent(const Place& place) {
  return std::chrono::duration<double>(Clock::now() - place.since).count();
}

int WorkerPool::milliseconds_to_deadline() const {
  Clock::time_point next = Clock::now() + std::chrono::milliseconds(kLongestWait);
  for (const Place& place : _places) {
    if (place.job) next = std::min(next, place.deadline);
  }
  for (const Leaving& leaving : _leaving) next = std::min(next, leaving.deadline);
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(next - Clock::now());
  return static_cast<int>(std::max<long>(0, left.count()));
}

void WorkerPool::wait(const sigset_t& signals) {
  std::vector<pollfd> watched;
  for (const Place& place : _places) {
    if (place.worker != nullptr) place.worker->watch(watched);
  }
  for (const Leaving& leaving : _leaving) leaving.worker->watch(watched);
  const int milliseconds = milliseconds_to_deadline();
  const timespec longest = {milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
  ppoll(watched.data(), watched.size(), &longest, &signals);
  for (Place& place : _places) {
    if (place.worker != nullptr) attend(place);
  }
  attend_leaving();
}

void WorkerPool::attend(Place& place) {
  for (const Event& event : place.worker->exchange()) {
    handle(place, event);
    if (place.worker == nullptr) return;  // it was replaced
  }
  if (place.worker->has_ended()) {
    fault(place, cause_of_end(place));
  } else if ((place.job || !place.ready) && Clock::now() >= place.deadline) {
    place.worker->kill();
    fault(place,
          fmt::format("no result within {} seconds (--page-timeout)", _setting.page_timeout));
  }
}

void WorkerPool::attend_leaving() {
  _leaving.remove_if([](Leaving& leaving) {
    const std::vector<Event> events = leaving.worker->exchange();
    const bool said_bye = std::any_of(events.begin(), events.end(), [](const Event& event) {
      return std::holds_alternative<Bye>(event);
    });
    return said_bye || leaving.worker->has_ended() || Clock::now() >= leaving.deadline;
  });
}

// ---- news ----

void WorkerPool::handle(Place& place, const Event& event) {
  if (const auto* const ready = std::get_if<Ready>(&event)) return handle_ready(place, *ready);
  if (!place.job || !place.ready) return;  // an answer to nothing
  handle_progress(place, event);
  const Job job = *place.job;
  try {
    job.document->handle(job, event, place.worker->scratch());
  } catch (const Error& error) {
    if (error.kind() != ErrorKind::kOutput) throw;
    job.document->finish(DocumentState::kOutputFailed, sentence_of(error));
  }
  if (const auto* const failed = std::get_if<JobFailed>(&event)) {
    handle_failure(place, *failed);
  } else if (std::holds_alternative<JobDone>(event)) {
    end_job(place);
  }
}

// Whatever made the job fail may make the next one fail: an engine that has used up memory or
// descriptors. So the worker goes.
void WorkerPool::handle_failure(Place& place, const JobFailed& failed) {
  const Job job = *std::exchange(place.job, std::nullopt);
  job.document->keep_picture(job, place.page, place.worker->scratch());
  const std::string file = place.worker->path(failed.reason);
  place.ready = false;
  dismiss(std::move(place.worker));
  const int page = std::exchange(place.page, 0);
  if (failed.is_output) {
    const Error error(ErrorKind::kOutput, file);
    job.document->finish(DocumentState::kOutputFailed, sentence_of(error));
  } else {
    job.document->handle_fault(job, page, failed.reason, seconds_spent(place));
  }
}

// What gives a worker more time. It gets that for every page once, in their order, whatever it
// says.
void WorkerPool::handle_progress(Place& place, const Event& event) {
  if (const auto* const started = std::get_if<PageStarted>(&event)) {
    const std::vector<int>& pages = place.job->pages;
    if (place.pages_started == pages.size() || pages[place.pages_started] != started->number)
      return;
    ++place.pages_started;
    place.page = started->number;
    begin_waiting(place, place.job->seconds_used);
  } else if (const auto* const finished = std::get_if<PageFinished>(&event)) {
    if (finished->number == place.page) begin_waiting(place);
    place.page = 0;
    ++place.pages_done;
    _peak_memory_kib = std::max(_peak_memory_kib, finished->memory_kib);
  } else if (std::holds_alternative<OutputProgress>(event)) {
    begin_waiting(place);
  }
}

void WorkerPool::handle_ready(Place& place, const Ready& event) {
  if (place.ready) return;  // said before the first document, and not believed later
  if (!event.failure.empty()) {
    const std::string words = place.worker->last_words();
    _engine_failure = event.failure + (words.empty() ? "" : ": " + words);
    return;
  }
  _failed_starts = 0;
  _has_started = true;
  _sandbox_gap = event.sandbox_gap;
  place.ready = true;
  if (place.job) begin(place);
}

DocumentRun* WorkerPool::end_job(Place& place) {
  const Job job = *std::exchange(place.job, std::nullopt);
  place.worker->tidy();
  return job.document;
}

std::string WorkerPool::cause_of_end(Place& place) const {
  return "the worker " + place.worker->cause_of_end(_setting.start.memory_limit_mib);
}

// The worker is lost; its job goes back to the document.
void WorkerPool::fault(Place& place, const std::string& cause) {
  const std::string words = place.worker->last_words();
  _peak_memory_kib = std::max(_peak_memory_kib, place.worker->peak_memory_kib());
  if (!place.ready) return fault_at_start(place, cause, words);
  if (place.job) place.job->document->keep_picture(*place.job, place.page, place.worker->scratch());
  place.worker.reset();
  place.ready = false;
  if (!place.job) return;
  const Job job = *std::exchange(place.job, std::nullopt);
  job.document->handle_fault(job, std::exchange(place.page, 0), cause, seconds_spent(place));
}

// An engine that has never started and takes all the time that a page may take is not waited for
// again.
void WorkerPool::fault_at_start(Place& place, const std::string& cause, const std::string& words) {
  const bool hangs = !_has_started && Clock::now() >= place.deadline;
  place.worker.reset();
  if (++_failed_starts >= kFailedStarts || hangs) {
    _engine_failure = "did not start: " + cause + (words.empty() ? "" : ": " + words);
  } else if (place.job) {
    start_worker(place);
  }
}

bool WorkerPool::is_idle() const {
  return std::none_of(_places.begin(), _places.end(),
                      [](const Place& place) { return place.job.has_value(); });
}

bool WorkerPool::works_on(const DocumentRun& document) const {
  return std::any_of(_places.begin(), _places.end(), [&](const Place& place) {
    return place.job && place.job->document == &document;
  });
}

}  // namespace cli
