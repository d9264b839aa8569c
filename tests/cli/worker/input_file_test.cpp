// SPDX-License-Identifier: Apache-2.0
#include "worker/input_file.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include "exchange/descriptor.h"

namespace {

using cli::InputFile;

class InputFileTest : public testing::Test {
 protected:
  InputFileTest() : memory(memfd_create("document", MFD_CLOEXEC)) {
    EXPECT_EQ(write(memory.number(), "0123456789", 10), 10);
  }
  std::string path() const { return cli::descriptor_path(memory.number()); }

  cli::Descriptor memory;
};

std::string next(const InputFile& file, std::size_t count) {
  std::string text(count, '\0');
  text.resize(std::fread(text.data(), 1, count, file.get()));
  return text;
}

TEST_F(InputFileTest, StreamsOnADescriptorHavePlacesOfTheirOwn) {
  const InputFile first = cli::open_input(path());
  const InputFile second = cli::open_input(path());
  EXPECT_EQ(next(first, 4), "0123");
  EXPECT_EQ(next(second, 2), "01");
  EXPECT_EQ(next(first, 4), "4567");
  EXPECT_EQ(lseek(memory.number(), 0, SEEK_CUR), 10) << "that of the descriptor is not theirs";
}

TEST_F(InputFileTest, PlacesAreFoundFromStartEndAndMiddle) {
  const InputFile file = cli::open_input(path());
  std::fseek(file.get(), -3, SEEK_END);
  EXPECT_EQ(std::ftell(file.get()), 7);
  EXPECT_EQ(next(file, 9), "789");
  std::fseek(file.get(), 2, SEEK_SET);
  std::fseek(file.get(), 2, SEEK_CUR);
  EXPECT_EQ(next(file, 1), "4");
  EXPECT_NE(std::fseek(file.get(), -1, SEEK_SET), 0);
  std::fseek(file.get(), 100, SEEK_SET);
  EXPECT_EQ(next(file, 1), "");
}

TEST_F(InputFileTest, AShrunkenFileEndsWhereItEndsNow) {
  const InputFile file = cli::open_input(path());
  ASSERT_EQ(ftruncate(memory.number(), 3), 0);
  EXPECT_EQ(next(file, 10), "012");
}

TEST_F(InputFileTest, TheDescriptorStaysOpen) {
  cli::open_input(path());
  EXPECT_EQ(next(cli::open_input(path()), 1), "0");
}

TEST(InputFile, WhatIsNotThereIsNull) {
  EXPECT_EQ(cli::open_input("/there/is/none"), nullptr);
  EXPECT_EQ(next(cli::open_input("/dev/fd/none"), 1), "");
}

}  // namespace
