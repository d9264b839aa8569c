// SPDX-License-Identifier: Apache-2.0
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <typeinfo>

#include "writers/pdflib.h"

namespace {

TEST(PDFlibException, IsCaughtByTypeBeyondALibraryThatExportsNoneOfIt) {
  void* const module = dlopen(ZELK_THROWING_LIBRARY, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(module, nullptr) << dlerror();
  const auto throw_error =
      reinterpret_cast<void (*)(void*)>(dlsym(module, "zelk_throw_pdflib_exception"));
  const auto type =
      reinterpret_cast<const std::type_info* (*)()>(dlsym(module, "zelk_pdflib_exception_type"));
  ASSERT_NE(throw_error, nullptr);
  ASSERT_NE(type, nullptr);
  EXPECT_NE(type(), &typeid(PDFlib::Exception)) << "the library has no type of its own";
  int opaque = 0;
  try {
    throw_error(&opaque);
    ADD_FAILURE() << "threw nothing";
  } catch (const PDFlib::Exception& error) {
    EXPECT_EQ(error.get_errmsg(), "raised beyond the edge");
    EXPECT_STREQ(error.what(), "raised beyond the edge");
    EXPECT_EQ(error.get_errnum(), 42);
    EXPECT_EQ(error.get_apiname(), "PDF_end_page_ext");
    EXPECT_EQ(error.get_opaque(), &opaque);
  }
  dlclose(module);
}

}  // namespace
