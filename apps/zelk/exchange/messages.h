// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_MESSAGES_H
#define ZELK_APPS_EXCHANGE_MESSAGES_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "outputs/outputs.h"

namespace cli {

// What supervisor and worker tell each other. A worker does one order at a time and ends each but
// the first and the last with JobDone or JobFailed. File names are those of the worker's scratch
// folder, its working directory.

// ---- orders: supervisor to worker ----

// Every setting that can change what a worker makes of a page. The journal's keys hold all of it,
// and workers learn of such settings nowhere else, so that no option can be forgotten there.
struct PageOptions {
  int dpi = 0;  // 0: the page's own
  std::int64_t max_pixels = 0;
  bool skip_text = false;
  bool strict = false;  // a page with lost parts has failed
};

// The first order: settings that hold for the worker's life, and its engine. Answer: Ready.
struct StartOrder {
  std::string engine_dir;
  int memory_limit_mib = 0;  // of address space; 0: none
  PageOptions page;
  std::string password;
  bool pictures = false;  // records hold the page's JPEG
  bool sandbox = false;
  std::vector<std::string> readable;  // what a worker in its sandbox may read
};

// Looks at a document. Answers: Opened or Refused.
struct OpenOrder {
  std::string input;
  bool digest = false;  // wanted: the digest of the content
};

// Recognises pages of an input. Answers for each page: PageStarted, PageFinished.
struct PagesOrder {
  struct Page {
    int number = 0;  // in the document, from 1: names the record
    int index = 0;   // in the input, from 0
  };
  std::string input;
  std::vector<Page> pages;
  std::string name = {};  // what failures begin with, of a list's picture; mostly empty
};

// Makes the outputs of a document from its records. Answers: OutputProgress after each page.
struct AssembleOrder {
  struct Target {
    Format format = Format::kText;
    std::string file;
  };
  OutputOrder document;
  std::vector<Target> targets;
};

// Stops the engine and ends. Answer: Bye.
struct QuitOrder {};

using Order = std::variant<StartOrder, OpenOrder, PagesOrder, AssembleOrder, QuitOrder>;

// ---- events: worker to supervisor ----

struct Ready {
  std::string failure;      // why the engine did not start; empty when it did
  std::string sandbox_gap;  // what the kernel lacks for the sandbox; empty when it is whole
};

struct Opened {
  struct Page {
    double width = 0.0;  // points; 0 when unknown
    double height = 0.0;
  };
  std::vector<Page> pages;
  std::string digest;
  std::string decrypted;  // file that serves for the input from now on; empty: the input itself
};

struct Refused {
  std::string reason;
  bool needs_password = false;
};

struct PageStarted {
  int number = 0;
};

// The page's record lies in the scratch folder under its page_record_name. While the page is
// recognised, a record with nothing but its picture, if wanted, lies under its page_picture_name.
struct PageFinished {
  int number = 0;
  std::string failure;         // as in the record
  bool is_unreadable = false;  // as in the record: another attempt would fail in the same way
  bool is_damaged = false;     // failed for its lost parts: so would another attempt
  bool has_own_text = false;   // as in the record
  std::string warning;
  double seconds = 0.0;
  long memory_kib = 0;
};

struct OutputProgress {};

struct JobDone {};

struct JobFailed {
  std::string reason;
  bool is_output = false;  // a file cannot be written: the reason begins with its name
};

struct Bye {};

// Memory was asked for in vain; the worker may crash of it.
struct MemoryShort {};

using Event = std::variant<Ready, Opened, Refused, PageStarted, PageFinished, OutputProgress,
                           JobDone, JobFailed, Bye, MemoryShort>;

// As the body of a frame. Texts may hold any bytes.
std::string encode_order(const Order& order);
std::string encode_event(const Event& event);
// Nothing for bytes that are no such message.
std::optional<Order> decode_order(std::string_view bytes);
std::optional<Event> decode_event(std::string_view bytes);

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_MESSAGES_H
