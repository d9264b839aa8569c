// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_SUPERVISOR_DOCUMENT_RUN_H
#define ZELK_APPS_SUPERVISOR_DOCUMENT_RUN_H

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "exchange/messages.h"
#include "exchange/order_channel.h"
#include "options/inputs.h"
#include "supervisor/events.h"
#include "supervisor/source_file.h"

namespace cli {

class DocumentRun;

// Pages of a document in JPEG are needed for these formats.
bool needs_pictures(const InputDocument& input);

// A piece of work for one worker.
struct Job {
  enum class Kind { kOpen, kPages, kAssemble };
  Kind kind = Kind::kOpen;
  DocumentRun* document = nullptr;
  std::size_t source = 0;  // which of the document's files
  std::vector<int> pages;  // numbers in the document
  bool wants_fresh_worker = false;
  int id = 0;                 // of those with pages: tells who has which page
  double seconds_used = 0.0;  // by earlier attempts of a page that is tried once more
};

// One document on its way from its files to its outputs: which jobs there are, what became of them.
// Knows workers only as folders; never looks into the document itself.
class DocumentRun {
 public:
  // What the documents of a run have in common.
  struct Setting {
    const Options& options;
    std::string run_folder;
    RunListener& listener;
    // The folder that keeps a document's records beyond the run, for the digests of its files;
    // nothing without a journal. May tell that the document was delivered by an earlier run.
    std::function<std::optional<std::string>(DocumentRun&, const std::string& digests)> attach;
  };

  DocumentRun(InputDocument input, int id, const Setting& setting);

  const InputDocument& input() const { return _input; }
  const DocumentOutcome& outcome() const { return _outcome; }
  DocumentOutcome& outcome() { return _outcome; }
  const std::string& journal_key() const { return _journal_key; }
  void set_journal_key(const std::string& key) { _journal_key = key; }

  // Numbers of the pages to work on, once the document is open.
  const std::vector<int>& wanted() const { return _wanted; }

  // Work that could be given out now. A window holds at most `window` pages.
  std::optional<Job> next_job(int window);
  int waiting_pages() const { return static_cast<int>(_pending.size()); }

  // What a worker has to do for a job, with the document that it has to read; what else the job
  // takes is laid into its scratch folder.
  OrderWithDocument prepare(const Job& job, const std::string& scratch);

  // What a worker tells of a job.
  void handle(const Job& job, const Event& event, const std::string& scratch);
  // The job's worker is gone, hangs or is out of its mind. `page`: the one at hand, 0 if none;
  // `seconds`: what was spent on it, or on the job.
  void handle_fault(const Job& job, int page, const std::string& cause, double seconds = 0.0);
  // Keeps the picture of a page that a worker has left unfinished; before handle_fault.
  void keep_picture(const Job& job, int page, const std::string& scratch) const;

  // Outputs lie in output_path(), to be delivered.
  bool is_assembled() const { return _stage == Stage::kAssembled; }
  bool is_finished() const { return _stage == Stage::kFinished; }
  std::string output_path(std::size_t target) const;
  void finish(DocumentState state, const std::string& cause);
  // Removes what the run folder holds of it.
  void remove_files() const;

 private:
  enum class Stage { kOpening, kRecognizing, kAssembling, kAssembled, kFinished };
  struct Source {
    SourceFile file;
    std::string digest;
    bool given_out = false;
    bool opened = false;
    int attempts = 0;
    std::vector<Opened::Page> pages;
    std::string failure;  // of a list's picture that cannot be opened
  };
  struct Page {
    std::size_t source = 0;
    int index = 0;
    double width = 0.0;
    double height = 0.0;
    int attempts = 0;
    std::string failure;        // of the last attempt
    double seconds_used = 0.0;  // by all attempts
  };

  std::optional<Job> next_opening();
  std::optional<Job> next_pages(int window);
  void handle_opened(const Job& job, const Opened& event, const std::string& scratch);
  void handle_refused(const Job& job, const Refused& event);
  void handle_page(const Job& job, const PageFinished& event, const std::string& scratch);
  void handle_assembled(const Job& job, const std::string& scratch);
  void handle_end(const Job& job);
  void settle(const Job& job);
  void open_pages();
  void load_records();
  bool holds(const Job& job, int page) const;
  void give_back(const Job& job, int& number);
  void lose_pages(const Job& job, int number, const std::string& cause, double seconds);
  // The picture that a page of a list is, as its number alone would tell little; else empty.
  std::string list_name(std::size_t source) const;
  void fail_page(int number, const std::string& cause, double seconds);
  void record_failure(int number, const std::string& cause);
  void page_done(const PageOutcome& outcome);
  void check_pages();
  bool wants_pictures() const { return needs_pictures(_input); }
  std::string record_path(int page) const;
  std::string picture_path(int page) const;
  std::string input_name(std::size_t source) const;
  Page& page(int number) { return _pages[static_cast<std::size_t>(number) - 1]; }
  const Page& page(int number) const { return _pages[static_cast<std::size_t>(number) - 1]; }

  InputDocument _input;
  int _id;
  const Setting& _setting;
  std::string _folder;  // of the page records
  std::string _journal_key;
  Stage _stage = Stage::kOpening;
  std::chrono::steady_clock::time_point _start = std::chrono::steady_clock::now();
  std::vector<Source> _sources;
  std::vector<Page> _pages;
  std::vector<int> _wanted;
  std::deque<int> _pending;
  std::deque<int> _retries;
  std::map<int, int> _holders;  // page in the hands of a worker, the job that it belongs to
  int _last_job = 0;
  std::map<int, PageOutcome> _page_outcomes;
  int _assembly_attempts = 0;
  bool _assembly_given_out = false;
  DocumentOutcome _outcome;
};

}  // namespace cli

#endif  // ZELK_APPS_SUPERVISOR_DOCUMENT_RUN_H
