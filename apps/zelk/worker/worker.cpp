// SPDX-License-Identifier: Apache-2.0
#include "worker/worker.h"

#include <FreeImage.h>
#include <fmt/format.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <nlohmann/json.hpp>
#include <utility>

#include "exchange/error.h"
#include "exchange/files.h"
#include "exchange/order_channel.h"
#include "process/page_raster.h"
#include "worker/decoder_messages.h"
#include "worker/document_pages.h"
#include "worker/event_pipe.h"
#include "worker/input_file.h"
#include "worker/memory_limit.h"
#include "worker/page_recognizer.h"
#include "worker/process_state.h"
#include "worker/sandbox.h"
#include "writers/page_jpeg.h"

namespace cli {

namespace {

const char* const kDecryptedFile = "decrypted.pdf";

long peak_memory_kib() {
  struct rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

void add_picture(FIBITMAP* bitmap, PageRecord& record) {
  record.jpeg = encode_page_jpeg(bitmap);
  record.width = static_cast<int>(FreeImage_GetWidth(bitmap));
  record.height = static_cast<int>(FreeImage_GetHeight(bitmap));
}

// What stands for the engine's JSON when the text is the PDF's own.
std::string json_of_own_text(const PageText& text) {
  const nlohmann::ordered_json json = {{"source", "pdf"}, {"text", text.text}};
  return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

void write_output(const AssembleOrder::Target& target, const OutputOrder& document,
                  const Progress& progress) {
  switch (target.format) {
    case Format::kText:
      return write_text(document, target.file, progress);
    case Format::kJson:
      return write_json(document, target.file, progress);
    case Format::kPdf:
      return write_pdf(document, target.file, progress);
    case Format::kHtml:
      return write_html(document, target.file, progress);
  }
}

class Worker {
 public:
  Worker(int orders, int events) : _orders(orders), _pipe(events), _events(events) {}

  int run() {
    while (std::optional<OrderWithDocument> received = _orders.receive()) {
      const Order& order = received->order;
      _received = std::move(received->document);
      if (std::holds_alternative<QuitOrder>(order)) {
        _document.reset();
        _recognizer.stop();
        _pipe.send(Bye{});
        return 0;
      }
      if (const auto* const settings = std::get_if<StartOrder>(&order)) {
        start(*settings);
        continue;
      }
      std::visit([this](const auto& job) { do_job(job); }, order);
    }
    return 1;
  }

 private:
  template <typename Job>
  void do_job(const Job& job) {
    try {
      handle(job);
    } catch (const std::bad_alloc&) {
      _document.reset();
      _pipe.send(JobFailed{memory_failure()});
      return;
    } catch (const Error& error) {
      _pipe.send(JobFailed{error.what(), error.kind() == ErrorKind::kOutput});
      return;
    } catch (const std::exception& error) {
      _pipe.send(JobFailed{error.what()});
      return;
    }
    _pipe.send(JobDone{});
  }

  void start(const StartOrder& order);
  void handle(const OpenOrder& order);
  void handle(const PagesOrder& order);
  void handle(const AssembleOrder& order);
  void handle(const StartOrder&) {}  // these two are no jobs
  void handle(const QuitOrder&) {}

  DocumentPages& document(const std::string& input);
  void make_page(const PagesOrder& order, const PagesOrder::Page& page);
  // Decoding, recognition and encoding.
  void fill_record(const PagesOrder& order, int index, PageRecord& record);
  void note_damage(const PreparedPage& page, PageRecord& record);
  void recognize(int index, const PreparedPage& page, PageRecord& record);
  std::string memory_failure() const {
    return fmt::format("more memory is needed than --memory-limit {} allows",
                       _settings.memory_limit_mib);
  }

  OrderReceiver _orders;
  EventPipe _pipe;
  int _events;
  StartOrder _settings;
  PageRecognizer _recognizer;
  // As the engine left it at its start, to which every page returns.
  std::optional<ProcessState> _state;
  Descriptor _received;                      // with the order at hand
  Descriptor _descriptor;                    // of the document below
  std::unique_ptr<DocumentPages> _document;  // stays open from one window to the next
  std::string _input;                        // its name in orders
  bool _is_page_damaged = false;             // the page at work has failed for its lost parts
};

void Worker::start(const StartOrder& order) {
  _settings = order;
  limit_memory(order.memory_limit_mib, _events);
  silence_decoders();
  Ready ready;
  const std::string scratch = std::filesystem::current_path().string();
  ready.failure = _recognizer.start(order.engine_dir);
  if (chdir(scratch.c_str()) != 0) ready.failure = "left no scratch folder";
  constexpr std::uint64_t kLibrary = std::uint64_t{16} << 20;  // one that could not be mapped
  if (!ready.failure.empty() && (take_memory_was_short() || limit_forbids(kLibrary))) {
    ready.failure += ": " + memory_failure();
  }
  if (order.sandbox && ready.failure.empty()) ready.sandbox_gap = enter_sandbox(order.readable);
  _state.emplace(scratch);
  _pipe.send(ready);
}

DocumentPages& Worker::document(const std::string& input) {
  if (_document != nullptr && _input == input) return *_document;
  _document.reset();  // before the next is opened: PDFium serves one document
  PageSettings settings;
  if (_settings.page.dpi > 0) settings.dpi = _settings.page.dpi;
  settings.password = _settings.password;
  settings.max_pixels = _settings.page.max_pixels;
  if (!_received.is_open()) throw std::runtime_error("no descriptor is left for the document");
  _descriptor = std::move(_received);
  _document = std::make_unique<DocumentPages>(descriptor_path(_descriptor.number()), settings,
                                              kDecryptedFile);
  _input = input;
  return *_document;
}

void Worker::handle(const OpenOrder& order) {
  unlink(kDecryptedFile);
  Opened opened;
  try {
    DocumentPages& pages = document(order.input);
    for (int index = 0; index < pages.page_count(); ++index) {
      const DocumentPages::Size size = pages.page_size(index);
      opened.pages.push_back({size.width, size.height});
    }
  } catch (const UnreadableDocument& error) {
    _pipe.send(Refused{error.what(), error.needs_password()});
    return;
  }
  if (order.digest) opened.digest = digest_of_descriptor(_descriptor.number(), order.input);
  if (access(kDecryptedFile, F_OK) == 0) opened.decrypted = kDecryptedFile;
  _pipe.send(opened);
}

void Worker::handle(const PagesOrder& order) {
  for (const PagesOrder::Page& page : order.pages) make_page(order, page);
}

void Worker::make_page(const PagesOrder& order, const PagesOrder::Page& page) {
  _pipe.send(PageStarted{page.number});
  const auto start = std::chrono::steady_clock::now();
  PageRecord record;
  record.page = page.number;
  _is_page_damaged = false;
  fill_record(order, page.index, record);
  _state->restore();
  record.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  record.memory_kib = peak_memory_kib();
  write_page_record(page_record_name(page.number), record);
  unlink(page_picture_name(page.number).c_str());
  _pipe.send(PageFinished{page.number, record.failure, record.is_unreadable, _is_page_damaged,
                          record.has_own_text, record.warning, record.seconds, record.memory_kib});
}

void Worker::fill_record(const PagesOrder& order, int index, PageRecord& record) {
  try {
    DocumentPages& pages = document(order.input);
    const DocumentPages::Size size = pages.page_size(index);
    record.page_width = size.width;
    record.page_height = size.height;
    const PreparedPage page = pages.prepare(index);
    note_damage(page, record);
    record.dots_per_inch = page.dots_per_inch;
    ofd::stamp_resolution(page.bitmap.get(), page.dots_per_inch);
    if (_settings.pictures) {
      // Left behind at once: it stands for the page if recognition ends this worker.
      add_picture(page.bitmap.get(), record);
      write_page_record(page_picture_name(record.page), record);
    }
    take_memory_was_short();  // what was short until now has done no harm
    if (record.failure.empty()) recognize(index, page, record);
    if (!record.failure.empty() && take_memory_was_short())
      record.failure += ": " + memory_failure();
  } catch (const UnreadablePage& error) {
    record.failure = error.what();
    record.is_unreadable = true;
  } catch (const std::bad_alloc&) {
    record.failure = memory_failure();
  }
  if (!record.failure.empty() && !order.name.empty())
    record.failure = order.name + ": " + record.failure;
}

void Worker::note_damage(const PreparedPage& page, PageRecord& record) {
  record.warning = page.warning;
  if (page.damage.empty()) return;
  if (_settings.page.strict) {
    record.failure = page.damage;
    _is_page_damaged = true;
  } else {
    record.warning += (record.warning.empty() ? "" : "; ") + page.damage;
  }
}

void Worker::recognize(int index, const PreparedPage& page, PageRecord& record) {
  const std::optional<PageText> own_text = _document->text(index, page.dots_per_inch);
  record.has_own_text = own_text.has_value();
  if (!own_text || !_settings.page.skip_text) {
    _recognizer.recognize(page.bitmap.get(), record);
    return;
  }
  record.text = own_text->text;
  record.json = json_of_own_text(*own_text);
  record.characters = own_text->characters;
}

void Worker::handle(const AssembleOrder& order) {
  const Progress progress = [this] { _pipe.send(OutputProgress{}); };
  for (const AssembleOrder::Target& target : order.targets) {
    write_output(target, order.document, progress);
  }
}

}  // namespace

int run_worker(int orders, int events) {
  std::signal(SIGPIPE, SIG_IGN);  // a supervisor that is gone is an error like any other
  std::signal(SIGXFSZ, SIG_IGN);
  std::setvbuf(stdout, nullptr, _IOLBF, 0);  // what an engine prints is read before what it caused
  return Worker(orders, events).run();
}

}  // namespace cli
