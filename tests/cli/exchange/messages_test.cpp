// SPDX-License-Identifier: Apache-2.0
#include "exchange/messages.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Messages, OrdersKeepTheirFieldsAndTextsOfAnyBytes) {
  cli::StartOrder start;
  start.engine_dir = "/\xFF/engine/";
  start.page.max_pixels = 1'000'000'000'000;
  start.page.skip_text = true;
  start.page.strict = true;
  const auto order = cli::decode_order(cli::encode_order(start));
  ASSERT_TRUE(order.has_value());
  const auto& back = std::get<cli::StartOrder>(*order);
  EXPECT_EQ(back.engine_dir, start.engine_dir);
  EXPECT_EQ(back.page.max_pixels, start.page.max_pixels);
  EXPECT_TRUE(back.page.skip_text);
  EXPECT_TRUE(back.page.strict);
  EXPECT_FALSE(back.pictures);
}

TEST(Messages, PagesAndOutputsArriveInOrder) {
  const auto pages =
      cli::decode_order(cli::encode_order(cli::PagesOrder{"input-1-0", {{7, 6}, {9, 8}}}));
  ASSERT_TRUE(pages.has_value());
  EXPECT_EQ(std::get<cli::PagesOrder>(*pages).pages.at(1).index, 8);

  cli::AssembleOrder assemble;
  assemble.document = {"caf\xE9.pdf", 3, {"page-000001", "page-000003"}};
  assemble.targets = {{cli::Format::kHtml, "output-0"}};
  const auto order = cli::decode_order(cli::encode_order(assemble));
  ASSERT_TRUE(order.has_value());
  const auto& back = std::get<cli::AssembleOrder>(*order);
  EXPECT_EQ(back.document.file, "caf\xE9.pdf");
  EXPECT_EQ(back.document.pages, assemble.document.pages);
  EXPECT_EQ(back.targets.at(0).format, cli::Format::kHtml);
}

TEST(Messages, EventsKeepTheirFields) {
  const auto event = cli::decode_event(
      cli::encode_event(cli::PageFinished{12, "no", true, true, false, "careful", 1.5, 300'000}));
  ASSERT_TRUE(event.has_value());
  const auto& page = std::get<cli::PageFinished>(*event);
  EXPECT_EQ(page.number, 12);
  EXPECT_TRUE(page.is_unreadable);
  EXPECT_EQ(page.warning, "careful");
  EXPECT_EQ(page.memory_kib, 300'000);
  const auto bye = cli::decode_event(cli::encode_event(cli::Bye{}));
  ASSERT_TRUE(bye.has_value());
  EXPECT_TRUE(std::holds_alternative<cli::Bye>(*bye));
}

TEST(Messages, WhatIsNoMessageIsNothing) {
  EXPECT_FALSE(cli::decode_event("").has_value());
  EXPECT_FALSE(cli::decode_event("garbage").has_value());
  EXPECT_FALSE(cli::decode_event(std::string("\x82\xF9\x46\x00\xA0", 5)).has_value()) << "6.0";
  const std::string bytes = cli::encode_event(cli::PageStarted{3});
  EXPECT_FALSE(cli::decode_event(bytes.substr(0, bytes.size() - 1)).has_value());
  // An order is no event, although both are numbered from 0.
  EXPECT_FALSE(cli::decode_event(cli::encode_order(cli::PagesOrder{"a", {}})).has_value());
}

TEST(Messages, NestingWithoutEndIsNothing) {
  const std::string arrays(2'000'000, '\x81');  // CBOR: an array of one, in an array of one, ...
  EXPECT_FALSE(cli::decode_event(arrays).has_value());
  EXPECT_FALSE(cli::decode_order(arrays).has_value());
}

TEST(Messages, NumbersAreBroughtIntoTheRangeOfAnInt) {
  const auto event = cli::decode_event(cli::encode_event(cli::Opened{{{1e300, -1e300}}, "", ""}));
  ASSERT_TRUE(event.has_value());
  EXPECT_EQ(std::get<cli::Opened>(*event).pages.at(0).width, 2147483647.0);
  EXPECT_EQ(std::get<cli::Opened>(*event).pages.at(0).height, -2147483648.0);
}

}  // namespace
