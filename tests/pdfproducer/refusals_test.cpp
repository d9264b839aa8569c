// SPDX-License-Identifier: Apache-2.0
// What becomes of a document when the system refuses memory, a converter or a file's mode.
#include "pdfproducer/Refusals.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <memory>

#include "pdfproducer/Producer.h"
#include "pdfproducer/Tools.h"
#include "support/Documents.h"
#include "support/LeaksByContract.h"

namespace {

class Refused : public ::testing::Test {
 protected:
  void expect_empty_folder() {
    EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::path(path).parent_path()));
  }
  void expect_no_open_document() {
    EXPECT_FALSE(producer->begin_page());
    EXPECT_EQ(producer->number(), 2100) << "the document should be gone";
  }

  // A document of one page. Each call is one of the interface and allocates nothing of its own.
  std::vector<std::function<bool()>> calls_of_a_document() {
    return {[this] { return producer->begin(path) == 0; },
            [this] { return producer->load_font() == 0; },
            [this] { return producer->begin_page(); },
            [this] { return producer->set_font(12); },
            [this] { return producer->show(text, 5, 5); },
            [this] { return producer->open_image(jpeg) == 0; },
            [this] { return producer->fit_image(0); },
            [this] { return producer->close_image(0); },
            [this] { return producer->end_page(); },
            [this] { return producer->end(); }};
  }

  ScratchFolder folder;
  const std::string path = folder.path("a.pdf");
  const std::string text = to_gbk("Text \u6587\u9555");
  const std::string jpeg = make_jpeg(40, 30);
  std::unique_ptr<Producer> producer = std::make_unique<Producer>();
};

TEST_F(Refused, MemoryAtAnyPointIsAnErrorThatDropsTheDocument) {
  bool written = false;
  int allocations = 0;
  for (; !written && !HasFailure(); ++allocations) {
    producer = std::make_unique<Producer>();
    const auto calls = calls_of_a_document();
    {
      const LeaksByContract value_of_qpdf;  // the one that it made before its holder was refused
      const Refusal refusal(SystemFunction::kAllocation, ENOMEM, allocations);
      written = std::all_of(calls.begin(), calls.end(), [](const auto& call) { return call(); });
      EXPECT_NE(written, refusal.has_happened()) << "an allocation failed unnoticed";
    }
    if (written) break;
    const std::string error = std::to_string(producer->number()) + ' ' + producer->text();
    // qpdf's compressor makes an error of its own of whatever it meets.
    EXPECT_TRUE(error == "1300 out of memory" || error == "1400 std::bad_alloc") << error;
    expect_no_open_document();
    expect_empty_folder();
  }
  EXPECT_GT(allocations, 100) << "of every call";
  EXPECT_EQ(qpdf_complaint(path), "");
}

TEST_F(Refused, MemoryForTheTextOfAnErrorMakesItAnErrorOfMemory) {
  const auto number = [this](int let_through) {
    const Refusal refusal(SystemFunction::kAllocation, ENOMEM, let_through);
    producer->runs([this] { producer->api.PDF_arc(producer->p, 0, 0, 1, 0, 90); });
    return producer->number();
  };
  int let_through = 0;
  for (; number(let_through) == 1300; ++let_through) {
    EXPECT_EQ(producer->text(), "out of memory");
    EXPECT_EQ(producer->function(), "PDF_arc");
    ASSERT_LT(let_through, 10);
  }
  EXPECT_GE(let_through, 2) << "once where the error arises, once where it is kept";
  EXPECT_EQ(producer->number(), 1200);
}

TEST_F(Refused, ConverterOfEitherEncodingIsAnErrorThatNamesIt) {
  const std::string names[] = {"GBK", "EUC-CN"};
  for (int opened = 0; opened < 2; ++opened) {
    ASSERT_EQ(producer->begin(path), 0);
    const Refusal refusal(SystemFunction::kIconvOpen, EINVAL, opened);
    EXPECT_EQ(producer->load_font(), -1000);
    EXPECT_EQ(producer->number(), 1400);
    EXPECT_EQ(producer->text(), "the system does not convert " + names[opened]);
    expect_no_open_document();
    expect_empty_folder();
  }
}

TEST_F(Refused, ModeOfTheEarlierFileLeavesThatFile) {
  write_file(path, "earlier");
  const Refusal refusal(SystemFunction::kFchmod, EPERM);
  EXPECT_EQ(producer->begin(path), -1);
  EXPECT_EQ(producer->text(), "cannot create '" + path + "': Operation not permitted");
  EXPECT_EQ(read_file(path), "earlier");
  std::filesystem::remove(path);
  expect_empty_folder();
}

TEST_F(Refused, DiskAtTheEndLeavesNothing) {
  ASSERT_EQ(producer->begin(path), 0);
  ASSERT_TRUE(add_page(*producer, {}, jpeg));
  const Refusal refusal(SystemFunction::kFsync, EIO);
  EXPECT_FALSE(producer->end());
  EXPECT_EQ(producer->number(), 1016);
  EXPECT_EQ(producer->text(), "cannot write '" + path + "': Input/output error");
  expect_empty_folder();
}

TEST_F(Refused, InterruptedWriteIsMadeAgain) {
  ASSERT_EQ(producer->begin(path), 0);
  ASSERT_TRUE(add_page(*producer, line_of("text", 5, 5, 12), jpeg));
  {
    const Refusal refusal(SystemFunction::kWrite, EINTR);
    EXPECT_TRUE(producer->end());
    EXPECT_TRUE(refusal.has_happened());
  }
  EXPECT_EQ(qpdf_complaint(path), "");
}

}  // namespace
