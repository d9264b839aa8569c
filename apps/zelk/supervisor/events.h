// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_EVENTS_H
#define ZELK_APPS_SUPERVISOR_EVENTS_H

#include <string>
#include <vector>

namespace cli {

struct PageOutcome {
  int page = 0;         // number in its document, counted from 1
  std::string failure;  // empty: recognised
  std::string warning;
  double seconds = 0.0;
  long memory_kib = 0;
  bool resumed = false;        // taken from the journal of an earlier run
  bool is_unreadable = false;  // the page could not even be decoded
  bool has_own_text = false;   // a PDF page that had text already
};

enum class DocumentState {
  kDelivered,
  kDeliveredWithFailedPages,
  kUnreadable,
  kPasswordNeeded,
  kFailed,        // too many failed pages, or its outputs could not be made
  kOutputFailed,  // the outputs could not be written
  kSkipped,       // its outputs existed
  kInterrupted,
};

struct DocumentOutcome {
  std::string name;  // any bytes
  DocumentState state = DocumentState::kDelivered;
  std::string cause;     // empty when all is well
  int page_count = 0;    // pages of the document, wanted or not
  double seconds = 0.0;  // from its first job to its delivery
  std::vector<std::string> outputs;
  std::vector<PageOutcome> pages;
  std::string notice = {};  // what the user should know although all is well; mostly empty
};

struct RunTotals {
  int documents = 0;  // outcomes so far
  int pages = 0;
  int failed_pages = 0;
  double seconds = 0.0;
  long supervisor_memory_kib = 0;
  long worker_memory_kib = 0;  // the highest of any worker
  int workers_started = 0;
  bool is_reader_gone = false;  // nobody reads standard output any more: the run ended early
};

// Whoever wants to know how a run goes: progress on the terminal, the report. Calls come from the
// supervisor's one thread.
class RunListener {
 public:
  virtual ~RunListener() = default;
  virtual void run_started(int /*documents*/) {}
  // The document's pages are known: `wanted` will be worked on.
  virtual void document_opened(const std::string& /*name*/, int /*wanted*/) {}
  virtual void page_finished(const std::string& /*name*/, const PageOutcome& /*page*/) {}
  virtual void document_finished(const DocumentOutcome& /*document*/) {}
  // Called at least once a second while the run lasts.
  virtual void tick() {}
  virtual void run_finished(const RunTotals& /*totals*/) {}
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_EVENTS_H
