// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_JOURNAL_H
#define ZELK_APPS_SUPERVISOR_JOURNAL_H

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "supervisor/events.h"

namespace cli {

// What finished pages leave in the output folder, so that a run that was stopped or killed can be
// taken up again: ".zelk-journal/KEY/" holds the page records of one document, or, once it is
// delivered, a file that tells so. The key stands for all that the pages' results depend on
// (record_key.h).
class Journal {
 public:
  // In the output folder, which exists. Throws Error.
  Journal(const std::string& output_folder, bool resume);
  // Removes the entries of documents that need no further run, and the journal when it is empty.
  ~Journal();
  Journal(const Journal&) = delete;
  Journal& operator=(const Journal&) = delete;

  // The folder of the journal itself.
  const std::string& path() const { return _path; }

  // The folder for a document's records, empty unless an earlier run is resumed; nothing when
  // another run is at work on the same document.
  std::optional<std::string> open_document(const std::string& key);

  // The outcome of a document that an earlier run delivered for the same order (order_text), and
  // whose outputs are still as they were left.
  std::optional<DocumentOutcome> delivered(const std::string& key, const std::string& order) const;

  // The document is done: its records go, its outcome stays until the end of the run.
  void mark_delivered(const std::string& key, const std::string& order,
                      const DocumentOutcome& outcome);
  // Nobody works on the document any more, but its records stay: it was finished in another way, or
  // a file that several documents share is made of all of them, by the next run too.
  void close_document(const std::string& key);
  // All entries stay for a run with --resume, those of delivered documents too, or it would do
  // these again.
  void keep() { _keep_all = true; }

 private:
  std::string folder_of(const std::string& key) const { return _path + "/" + key; }

  std::string _path;
  bool _resume;
  bool _keep_all = false;
  std::set<std::string> _keys;        // all documents of this run
  std::map<std::string, int> _locks;  // those at work: key, descriptor of the locked folder
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_JOURNAL_H
