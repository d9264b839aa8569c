// SPDX-License-Identifier: Apache-2.0
// Every method of the binding against the stand-in library.
#include <gtest/gtest.h>

#include <set>

#include "fakes/fake_pdf_library.h"
#include "pdfproducer/pdf_api_entries.h"
#include "writers/pdflib_methods.h"

namespace {

class PDFlibMethods : public testing::Test {
 protected:
  PDFlibMethods() { name_method_pointers(); }
  ~PDFlibMethods() override { library = FakePdfLibrary(); }

  FakePdfLibrary& library = fake_pdf_library();
  int opaque = 0;
};

TEST_F(PDFlibMethods, EachHandsItsArgumentsToItsFunctionAndReturnsTheAnswer) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  for (const Method& method : pdflib_methods()) {
    library.calls.clear();
    library.armed = library.asked = 0;
    const MethodResult result = method.call(pdf);
    EXPECT_EQ(library.calls, std::vector<std::string>{method.recorded});
    EXPECT_EQ(result.got, result.answered) << method.recorded;
    EXPECT_EQ(library.armed, 1) << method.recorded;
    EXPECT_EQ(library.asked, 1) << method.recorded;
  }
}

TEST_F(PDFlibMethods, TogetherReachEveryFunctionOnce) {
#define ENTRY_NAME(result, name, parameters) #name,
  std::multiset<std::string> functions = {ZELK_PDF_API_ENTRIES(ENTRY_NAME) "PDF_pcos_get_number",
                                          "PDF_pcos_get_string", "PDF_pcos_get_stream"};
  EXPECT_EQ(functions.size(), 150u);
  std::multiset<std::string> reached;
  for (const Method& method : pdflib_methods()) reached.insert(method.function());
  EXPECT_EQ(reached, functions);
}

TEST_F(PDFlibMethods, EachTurnsAnErrorIntoAnException) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  library.errnum = 2100;
  library.errmsg = "out of scope";
  library.apiname = "PDF_function";
  for (const Method& method : pdflib_methods()) {
    library.raises = method.function();
    try {
      method.call(pdf);
      ADD_FAILURE() << method.recorded << " threw nothing";
    } catch (const PDFlib::Exception& error) {
      EXPECT_EQ(error.get_errmsg(), "out of scope");
      EXPECT_EQ(error.get_errnum(), 2100);
      EXPECT_EQ(error.get_apiname(), "PDF_function");
      EXPECT_EQ(error.get_opaque(), &opaque);
    }
  }
}

TEST_F(PDFlibMethods, EachWithoutContextCallsNothingAndReturnsItsNeutralValue) {
  PDFlib pdf(nullptr, nullptr, nullptr, &opaque);
  pdf.p = nullptr;
  for (const Method& method : pdflib_methods()) {
    library.calls.clear();
    library.armed = library.asked = 0;
    const MethodResult result = method.call(pdf);
    EXPECT_EQ(library.calls, std::vector<std::string>()) << method.recorded;
    EXPECT_EQ(result.got, result.neutral) << method.recorded;
    EXPECT_EQ(library.armed, 0) << method.recorded;
    EXPECT_EQ(library.asked, 1) << method.recorded;
  }
}

}  // namespace
