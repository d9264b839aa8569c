// SPDX-License-Identifier: Apache-2.0
#include "exchange/page_record.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "exchange/error.h"
#include "exchange/files.h"

namespace {

cli::PageRecord sample() {
  cli::PageRecord record;
  record.page = 12;
  record.failure = "";
  record.warning = "rendered smaller";
  record.text = "text\n";
  record.json = "{}";
  record.characters = {{1, 2, 3, 4, u'a', {}}, {5, 6, 7, 8, 0x4E2D, {}}};
  record.jpeg = std::string("\xFF\xD8\0\xFF\xD9", 5);
  record.width = 1654;
  record.height = 2339;
  record.dots_per_inch = 200;
  record.page_width = 595.25;
  record.page_height = 842;
  record.seconds = 1.25;
  record.memory_kib = 123'456;
  return record;
}

TEST(PageRecord, KeepsEveryField) {
  const auto record = cli::decode_page_record(cli::encode_page_record(sample()));
  ASSERT_TRUE(record.has_value());
  EXPECT_EQ(cli::encode_page_record(*record), cli::encode_page_record(sample()));
  EXPECT_EQ(record->page, 12);
  EXPECT_EQ(record->characters.at(1).code, 0x4E2D);
  EXPECT_EQ(record->characters.at(1).bottom, 8);
  EXPECT_EQ(record->jpeg, sample().jpeg);
  EXPECT_EQ(record->page_width, 595.25);
  EXPECT_EQ(record->memory_kib, 123'456);
}

TEST(PageRecord, EveryShortenedRecordIsDamaged) {
  const std::string bytes = cli::encode_page_record(sample());
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(cli::decode_page_record(bytes.substr(0, size)).has_value()) << size;
  }
  EXPECT_FALSE(cli::decode_page_record(bytes + "x").has_value());
}

TEST(PageRecord, EveryChangedBitIsNoticed) {
  const std::string bytes = cli::encode_page_record(sample());
  for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
    std::string damaged = bytes;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
    EXPECT_FALSE(cli::decode_page_record(damaged).has_value()) << bit;
  }
}

TEST(PageRecord, IsReplacedAsAWholeInItsFile) {
  const std::string folder = testing::TempDir() + "page-record";
  std::filesystem::create_directories(folder);
  const std::string path = folder + "/" + cli::page_record_name(12);
  EXPECT_TRUE(path.ends_with("/page-000012"));
  cli::write_page_record(path, cli::PageRecord());
  cli::write_page_record(path, sample());
  ASSERT_TRUE(cli::read_page_record(path).has_value());
  EXPECT_EQ(cli::read_page_record(path)->text, "text\n");
  EXPECT_FALSE(cli::read_page_record(path + ".new").has_value());
  EXPECT_THROW(cli::write_page_record(folder + "/none/page", sample()), cli::Error);
  std::filesystem::remove_all(folder);
}

}  // namespace
