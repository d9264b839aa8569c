// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <vector>

#include "pdfproducer/Producer.h"

namespace {

const std::set<std::string> kOffered = {
    "begin_document", "end_document", "begin_page_ext", "end_page_ext",
    "load_font",      "setfont",      "setcolor",       "show_xy2",
    "open_image",     "fit_image",    "close_image",    "set_parameter",
    "get_errmsg",     "get_errnum",   "get_apiname",    "get_opaque"};

// Calls an entry with zeros and null pointers.
template <typename Result, typename... Arguments>
Result call_with_nothing(Result (*entry)(PDF*, Arguments...), PDF* p) {
  return entry(p, Arguments()...);
}

struct Refused {
  std::string name;
  bool raised;
  int number;
  std::string function;
  std::string text;
};

std::vector<Refused> call_all_others() {
  Producer producer;
  std::vector<Refused> calls;
#define CALL(result, name, parameters)                                                  \
  if (kOffered.count(#name) == 0) {                                                     \
    const bool ran =                                                                    \
        producer.runs([&] { call_with_nothing(producer.api.PDF_##name, producer.p); }); \
    calls.push_back(                                                                    \
        {"PDF_" #name, !ran, producer.number(), producer.function(), producer.text()}); \
  }
  ZELK_PDF_API_ENTRIES(CALL)
#undef CALL
  return calls;
}

TEST(ApiTable, HasTheSizeAndVersionThatTheBindingAccepts) {
  const PDFlib_api& api = *PDF_get_api();
  EXPECT_EQ(api.sizeof_PDFlib_api, 1480u);
  EXPECT_EQ(api.major, 7);
  EXPECT_EQ(api.minor, 0);
  EXPECT_EQ(PDF_get_api(), &api) << "the table is always the same";
}

TEST(ApiTable, HasNoEmptyEntry) {
  const auto* const bytes = reinterpret_cast<const char*>(PDF_get_api());
  const std::size_t first = offsetof(PDFlib_api, PDF_new2);
  ASSERT_EQ((sizeof(PDFlib_api) - first) / sizeof(void*), 182u);
  for (std::size_t at = first; at < sizeof(PDFlib_api); at += sizeof(void*)) {
    void* entry = nullptr;
    std::memcpy(&entry, bytes + at, sizeof entry);
    EXPECT_NE(entry, nullptr) << "at byte " << at;
  }
}

TEST(ApiTable, EveryOtherEntryRefusesByName) {
  const std::vector<Refused> calls = call_all_others();
  EXPECT_EQ(calls.size(), 131u);
  for (const Refused& call : calls) {
    EXPECT_TRUE(call.raised) << call.name;
    EXPECT_EQ(call.number, 1200) << call.name;
    EXPECT_EQ(call.function, call.name);
    EXPECT_EQ(call.text, "this producer does not offer " + call.name);
  }
}

TEST(ApiTable, ReservedEntriesRefuse) {
  Producer producer;
  for (const auto& entry : producer.api.reserved) {
    EXPECT_FALSE(producer.runs([&] { entry(producer.p); }));
    EXPECT_EQ(producer.text(), "this producer does not offer a reserved function");
  }
}

TEST(ApiTable, QueriesOfImportedDocumentsRefuseByName) {
  Producer producer;
  EXPECT_FALSE(producer.runs([&] { PDF_pcos_get_number(producer.p, 0, "length:pages"); }));
  EXPECT_EQ(producer.function(), "PDF_pcos_get_number");
  EXPECT_FALSE(producer.runs([&] { PDF_pcos_get_string(producer.p, 0, "%s", "a"); }));
  EXPECT_EQ(producer.function(), "PDF_pcos_get_string");
  EXPECT_FALSE(producer.runs([&] { PDF_pcos_get_stream(producer.p, 0, nullptr, "", "%s", "a"); }));
  EXPECT_EQ(producer.text(), "this producer does not offer PDF_pcos_get_stream");
}

TEST(ApiTable, NullContextMakesEveryEntryHarmless) {
  const PDFlib_api& api = *PDF_get_api();
#define CALL(result, name, parameters) call_with_nothing(api.PDF_##name, nullptr);
  ZELK_PDF_API_ENTRIES(CALL)
#undef CALL
  for (const auto& entry : api.reserved) entry(nullptr);
  api.PDF_delete(nullptr);
  EXPECT_EQ(api.PDF_open_file(nullptr, "x"), 0);
  EXPECT_EQ(api.PDF_get_value(nullptr, "x", 0), 0.0);
  EXPECT_EQ(api.PDF_get_parameter(nullptr, "x", 0), nullptr);
  EXPECT_EQ(api.PDF_begin_document(nullptr, "/nowhere/x.pdf", 0, ""), 0);
}

TEST(ApiTable, NullContextMakesExportedFunctionsHarmless) {
  PDF_set_parameter(nullptr, "no such", "x");
  EXPECT_EQ(PDF_pcos_get_number(nullptr, 0, "x"), 0.0);
  EXPECT_EQ(PDF_pcos_get_string(nullptr, 0, "x"), nullptr);
  EXPECT_EQ(PDF_pcos_get_stream(nullptr, 0, nullptr, "", "x"), nullptr);
  EXPECT_STREQ(PDF_get_errmsg(nullptr), "");
  EXPECT_EQ(PDF_get_errnum(nullptr), 0);
  EXPECT_STREQ(PDF_get_apiname(nullptr), "");
  EXPECT_EQ(PDF_get_opaque(nullptr), nullptr);
  EXPECT_EQ(pdf_jbuf(nullptr), nullptr);
  EXPECT_EQ(pdf_catch(nullptr), 0);
}

}  // namespace
