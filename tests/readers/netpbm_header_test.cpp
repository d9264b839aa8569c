// SPDX-License-Identifier: Apache-2.0
#include "readers/netpbm_header.h"

#include <gtest/gtest.h>

#include "readers/imgreader.h"
#include "support/Documents.h"

namespace {

bool is_impossible(const std::string& bytes, int format = FIF_PBMRAW) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.pbm");
  write_file(path, bytes);
  return is_impossible_netpbm(format, path.c_str());
}

TEST(NetpbmHeader, OrdinaryHeadersArePossible) {
  EXPECT_FALSE(is_impossible("P4\n8 2\n\x01\x02"));
  EXPECT_FALSE(is_impossible("P1\n# 99999 99999 made by hand\n# twice\n3 1\n1 0 1\n", FIF_PBM));
  EXPECT_FALSE(is_impossible("P5 2 1 255\n..", FIF_PGMRAW));
  EXPECT_FALSE(is_impossible("PF\n1 1\n-1\n............", FIF_PFM));
}

TEST(NetpbmHeader, AThousandPixelsForEachByteAreTheMost) {
  const std::string rest(90, '.');
  EXPECT_FALSE(is_impossible("P4 100 1000\n" + rest.substr(2)));
  EXPECT_TRUE(is_impossible("P4 100 1001\n" + rest.substr(2)));
  EXPECT_TRUE(is_impossible("PF 433,633633", FIF_PFM));
}

TEST(NetpbmHeader, SizesBeyond31BitsAreImpossible) {
  EXPECT_TRUE(is_impossible("P4 2147483648 1\n" + std::string(3'000'000, '.')));
  EXPECT_TRUE(is_impossible("P4 1 2147483648\n" + std::string(3'000'000, '.')));
  EXPECT_FALSE(is_impossible("P4 1 2147483647\n" + std::string(3'000'000, '.')));
  // Once around 64 bits.
  EXPECT_TRUE(is_impossible("P4 18446744073709551617 1\n."));
}

TEST(NetpbmHeader, AHeaderWithoutTwoNumbersIsImpossible) {
  EXPECT_TRUE(is_impossible("P4"));
  EXPECT_TRUE(is_impossible("P4 8"));
  EXPECT_TRUE(is_impossible("P4 # 8 8"));
  EXPECT_TRUE(is_impossible("P4 0 8\n."));
  EXPECT_TRUE(is_impossible_netpbm(FIF_PBM, "/there/is/none"));
}

// What stands before a number is skipped; one byte behind it belongs to it, even the sign of a
// comment.
TEST(NetpbmHeader, NumbersAreFoundWhereTheDecoderFindsThem) {
  EXPECT_FALSE(is_impossible("P4x8y1\n."));
  EXPECT_FALSE(is_impossible("P4 8#1\n."));
  EXPECT_TRUE(is_impossible("P4 8##1\n."));
}

TEST(NetpbmHeader, OtherFormatsAreLeftToTheirDecoder) {
  EXPECT_FALSE(is_impossible("P4 99999 99999", FIF_PNG));
}

TEST(NetpbmHeader, TheReaderRefusesAnImpossiblePicture) {
  const ScratchFolder folder;
  const std::string path = folder.path("a.png");
  write_file(path, "P4 40000 40000\n.");
  imgreader reader;
  EXPECT_EQ(reader.load_image(path.c_str(), 200), 0);
  write_file(path, "P4 8 1\n.");
  EXPECT_EQ(reader.load_image(path.c_str(), 200), 1);
  FreeImage_Unload(reader.get_cur_image(0));
}

}  // namespace
