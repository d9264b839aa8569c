// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_WORKER_PROCESS_H
#define ZELK_APPS_SUPERVISOR_WORKER_PROCESS_H

#include <sys/types.h>

#include <string>
#include <vector>

#include "exchange/frames.h"
#include "exchange/messages.h"
#include "exchange/order_channel.h"
#include "supervisor/worker_log.h"

struct pollfd;

namespace cli {

// A worker as its supervisor sees it: a process in a scratch folder of its own, a socket for
// orders, a pipe for events, another for what it and its engine print.
class WorkerProcess {
 public:
  // Starts the program anew as a worker. Throws Error.
  // `echo`: what it prints goes to standard error.
  WorkerProcess(const std::string& scratch, bool echo);
  // Kills the process with all that it started and removes the scratch folder.
  ~WorkerProcess();
  WorkerProcess(const WorkerProcess&) = delete;
  WorkerProcess& operator=(const WorkerProcess&) = delete;

  const std::string& scratch() const { return _scratch; }
  // Path of a file in the scratch folder.
  std::string path(const std::string& name) const { return _scratch + "/" + name; }

  void send(OrderWithDocument order);
  // Removes what a job has left in the scratch folder.
  void tidy() const;

  // Adds what is to be waited for.
  void watch(std::vector<pollfd>& watched) const;
  // Sends and receives what can be without waiting; returns the events that came.
  std::vector<Event> exchange();
  // True when the process is gone or has closed its pipe: no event will come any more.
  bool has_ended() const { return _ended; }

  void kill();
  // Why a worker that has ended did so, in words; waits for the end. `memory_limit_mib` tells an
  // end for lack of memory from others.
  std::string cause_of_end(int memory_limit_mib);
  // What the worker and its engine printed last, its lines joined by "; "; may be empty.
  std::string last_words() const { return _words.last_words(); }
  // The worker's peak of resident memory; known after its end.
  long peak_memory_kib() const { return _peak_memory_kib; }

 private:
  void receive(std::vector<Event>& events);
  void receive_log();
  void reap();
  bool runs_on() const;

  std::string _scratch;
  bool _echo;
  pid_t _pid = -1;
  int _orders = -1;
  int _events = -1;
  int _log = -1;
  OrderSender _sender;
  FrameReader _frames;
  WorkerLog _words;
  bool _ended = false;
  bool _reaped = false;
  bool _was_short_of_memory = false;
  int _status = 0;
  long _peak_memory_kib = 0;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_WORKER_PROCESS_H
