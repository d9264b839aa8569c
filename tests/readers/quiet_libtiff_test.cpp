// SPDX-License-Identifier: Apache-2.0
#include "readers/quiet_libtiff.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include "readers/imgreader.h"
#include "readers/tiffreader.h"
#include "support/Documents.h"
#include "support/MadeTiff.h"

namespace {

int reported = 0;

void report(const char*, const char*, va_list) {
  ++reported;
}
void report_ext(thandle_t, const char*, const char*, va_list) {
  ++reported;
}

template <class Reader>
void read_pages(const std::string& path, int pages) {
  Reader reader;
  ASSERT_EQ(reader.load_image(path.c_str(), 200), pages);
  for (int id = 0; id < pages; ++id) FreeImage_Unload(reader.get_cur_image(id));
  reader.free_image();
}

class QuietTiff : public testing::Test {
 protected:
  void SetUp() override { write_file(path, made_tiff({{4, {4}, 20}, {4, {}, 20}})); }
  const ScratchFolder folder;
  const std::string path = folder.path("a.tif");
};

TEST_F(QuietTiff, GoodFilesPrintNothing) {
  testing::internal::CaptureStderr();
  read_pages<tiffreader>(path, 2);
  read_pages<imgreader>(path, 1);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(QuietTiff, HandlersOfTheHostHearNothingAndArePutBack) {
  const TIFFErrorHandler error = TIFFSetErrorHandler(report);
  const TIFFErrorHandler warning = TIFFSetWarningHandler(report);
  const TIFFErrorHandlerExt error_ext = TIFFSetErrorHandlerExt(report_ext);
  const TIFFErrorHandlerExt warning_ext = TIFFSetWarningHandlerExt(report_ext);
  reported = 0;
  read_pages<tiffreader>(path, 2);
  read_pages<imgreader>(path, 1);
  EXPECT_EQ(reported, 0);
  TIFFError("", "%s", "of the host");
  TIFFWarning("", "%s", "of the host");
  EXPECT_EQ(reported, 4);
  EXPECT_EQ(TIFFSetErrorHandler(error), &report);
  EXPECT_EQ(TIFFSetWarningHandler(warning), &report);
  EXPECT_EQ(TIFFSetErrorHandlerExt(error_ext), &report_ext);
  EXPECT_EQ(TIFFSetWarningHandlerExt(warning_ext), &report_ext);
}

}  // namespace
