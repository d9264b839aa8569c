// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_TESTS_CLI_CONSOLE_SCRIPTED_RUN_H
#define ZELK_TESTS_CLI_CONSOLE_SCRIPTED_RUN_H

#include <string>
#include <vector>

#include "supervisor/events.h"

// A run with one document of each kind, as a supervisor would tell of it.
inline std::vector<cli::DocumentOutcome> scripted_documents() {
  using cli::DocumentState;
  const cli::PageOutcome good{1, "", "", 0.5004, 1000, false};
  const cli::PageOutcome resumed{2, "", "", 0.25, 900, true};
  const cli::PageOutcome failed{
      3, "it took longer than 180 seconds", "rendered at 90 dpi", 360.0, 2000, false};
  return {
      {"a.png", DocumentState::kDelivered, "", 1, 0.6, {"out/a.txt", "out/a.pdf"}, {good}},
      {"b\xFF.pdf",
       DocumentState::kDeliveredWithFailedPages,
       "",
       9,
       361.0,
       {"out/b\xFF.txt"},
       {good, resumed, failed}},
      {"c.png", DocumentState::kUnreadable, "the file is empty", 0, 0.0, {}, {}},
      {"d.pdf", DocumentState::kPasswordNeeded, "", 0, 0.0, {}, {}},
      {"e.pdf", DocumentState::kFailed, "", 1, 1.0, {}, {failed}},
      {"f.pdf", DocumentState::kOutputFailed, "No space left on device", 1, 1.0, {}, {good}},
      {"g.pdf", DocumentState::kSkipped, "", 0, 0.0, {}, {}},
      {"h.pdf", DocumentState::kInterrupted, "", 40, 3.0, {}, {good}},
  };
}

inline cli::RunTotals scripted_totals() {
  return {8, 7, 2, 370.5, 12000, 2000, 3};
}

inline void play_run(cli::RunListener& listener) {
  const std::vector<cli::DocumentOutcome> documents = scripted_documents();
  listener.run_started(static_cast<int>(documents.size()));
  for (const cli::DocumentOutcome& document : documents) {
    if (document.page_count > 0) {
      listener.document_opened(document.name, static_cast<int>(document.pages.size()));
    }
    for (const cli::PageOutcome& page : document.pages) {
      listener.page_finished(document.name, page);
      listener.tick();
    }
    listener.document_finished(document);
  }
  listener.run_finished(scripted_totals());
}

#endif  // ZELK_TESTS_CLI_CONSOLE_SCRIPTED_RUN_H
