// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_WORKER_LOG_H
#define ZELK_APPS_SUPERVISOR_WORKER_LOG_H

#include <string>
#include <string_view>

namespace cli {

// What a worker and its engine print. Nothing of it commands a terminal: control characters other
// than the ends of lines and tabulators, and bytes that are not UTF-8, stand as \xNN.
class WorkerLog {
 public:
  // Returns what can be shown now; a character that is cut off waits for the rest.
  std::string add(std::string_view bytes);
  // What was printed last, its lines joined by "; "; may be empty.
  std::string last_words() const;

 private:
  std::string _pending;
  std::string _tail;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_WORKER_LOG_H
