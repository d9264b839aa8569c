// SPDX-License-Identifier: Apache-2.0
#include "console/pace.h"

#include <algorithm>

namespace cli {

void Pace::start(int documents, double now) {
  _documents = documents;
  _start = now;
}

void Pace::open(const std::string& name, int wanted) {
  Open& open = _open[name];
  ++open.documents;
  open.wanted += wanted;
  ++_documents_opened;
  _pages_known += wanted;
}

void Pace::finish_page(const std::string& name, const PageOutcome& page) {
  const auto open = _open.find(name);
  if (open != _open.end()) ++open->second.done;
  ++_pages_done;
  _pages_worked_on += page.resumed ? 0 : 1;
  _pages_known = std::max(_pages_known, _pages_done);
}

void Pace::finish_document(const std::string& name) {
  ++_documents_done;
  const auto found = _open.find(name);
  if (found == _open.end()) return;  // it could not be opened
  Open& open = found->second;
  if (--open.documents > 0) return;
  // A document that failed leaves pages that nobody will work on.
  _pages_known = std::max(_pages_done, _pages_known - std::max(0, open.wanted - open.done));
  _open.erase(found);
}

int Pace::open_documents() const {
  int count = 0;
  for (const auto& [name, open] : _open) count += open.documents;
  return count;
}

double Pace::pages_per_second(double now) const {
  const double elapsed = now - _start;
  return elapsed > 0.0 ? _pages_worked_on / elapsed : 0.0;
}

std::optional<double> Pace::seconds_left(double now) const {
  const double rate = pages_per_second(now);
  if (rate <= 0.0 || _documents_opened == 0) return std::nullopt;
  const int unopened = std::max(0, _documents - _documents_done - open_documents());
  const double mean = static_cast<double>(_pages_known) / _documents_opened;
  return (_pages_known - _pages_done + unopened * mean) / rate;
}

}  // namespace cli
