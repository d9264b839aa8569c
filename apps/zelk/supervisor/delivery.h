// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_DELIVERY_H
#define ZELK_APPS_SUPERVISOR_DELIVERY_H

#include <map>
#include <memory>
#include <string>

#include "supervisor/document_run.h"
#include "supervisor/output.h"

namespace cli {

// True when a document writes to standard output.
bool writes_to_standard_output(const InputDocument& input);

// True when a document follows others in a file.
bool shares_a_file(const InputDocument& input);

// Puts the outputs of documents in their places: each in its own file, or one after another to
// standard output or into files that the documents share.
class Delivery {
 public:
  // `page_break`: a form feed stands between the texts of two documents too.
  Delivery(Output& results, const std::string& run_folder, bool page_break)
      : _results(results), _run_folder(run_folder), _page_break(page_break) {}

  // Notes the files of a finished document in its outcome. A file of its own that cannot be written
  // leaves the others alone: returns why, empty when all are in place. Throws Error
  // when standard output or a shared file fails.
  std::string deliver(DocumentRun& document);

  // All documents are done: shared files appear under their names. Without it they leave no trace.
  // Throws Error.
  void finish();
  // Something is written into shared files that are not finished.
  bool has_unfinished() const { return !_shared.empty(); }

 private:
  void append(const std::string& file, const InputDocument::Target& target);

  Output& _results;
  std::string _run_folder;
  bool _page_break;
  std::map<std::string, std::unique_ptr<Output>> _shared;  // by their paths
  std::map<std::string, int> _appended;                    // outputs so far, "-" too
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_DELIVERY_H
