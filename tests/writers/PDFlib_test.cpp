// SPDX-License-Identifier: Apache-2.0
#include "writers/pdflib.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "fakes/fake_pdf_library.h"

namespace {

using Calls = std::vector<std::string>;

static_assert(!std::is_copy_constructible_v<PDFlib> && !std::is_copy_assignable_v<PDFlib>);
static_assert(!std::is_move_constructible_v<PDFlib>);
static_assert(std::is_nothrow_destructible_v<PDFlib>);
static_assert(!std::is_polymorphic_v<PDFlib::Exception>);

void* allocate(PDF*, std::size_t, const char*) {
  return nullptr;
}
void* reallocate(PDF*, void*, std::size_t, const char*) {
  return nullptr;
}
void release(PDF*, void*) {}

// What a call threw, as one text: message, number, function, whether the opaque pointer is ours.
template <typename Call>
std::string thrown(Call call, const void* opaque) {
  try {
    call();
  } catch (const PDFlib::Exception& error) {
    return error.get_errmsg() + "|" + std::to_string(error.get_errnum()) + "|" +
           error.get_apiname() + "|" + (error.get_opaque() == opaque ? "opaque" : "other");
  }
  return "nothing";
}

class PDFlibTest : public testing::Test {
 protected:
  ~PDFlibTest() override { library = FakePdfLibrary(); }

  std::string thrown_by_construction() {
    return thrown([this] { PDFlib(nullptr, nullptr, nullptr, &opaque); }, &opaque);
  }

  // The next call of the named function raises an error of its own.
  void raise_in(const std::string& function) {
    library.raises = function;
    library.errnum = 1016;
    library.errmsg = "no such thing";
    library.apiname = "PDF_some_function";
  }

  FakePdfLibrary& library = fake_pdf_library();
  int opaque = 0;
};

constexpr const char* kRaised = "no such thing|1016|PDF_some_function|opaque";
constexpr const char* kWrongVersion = "loaded wrong version of PDFlib library|0|pdflib|opaque";

TEST_F(PDFlibTest, ConstructionMakesAContextAndNamesTheBinding) {
  library.pointers = {{reinterpret_cast<const void*>(allocate), "@allocate"},
                      {reinterpret_cast<const void*>(reallocate), "@reallocate"},
                      {reinterpret_cast<const void*>(release), "@release"},
                      {&opaque, "@opaque"}};
  const PDFlib pdf(allocate, reallocate, release, &opaque);
  EXPECT_EQ(library.calls, (Calls{"new2(null, @allocate, @reallocate, @release, @opaque)",
                                  "PDF_set_parameter(key='binding', value='C++')",
                                  "PDF_set_parameter(key='objorient', value='true')"}));
  EXPECT_EQ(library.armed, 1);
  EXPECT_EQ(library.asked, 1);
}

TEST_F(PDFlibTest, NullProceduresReachTheLibraryAsNull) {
  const PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  EXPECT_EQ(library.calls.at(0), "new2(null, null, null, null, null)");
}

TEST_F(PDFlibTest, DestructionDeletesTheContextOutsideTheRecoveryFrame) {
  {
    const PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
    library.calls.clear();
    library.armed = library.asked = 0;
  }
  EXPECT_EQ(library.calls, Calls{"delete()"});
  EXPECT_EQ(library.armed, 0);
  EXPECT_EQ(library.asked, 0);
}

TEST_F(PDFlibTest, DestructionHandsANullContextToTheLibraryToo) {
  {
    PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
    pdf.p = nullptr;
    library.calls.clear();
  }
  EXPECT_EQ(library.calls, Calls{"without context: delete()"});
}

TEST_F(PDFlibTest, TableOfAnotherSizeIsRefusedBeforeAnyContextExists) {
  for (const std::size_t size : {std::size_t{0}, std::size_t{1472}, std::size_t{1488}}) {
    library.table_size = size;
    EXPECT_EQ(thrown_by_construction(), kWrongVersion) << size;
  }
  EXPECT_EQ(library.calls, Calls());
}

TEST_F(PDFlibTest, AnotherMajorVersionIsRefusedBeforeAnyContextExists) {
  for (const int major : {6, 8}) {
    library.major = major;
    EXPECT_EQ(thrown_by_construction(), kWrongVersion) << major;
  }
  EXPECT_EQ(library.calls, Calls());
}

TEST_F(PDFlibTest, AnotherMinorVersionIsRefusedBeforeAnyContextExists) {
  for (const int minor : {-1, 1}) {
    library.minor = minor;
    EXPECT_EQ(thrown_by_construction(), kWrongVersion) << minor;
  }
  EXPECT_EQ(library.calls, Calls());
}

TEST_F(PDFlibTest, RevisionIsNotLookedAt) {
  library.revision = 5;
  EXPECT_EQ(thrown_by_construction(), "nothing");
}

TEST_F(PDFlibTest, FailedContextIsAnErrorWithNothingToDelete) {
  library.refuses_context = true;
  EXPECT_EQ(thrown_by_construction(), "No memory for PDFlib object|0|pdflib|opaque");
  EXPECT_EQ(library.calls, Calls{"new2(null, null, null, null, @?)"});
}

TEST_F(PDFlibTest, ErrorWhileConstructingDeletesTheContext) {
  raise_in("PDF_set_parameter");
  EXPECT_EQ(thrown_by_construction(), kRaised);
  EXPECT_EQ(library.calls.size(), 3u);
  EXPECT_EQ(library.calls.back(), "delete()");
}

TEST_F(PDFlibTest, ErrorsOfEveryKindOfCallArriveWithAllFields) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  long size = 0;
  raise_in("end_page_ext");
  EXPECT_EQ(thrown([&] { pdf.end_page_ext(""); }, &opaque), kRaised);
  raise_in("load_font");
  EXPECT_EQ(thrown([&] { pdf.load_font("", "", ""); }, &opaque), kRaised);
  raise_in("get_value");
  EXPECT_EQ(thrown([&] { pdf.get_value("", 0); }, &opaque), kRaised);
  raise_in("get_buffer");
  EXPECT_EQ(thrown([&] { pdf.get_buffer(&size); }, &opaque), kRaised);
  raise_in("fit_textflow");
  EXPECT_EQ(thrown([&] { pdf.fit_textflow(1, 0, 0, 1, 1, ""); }, &opaque), kRaised);
  raise_in("utf16_to_utf8");
  EXPECT_EQ(thrown([&] { pdf.utf16_to_utf8(""); }, &opaque), kRaised);
}

TEST_F(PDFlibTest, ErrorWithoutTextsHasEmptyTexts) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  library.raises = "end_page_ext";
  EXPECT_EQ(thrown([&] { pdf.end_page_ext(""); }, &opaque), "|0||opaque");
}

TEST_F(PDFlibTest, CallsAfterAnErrorStillReachTheLibrary) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  raise_in("end_page_ext");
  EXPECT_THROW(pdf.end_page_ext(""), PDFlib::Exception);
  library.raises.clear();
  EXPECT_EQ(pdf.load_font("a", "b", "c"), 41);
}

TEST_F(PDFlibTest, FailuresReportedByResultArePassedThrough) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  library.number = -1;
  EXPECT_EQ(pdf.begin_document("/missing/a.pdf", ""), -1);
}

TEST_F(PDFlibTest, ErrorReportedForTheNullContextIsThrown) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  pdf.p = nullptr;
  raise_in("");
  library.error_without_context = true;
  EXPECT_EQ(thrown([&] { pdf.save(); }, &opaque), kRaised);
}

TEST_F(PDFlibTest, TextWithZeroBytesIsHandedOverWhole) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  const std::string text("a\0b", 3);
  library.calls.clear();
  pdf.show_xy(text, 1, 2);
  pdf.show(text);
  pdf.continue_text(text);
  pdf.stringwidth(text, 0, 1);
  pdf.add_bookmark(text, 0, 1);
  pdf.add_note(1, 2, 3, 4, text, text, "icon", 1);
  pdf.attach_file(1, 2, 3, 4, "file", text, text, "type", "icon");
  pdf.set_info("key", text);
  pdf.utf16_to_utf8(text);
  EXPECT_EQ(library.calls,
            (Calls{"show_xy2(text='a\\0b', len=3, x=1, y=2)", "show2(text='a\\0b', len=3)",
                   "continue_text2(text='a\\0b', len=3)",
                   "stringwidth2(text='a\\0b', len=3, font=0, fontsize=1)",
                   "add_bookmark2(text='a\\0b', len=3, parent=0, open=1)",
                   "add_note2(llx=1, lly=2, urx=3, ury=4, contents='a\\0b', len_contents=3, "
                   "title='a\\0b', len_title=3, icon='icon', open=1)",
                   "attach_file2(llx=1, lly=2, urx=3, ury=4, filename='file', len_filename=0, "
                   "description='a\\0b', len_description=3, author='a\\0b', len_author=3, "
                   "mimetype='type', icon='icon')",
                   "set_info2(key='key', value='a\\0b', len=3)",
                   "utf16_to_utf8(utf16string='a\\0b', len=3, size=out)"}));
}

TEST_F(PDFlibTest, EmptyTextHasLengthZero) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  pdf.show_xy("", 1, 2);
  EXPECT_EQ(library.calls.back(), "show_xy2(text='', len=0, x=1, y=2)");
}

TEST_F(PDFlibTest, StringResultsEndAtTheirZeroByteAndConversionsAtTheirLength) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  library.text = std::string("a\0b", 3);
  EXPECT_EQ(pdf.get_parameter("", 0), "a");
  EXPECT_EQ(pdf.get_pdi_parameter("", 0, 0), "a");
  EXPECT_EQ(pdf.pcos_get_string(0, ""), "a");
  EXPECT_EQ(pdf.fit_textflow(0, 0, 0, 0, 0, ""), "a");
  EXPECT_EQ(pdf.fit_table(0, 0, 0, 0, 0, ""), "a");
  EXPECT_EQ(pdf.utf8_to_utf16("", ""), library.text);
  EXPECT_EQ(pdf.utf16_to_utf8(""), library.text);
  EXPECT_EQ(pdf.utf32_to_utf16("", ""), library.text);
}

TEST_F(PDFlibTest, StringResultsAreEmptyWhenTheLibraryReturnsNoText) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  library.answers_null_text = true;
  EXPECT_EQ(pdf.get_errmsg(), "");
  EXPECT_EQ(pdf.get_apiname(), "");
  EXPECT_EQ(pdf.fit_table(0, 0, 0, 0, 0, ""), "");
  EXPECT_EQ(pdf.fit_textflow(0, 0, 0, 0, 0, ""), "");
  EXPECT_EQ(pdf.get_parameter("", 0), "");
  EXPECT_EQ(pdf.get_pdi_parameter("", 0, 0), "");
  EXPECT_EQ(pdf.pcos_get_string(0, ""), "");
  EXPECT_EQ(pdf.utf8_to_utf16("", ""), "");
  EXPECT_EQ(pdf.utf16_to_utf8(""), "");
  EXPECT_EQ(pdf.utf32_to_utf16("", ""), "");
}

TEST_F(PDFlibTest, PointerResultsComeWithTheirLength) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  long buffer_size = 0;
  int stream_length = 0;
  EXPECT_STREQ(pdf.get_buffer(&buffer_size), "answer");
  EXPECT_EQ(buffer_size, 6);
  EXPECT_NE(pdf.pcos_get_stream(0, &stream_length, "", ""), nullptr);
  EXPECT_EQ(stream_length, 6);
}

TEST_F(PDFlibTest, QueryPathsAreNeverFormats) {
  PDFlib pdf(nullptr, nullptr, nullptr, nullptr);
  library.calls.clear();
  pdf.pcos_get_number(1, "%n%s");
  EXPECT_EQ(library.calls, Calls{"PDF_pcos_get_number(doc=1) '%s' '%n%s'"});
}

TEST_F(PDFlibTest, ExceptionKeepsWhatItWasMadeWith) {
  const PDFlib::Exception made("message", 7, "PDF_function", &opaque);
  const PDFlib::Exception copy(made);
  EXPECT_EQ(thrown([&] { throw copy; }, &opaque), "message|7|PDF_function|opaque");
}

}  // namespace
