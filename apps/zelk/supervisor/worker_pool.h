// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_WORKER_POOL_H
#define ZELK_APPS_SUPERVISOR_WORKER_POOL_H

#include <chrono>
#include <csignal>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "exchange/messages.h"
#include "supervisor/document_run.h"
#include "supervisor/worker_process.h"

namespace cli {

// The workers of a run: started when there is a job for them, replaced when they fail, grow old or
// a job wants a fresh one. Jobs come back to their documents as events or as faults.
class WorkerPool {
 public:
  struct Setting {
    StartOrder start;
    std::string run_folder;
    int jobs = 1;          // most workers at a time
    int page_timeout = 0;  // seconds for a page, all attempts together
    int recycle = 0;       // pages after which a worker is replaced
    bool echo = false;     // what workers print goes to standard error
  };

  explicit WorkerPool(const Setting& setting) : _setting(setting) {}

  // Hands out jobs until no worker is free or `next_job` has none.
  void give_out(const std::function<std::optional<Job>()>& next_job);
  // Waits for news, at most until something has to be done. `signals` is the mask while waiting.
  void wait(const sigset_t& signals);
  // Lets the workers stop their engines, each within a few seconds.
  void dismiss_all();

  const PageOptions& page_options() const { return _setting.start.page; }
  int capacity() const { return _setting.jobs; }
  bool is_idle() const;
  bool works_on(const DocumentRun& document) const;
  // Why no engine can be started; empty as long as that is not known.
  const std::string& engine_failure() const { return _engine_failure; }
  // What the kernel lacks for the workers' sandbox; empty when it is whole or not wanted.
  const std::string& sandbox_gap() const { return _sandbox_gap; }
  int workers_started() const { return _workers_started; }
  long peak_memory_kib() const { return _peak_memory_kib; }

 private:
  using Clock = std::chrono::steady_clock;
  struct Place {
    std::unique_ptr<WorkerProcess> worker;
    bool ready = false;
    std::optional<Job> job;         // waits as long as the worker is not ready
    int page = 0;                   // the one at hand
    std::size_t pages_started = 0;  // of the job
    int pages_done = 0;
    Clock::time_point since;  // the page, the job or the start began
    Clock::time_point deadline;
  };
  struct Leaving {
    std::unique_ptr<WorkerProcess> worker;
    Clock::time_point deadline;
  };

  Place* free_place();
  void assign(Place& place, Job job);
  void start_worker(Place& place);
  void begin(Place& place);
  void dismiss(std::unique_ptr<WorkerProcess> worker);
  void attend(Place& place);
  void attend_leaving();
  void handle(Place& place, const Event& event);
  void handle_ready(Place& place, const Ready& event);
  void handle_failure(Place& place, const JobFailed& failed);
  DocumentRun* end_job(Place& place);
  void fault(Place& place, const std::string& cause);
  void fault_at_start(Place& place, const std::string& cause, const std::string& words);
  std::string cause_of_end(Place& place) const;
  void handle_progress(Place& place, const Event& event);
  void begin_waiting(Place& place, double seconds_used = 0.0);
  static double seconds_spent(const Place& place);
  int milliseconds_to_deadline() const;

  Setting _setting;
  std::list<Place> _places;
  std::list<Leaving> _leaving;
  std::string _engine_failure;
  std::string _sandbox_gap;
  int _failed_starts = 0;  // one after another
  bool _has_started = false;
  int _workers_started = 0;
  long _peak_memory_kib = 0;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_WORKER_POOL_H
