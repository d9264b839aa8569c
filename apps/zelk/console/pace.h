// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_CONSOLE_PACE_H
#define ZELK_APPS_CONSOLE_PACE_H

#include <map>
#include <optional>
#include <string>

#include "supervisor/events.h"

namespace cli {

// How far a run has come and how fast it goes. Times are seconds of one clock.
class Pace {
 public:
  void start(int documents, double now);
  void open(const std::string& name, int wanted);
  void finish_page(const std::string& name, const PageOutcome& page);
  void finish_document(const std::string& name);

  int documents() const { return _documents; }
  int documents_done() const { return _documents_done; }
  int pages_done() const { return _pages_done; }
  // Pages of all documents opened so far. More will follow while `is_total_known` is false.
  int pages_known() const { return _pages_known; }
  bool is_total_known() const { return _documents_done + open_documents() >= _documents; }

  // Pages that were worked on, not those taken from a journal. 0 before the first.
  double pages_per_second(double now) const;
  // Nothing before there is something to judge by. Documents that are not open yet count with the
  // mean number of pages of the others.
  std::optional<double> seconds_left(double now) const;

 private:
  struct Open {
    int documents = 0;  // inputs may be given twice
    int wanted = 0;
    int done = 0;
  };
  int open_documents() const;

  double _start = 0.0;
  int _documents = 0;
  int _documents_done = 0;
  int _documents_opened = 0;
  int _pages_done = 0;
  int _pages_known = 0;
  int _pages_worked_on = 0;
  std::map<std::string, Open> _open;
};

}  // namespace cli

#endif  // ZELK_APPS_CONSOLE_PACE_H
