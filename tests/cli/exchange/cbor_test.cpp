// SPDX-License-Identifier: Apache-2.0
#include "exchange/cbor.h"

#include <gtest/gtest.h>

namespace {

using Json = nlohmann::json;

std::string cbor(const Json& value) {
  const std::vector<std::uint8_t> bytes = Json::to_cbor(value);
  return {bytes.begin(), bytes.end()};
}

TEST(Cbor, ValuesOfEveryKindAndSizeComeBack) {
  const std::string text(70'000, 'x');
  for (const Json& value :
       {Json(nullptr), Json(true), Json(-1), Json(23), Json(24), Json(255), Json(65'536),
        Json(5'000'000'000), Json(1.5), Json("text"), Json(text), Json::array({1, {2, 3}, "x"}),
        Json{{"a", 1}, {"b", {{"c", nullptr}}}}, Json::array(), Json::object(),
        Json(std::vector<int>(300, 7)), Json::binary({0x5F, 0x5F})}) {
    EXPECT_EQ(cli::parse_cbor(cbor(value)), value) << value;
  }
}

TEST(Cbor, SixteenLevelsAreTheDeepest) {
  Json value = 7;
  for (int level = 0; level < 16; ++level) value = Json::array({value});
  EXPECT_EQ(cli::parse_cbor(cbor(value)), value);
  EXPECT_EQ(cli::parse_cbor(cbor(Json{{"a", value}})), nullptr);
}

// A reader calls itself for each part, which may be in parts again.
TEST(Cbor, TextsToldInPartsAreNothing) {
  EXPECT_EQ(cli::parse_cbor("\x7F\x61x\xFF"), nullptr);
  EXPECT_EQ(cli::parse_cbor("\x5F\x41x\xFF"), nullptr);
  EXPECT_EQ(cli::parse_cbor("\x9F\x01\xFF"), nullptr) << "nor are arrays";
  EXPECT_EQ(cli::parse_cbor(std::string(2'000'000, '\x5F')), nullptr);
  EXPECT_EQ(cli::parse_cbor(std::string(2'000'000, '\x7F')), nullptr);
}

TEST(Cbor, BytesThatEndTooEarlyAreNothing) {
  const std::string whole = cbor(Json{{"name", "value"}, {"list", {1, 1000, 100'000, 1.5}}});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(cli::parse_cbor(whole.substr(0, size)), nullptr) << size;
  }
  EXPECT_EQ(cli::parse_cbor(whole + "x"), nullptr);
  EXPECT_EQ(cli::parse_cbor("\x9B\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF"), nullptr) << "2^63 items";
  EXPECT_EQ(cli::parse_cbor("\xC1\x01"), nullptr) << "a tag";
}

}  // namespace
