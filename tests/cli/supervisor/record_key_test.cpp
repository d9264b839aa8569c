// SPDX-License-Identifier: Apache-2.0
#include "supervisor/record_key.h"

#include <gtest/gtest.h>

#include <set>

namespace {

// As PageOptions would be with one option more.
struct WiderOptions {
  int dpi = 0;
  std::int64_t max_pixels = 0;
  bool skip_text = false;
  bool strict = false;
  bool one_more = false;
};

template <typename Settings>
std::string key_of(const Settings& settings) {
  return cli::record_key("content", "engine", settings, "place");
}

TEST(RecordKey, EachSettingOfAPageChangesIt) {
  std::set<std::string> keys = {key_of(cli::PageOptions{})};
  keys.insert(key_of(cli::PageOptions{300, 0, false, false}));
  keys.insert(key_of(cli::PageOptions{0, 300, false, false}));
  keys.insert(key_of(cli::PageOptions{0, 0, true, false}));
  keys.insert(key_of(cli::PageOptions{0, 0, false, true}));
  EXPECT_EQ(keys.size(), 5U);
  EXPECT_EQ(key_of(cli::PageOptions{}), key_of(cli::PageOptions{}));
}

TEST(RecordKey, AFieldThatIsAddedIsPartOfItByItself) {
  static_assert(cli::field_count<WiderOptions>() == cli::field_count<cli::PageOptions>() + 1);
  WiderOptions options;
  const std::string without = key_of(options);
  options.one_more = true;
  EXPECT_NE(key_of(options), without);
  EXPECT_NE(key_of(cli::PageOptions{}), without);
}

TEST(RecordKey, ContentEngineAndPlaceChangeIt) {
  const cli::PageOptions options;
  const std::set<std::string> keys = {
      cli::record_key("a", "b", options, "c"), cli::record_key("x", "b", options, "c"),
      cli::record_key("a", "x", options, "c"), cli::record_key("a", "b", options, "x")};
  EXPECT_EQ(keys.size(), 4U);
}

TEST(RecordKey, PlaceIsTheSameForOtherFormatsAndSpellings) {
  const auto place = [](const std::string& path, const std::string& folder) {
    return cli::place_of({"in.png", {"in.png"}, {{cli::Format::kText, path}}}, folder);
  };
  EXPECT_EQ(place("out/2024/scan.txt", "out"), "2024/scan");
  EXPECT_EQ(place("./out//2024/scan.json", "out/"), "2024/scan");
  EXPECT_NE(place("out/2024/scan.png.txt", "out"), place("out/2024/scan.txt", "out"));
}

TEST(RecordKey, OrderIsAboutOutputsAndPages) {
  const cli::InputDocument text = {"in.png", {"in.png"}, {{cli::Format::kText, "out/in.txt"}}};
  const cli::InputDocument json = {"in.png", {"in.png"}, {{cli::Format::kJson, "out/in.json"}}};
  const std::set<std::string> orders = {
      cli::order_text(text, {1, 2}, false, "out"), cli::order_text(text, {1, 2}, true, "out"),
      cli::order_text(text, {1}, false, "out"), cli::order_text(json, {1, 2}, false, "out")};
  EXPECT_EQ(orders.size(), 4U);
}

}  // namespace
