// SPDX-License-Identifier: Apache-2.0
// Contexts: memory, errors and the order of calls.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <functional>

#include "pdfproducer/Producer.h"
#include "support/Documents.h"

namespace {

int g_allocated = 0;
int g_released = 0;

void* counted_allocation(PDF*, std::size_t size, const char* caller) {
  EXPECT_STREQ(caller, "PDF_new2");
  ++g_allocated;
  return std::malloc(size);
}

void counted_release(PDF*, void* memory) {
  ++g_released;
  std::free(memory);
}

void* no_memory(PDF*, std::size_t, const char*) {
  return nullptr;
}

void announce(PDF*, int number, const char* text) {
  std::fprintf(stderr, "<%d|%s>", number, text);
}

TEST(Context, LivesInMemoryOfTheGivenProcedures) {
  const PDFlib_api& api = *PDF_get_api();
  g_allocated = g_released = 0;
  int mine = 0;
  PDF* const p = api.PDF_new2(nullptr, counted_allocation, nullptr, counted_release, &mine);
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(g_allocated, 1);
  EXPECT_EQ(PDF_get_opaque(p), &mine);
  EXPECT_EQ(api.PDF_get_opaque(p), &mine);
  api.PDF_delete(p);
  EXPECT_EQ(g_released, 1);
}

TEST(Context, IsNullWhenThereIsNoMemory) {
  EXPECT_EQ(PDF_get_api()->PDF_new2(nullptr, no_memory, nullptr, nullptr, nullptr), nullptr);
}

TEST(Context, HasNothingToReportBeforeTheFirstError) {
  Producer producer;
  EXPECT_EQ(producer.number(), 0);
  EXPECT_EQ(producer.function(), "");
  EXPECT_EQ(producer.text(), "");
  EXPECT_EQ(pdf_catch(producer.p), 0);
}

TEST(Context, TellsOfAnErrorOnce) {
  Producer producer;
  volatile bool returned = false;
  if (setjmp(pdf_jbuf(producer.p)->jbuf) == 0) {
    producer.api.PDF_arc(producer.p, 0, 0, 1, 0, 90);
    returned = true;
  }
  EXPECT_FALSE(returned);
  EXPECT_EQ(pdf_catch(producer.p), 1);
  EXPECT_EQ(pdf_catch(producer.p), 0);
  EXPECT_EQ(producer.api.PDF_get_errnum(producer.p), 1200);
  EXPECT_STREQ(producer.api.PDF_get_apiname(producer.p), "PDF_arc");
  EXPECT_STREQ(producer.api.PDF_get_errmsg(producer.p), "this producer does not offer PDF_arc");
}

TEST(Context, OneArmedBufferServesManyCalls) {
  Producer producer;
  volatile int calls = 0;
  if (setjmp(pdf_jbuf(producer.p)->jbuf) == 0) {
    PDF_set_parameter(producer.p, "hypertextencoding", "host");
    calls = calls + 1;
    PDF_set_parameter(producer.p, "binding", "C++");
    calls = calls + 1;
    PDF_set_parameter(producer.p, "colour", "blue");
    calls = calls + 1;
  }
  EXPECT_EQ(pdf_catch(producer.p), 1);
  EXPECT_EQ(calls, 2);
}

TEST(ContextDeathTest, AnErrorWithoutAnArmedBufferEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  Producer producer;
  EXPECT_DEATH(producer.api.PDF_arc(producer.p, 0, 0, 1, 0, 90), "PDF_arc: this producer");
  // The one below was armed for a call that is over.
  producer.runs([&] { PDF_set_parameter(producer.p, "binding", "C++"); });
  EXPECT_DEATH(producer.api.PDF_arc(producer.p, 0, 0, 1, 0, 90), "PDF_arc: this producer");
}

TEST(ContextDeathTest, AnErrorUsesTheArmedBufferUp) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  Producer producer;
  if (setjmp(pdf_jbuf(producer.p)->jbuf) == 0) {
    producer.api.PDF_arc(producer.p, 0, 0, 1, 0, 90);
  } else {
    EXPECT_DEATH(producer.api.PDF_fill(producer.p), "PDF_fill");
  }
  EXPECT_EQ(pdf_catch(producer.p), 1);
}

TEST(ContextDeathTest, AnErrorHandlerHearsOfAnErrorWithoutAnArmedBuffer) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const PDFlib_api& api = *PDF_get_api();
  PDF* const p = api.PDF_new2(announce, nullptr, nullptr, nullptr, nullptr);
  EXPECT_DEATH(api.PDF_end_page_ext(p, ""), "<2100\\|.*no document");
  api.PDF_delete(p);
}

TEST(Parameters, OfTheWriterAndTheBindingAreAccepted) {
  Producer producer;
  for (const auto set : {PDF_set_parameter, producer.api.PDF_set_parameter}) {
    EXPECT_TRUE(producer.runs([&] { set(producer.p, "hypertextencoding", "host"); }));
    EXPECT_TRUE(producer.runs([&] { set(producer.p, "binding", "C++"); }));
    EXPECT_TRUE(producer.runs([&] { set(producer.p, "binding", "anything"); }));
    EXPECT_TRUE(producer.runs([&] { set(producer.p, "objorient", "true"); }));
  }
}

TEST(Parameters, OthersAreRefusedByName) {
  Producer producer;
  const auto refusal = [&](const char* key, const char* value) {
    const bool ran = producer.runs([&] { PDF_set_parameter(producer.p, key, value); });
    EXPECT_EQ(producer.number(), 1200);
    EXPECT_EQ(producer.function(), "PDF_set_parameter");
    return ran ? "accepted" : producer.text();
  };
  EXPECT_EQ(refusal("license", "x"), "this producer does not offer the parameter 'license'");
  EXPECT_EQ(refusal("hypertextencoding", "unicode"),
            "this producer does not offer the encoding 'unicode'");
  EXPECT_EQ(refusal("objorient", "maybe"),
            "this producer does not offer the value of objorient 'maybe'");
  EXPECT_EQ(refusal(nullptr, nullptr), "this producer does not offer the parameter ''");
}

class Scope : public ::testing::Test {
 protected:
  // A call that has to fail for being out of place.
  void expect_out_of_place(const std::string& function, const std::function<void()>& call) {
    const auto* const reference = &call;
    EXPECT_FALSE(producer.runs([reference] { (*reference)(); })) << function;
    EXPECT_EQ(producer.number(), 2100) << function;
    EXPECT_EQ(producer.function(), function);
    EXPECT_NE(producer.text(), "");
  }
  void expect_page_calls_out_of_place() {
    expect_out_of_place("PDF_end_page_ext", [&] { api.PDF_end_page_ext(p, ""); });
    expect_out_of_place("PDF_setfont", [&] { api.PDF_setfont(p, 0, 12); });
    expect_out_of_place("PDF_setcolor", [&] { api.PDF_setcolor(p, "fill", "rgb", 0, 0, 0, 0); });
    expect_out_of_place("PDF_show_xy2", [&] { api.PDF_show_xy2(p, "a", 1, 0, 0); });
    expect_out_of_place("PDF_fit_image", [&] { api.PDF_fit_image(p, 0, 0, 0, "adjustpage"); });
  }

  ScratchFolder folder;
  Producer producer;
  PDF* const p = producer.p;
  const PDFlib_api& api = producer.api;
};

TEST_F(Scope, NothingWorksWithoutADocument) {
  expect_page_calls_out_of_place();
  expect_out_of_place("PDF_begin_page_ext", [&] { api.PDF_begin_page_ext(p, 0, 0, ""); });
  expect_out_of_place("PDF_load_font",
                      [&] { api.PDF_load_font(p, "STSong-Light", 0, "GB-EUC-H", ""); });
  expect_out_of_place("PDF_open_image",
                      [&] { api.PDF_open_image(p, "jpeg", "memory", "x", 1, 1, 1, 3, 8, ""); });
  expect_out_of_place("PDF_close_image", [&] { api.PDF_close_image(p, 0); });
}

TEST_F(Scope, PageCallsNeedAPage) {
  ASSERT_EQ(producer.begin(folder.path("a.pdf")), 0);
  expect_page_calls_out_of_place();
  ASSERT_TRUE(producer.begin_page());
  ASSERT_EQ(producer.open_image(make_jpeg(2, 2)), 0);
  ASSERT_TRUE(producer.fit_image(0));
  ASSERT_TRUE(producer.end_page());
  expect_page_calls_out_of_place();
  ASSERT_TRUE(producer.end());
  expect_page_calls_out_of_place();
}

TEST_F(Scope, TextNeedsAFontSetOnThePage) {
  ASSERT_EQ(producer.begin(folder.path("a.pdf")), 0);
  ASSERT_EQ(producer.load_font(), 0);
  ASSERT_TRUE(producer.begin_page());
  expect_out_of_place("PDF_show_xy2", [&] { api.PDF_show_xy2(p, "a", 1, 0, 0); });
  ASSERT_TRUE(producer.set_font(9));
  EXPECT_TRUE(producer.show("a", 0, 0));
  ASSERT_TRUE(producer.begin_page());
  expect_out_of_place("PDF_show_xy2", [&] { api.PDF_show_xy2(p, "a", 1, 0, 0); });
}

TEST_F(Scope, AnErrorLeavesThePageUsable) {
  ASSERT_EQ(producer.begin(folder.path("a.pdf")), 0);
  ASSERT_TRUE(producer.begin_page());
  EXPECT_FALSE(producer.set_font(12));
  ASSERT_EQ(producer.open_image(make_jpeg(2, 2)), 0);
  ASSERT_TRUE(producer.fit_image(0));
  EXPECT_TRUE(producer.end_page());
  EXPECT_TRUE(producer.end());
  EXPECT_NE(read_file(folder.path("a.pdf")), "");
}

class Arguments : public Scope {
 protected:
  void SetUp() override {
    ASSERT_EQ(producer.begin(folder.path("a.pdf")), 0);
    ASSERT_EQ(producer.load_font(), 0);
    ASSERT_TRUE(producer.begin_page());
    ASSERT_TRUE(producer.set_font(12));
  }
  void expect_error(int number, const std::string& text, const std::function<void()>& call) {
    const auto* const reference = &call;
    EXPECT_FALSE(producer.runs([reference] { (*reference)(); })) << text;
    EXPECT_EQ(producer.number(), number) << text;
    EXPECT_NE(producer.text().find(text), std::string::npos) << producer.text();
  }
};

TEST_F(Arguments, WhatIsNotOfferedIsRefused) {
  const auto refused = [&](const std::string& text, const std::function<void()>& call) {
    expect_error(1200, text, call);
  };
  const std::string name = folder.path("b.pdf");
  refused("font 'Helvetica'", [&] { api.PDF_load_font(p, "Helvetica", 0, "GB-EUC-H", ""); });
  refused("font ''", [&] { api.PDF_load_font(p, nullptr, 0, "GB-EUC-H", ""); });
  refused("encoding 'winansi'", [&] { api.PDF_load_font(p, "STSong-Light", 0, "winansi", ""); });
  refused("option list 'embedding'",
          [&] { api.PDF_load_font(p, "STSong-Light", 0, "GB-EUC-H", "embedding"); });
  refused("UTF-16", [&] { api.PDF_load_font(p, "STSong-Light", 12, "GB-EUC-H", ""); });
  refused("colour space 'cmyk'", [&] { api.PDF_setcolor(p, "fill", "cmyk", 0, 0, 0, 1); });
  refused("kind of painting 'stroke'", [&] { api.PDF_setcolor(p, "stroke", "rgb", 0, 0, 0, 0); });
  refused("image type 'png'",
          [&] { api.PDF_open_image(p, "png", "memory", "x", 1, 1, 1, 3, 8, ""); });
  refused("image source 'url'",
          [&] { api.PDF_open_image(p, "jpeg", "url", "x", 1, 1, 1, 3, 8, ""); });
  refused("option list 'invert'",
          [&] { api.PDF_open_image(p, "jpeg", "memory", "x", 1, 1, 1, 3, 8, "invert"); });
  refused("option list 'scale 2'", [&] { api.PDF_fit_image(p, 0, 0, 0, "scale 2"); });
  refused("option list ''", [&] { api.PDF_fit_image(p, 0, 0, 0, ""); });
  refused("option list 'rotate'", [&] { api.PDF_end_page_ext(p, "rotate"); });
  refused("option list 'topdown'", [&] { api.PDF_begin_page_ext(p, 0, 0, "topdown"); });
  refused("option list 'moddate'", [&] { api.PDF_end_document(p, "moddate"); });
  refused("UTF-16", [&] { api.PDF_begin_document(p, name.c_str(), 8, ""); });
  refused("option list 'linearize'",
          [&] { api.PDF_begin_document(p, name.c_str(), 0, "linearize"); });
}

TEST_F(Arguments, OutOfRangeAreErrors) {
  const auto wrong = [&](const std::string& text, const std::function<void()>& call) {
    expect_error(1100, text, call);
  };
  wrong("handle", [&] { api.PDF_setfont(p, 1, 12); });
  wrong("handle", [&] { api.PDF_setfont(p, -1, 12); });
  wrong("size", [&] { api.PDF_setfont(p, 0, 0); });
  wrong("size", [&] { api.PDF_setfont(p, 0, -3); });
  wrong("size", [&] { api.PDF_setfont(p, 0, NAN); });
  wrong("finite", [&] { api.PDF_show_xy2(p, "a", 1, INFINITY, 0); });
  wrong("finite", [&] { api.PDF_show_xy2(p, "a", 1, 0, NAN); });
  wrong("length", [&] { api.PDF_show_xy2(p, "a", -1, 0, 0); });
  wrong("between 0 and 1", [&] { api.PDF_setcolor(p, "fill", "rgb", 0, 2, 0, 0); });
  wrong("between 0 and 1", [&] { api.PDF_setcolor(p, "fill", "rgb", NAN, 0, 0, 0); });
  wrong("handle", [&] { api.PDF_fit_image(p, 0, 0, 0, "adjustpage"); });
  wrong("handle", [&] { api.PDF_close_image(p, -1); });
  wrong("handle", [&] { api.PDF_close_image(p, 7); });
  wrong("the page has no size", [&] { api.PDF_end_page_ext(p, ""); });
  wrong("negative", [&] { api.PDF_begin_page_ext(p, -1, 0, ""); });
  ASSERT_EQ(producer.open_image(make_jpeg(10, 10)), 0);
  wrong("outside", [&] { api.PDF_fit_image(p, 0, -10, 0, "adjustpage"); });
}

TEST_F(Arguments, AFontBelongsToItsDocument) {
  ASSERT_EQ(producer.begin(folder.path("b.pdf")), 0);
  ASSERT_TRUE(producer.begin_page());
  expect_error(1100, "handle", [&] { api.PDF_setfont(p, 0, 12); });
}

}  // namespace
