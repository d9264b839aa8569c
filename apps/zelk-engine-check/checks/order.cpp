// SPDX-License-Identifier: Apache-2.0
// Calls in an unusual order, and the two calls that the library does not make.
#include <fmt/format.h>

#include <fstream>
#include <iterator>

#include "check.h"
#include "session.h"

namespace engine_check {
namespace {

void expect_blank(const Reading& reading, const char* when, Verdict& verdict) {
  if (!reading.is_blank()) verdict.fail(fmt::format("there is text {}", when));
}

void results_first(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  expect_blank(session.results(0), "before any image", verdict);
  const GuardedRaster raster(subject.page, 24);
  session.set(raster);
  expect_blank(session.results(0), "before recognition", verdict);
  verdict.note("nothing read");
}

void recognize_first(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const int code = session.recognize();
  if (code == 0) verdict.fail("qv_recognize gives 0");
  expect_blank(session.results(code), "without an image", verdict);
  verdict.note(fmt::format("code {} and nothing read", code));
}

void recognize_twice(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const GuardedRaster raster(subject.page, 24);
  const Reading first = session.read(raster);
  const int code = session.recognize();
  const Reading second = session.results(code);
  const bool refused = code != 0 && second.is_blank();
  if (!refused && !same_content(first, second)) verdict.fail("another result the second time");
  verdict.note(refused ? fmt::format("code {}", code) : "the same result");
}

void results_twice(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const GuardedRaster raster(subject.page, 24);
  const Reading first = session.read(raster);
  if (!same_content(first, session.results(first.code))) {
    verdict.fail("another result the second time");
  }
  verdict.note("the same result");
}

// A page of text, then something that cannot be read.
void refused_raster(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const GuardedRaster page(subject.page, 24);
  const auto try_after_page = [&](const unsigned char* rows, int width, int height, int bits,
                                  const char* what) {
    session.read(page);
    const int accepted =
        session.engine().set_image_data(rows, width, height, bits, page.line_bytes(), 1);
    const int code = session.recognize();
    const Reading reading = session.results(code);
    if (accepted != 0 && code == 0) {
      verdict.fail(fmt::format("after {} was refused qv_recognize gives 0", what));
    }
    if (!reading.is_blank()) verdict.fail(fmt::format("after {} there is text", what));
  };
  try_after_page(nullptr, page.width(), page.height(), 24, "a null raster");
  try_after_page(page.rows(), 0, 0, 24, "a raster of 0x0");
  try_after_page(page.rows(), -1, -1, 24, "a raster of -1x-1");
  try_after_page(page.rows(), page.width(), page.height(), 7, "a raster of 7 bits");
  verdict.note("no image and no text left");
}

void page_after_page(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading first = session.read(subject.page);
  const Reading white = session.read(uniform_page(400, 300, 255));
  if (!first.is_blank() && white.text == first.text) {
    verdict.fail("a white page says what the page before it says");
  }
  if (!same_content(first, session.read(subject.page))) {
    verdict.warn("the page says something else when it is read again");
  }
  verdict.note("pages do not know of each other");
}

void load_file(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  session.read(subject.page);
  if (session.engine().load_image_file("/nowhere.png", 0) == 0) {
    verdict.fail("a file that is not there is accepted");
  }
  if (session.engine().load_image_file(nullptr, 0) == 0) {
    verdict.fail("a null path is accepted");
  }
  const std::string path = subject.scratch / "page.bmp";
  write_bmp(subject.page, path);
  const Reading raster = session.read(subject.page);
  const int accepted = session.engine().load_image_file(path.c_str(), 0);
  if (accepted == 0) {
    const int code = session.recognize();
    if (!same_content(raster, session.results(code))) verdict.fail("another result than a raster");
  }
  verdict.note(accepted == 0 ? "the same result as a raster"
                             : fmt::format("a BMP file is refused, code {}", accepted));
}

void save_file(const Subject& subject, Verdict& verdict) {
  Session session(subject);
  const Reading reading = session.read(subject.page);
  const std::string path = subject.scratch / "page.txt";
  if (!session.engine().save_ocrfile(path.c_str())) {
    verdict.warn("a text that can be written is not");
  } else {
    std::ifstream file(path, std::ios::binary);
    const std::string saved(std::istreambuf_iterator<char>(file), {});
    if (saved != reading.text) verdict.fail("the file holds another text than qv_get_result_ex");
  }
  if (session.engine().save_ocrfile("/nowhere/page.txt")) {
    verdict.fail("true for a file that cannot be written");
  }
  verdict.note("the text of qv_get_result_ex");
}

constexpr Check kChecks[] = {
    {"order.results-first", "no text before recognition", results_first},
    {"order.recognize-first", "a failure and no text without an image", recognize_first},
    {"order.recognize-twice", "the same result, or a failure without text", recognize_twice},
    {"order.results-twice", "the same result", results_twice},
    {"order.refused-raster", "no image and no text after a raster that cannot be read",
     refused_raster},
    {"order.page-after-page", "nothing of one page on another", page_after_page},
    {"order.load-image-file",
     "no file and a missing one refused; others refused or read like rasters", load_file},
    {"order.save-file", "the text in a file, false where none can be written", save_file},
};

}  // namespace

std::span<const Check> order_checks() {
  return kChecks;
}

}  // namespace engine_check
