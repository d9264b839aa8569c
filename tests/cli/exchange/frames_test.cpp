// SPDX-License-Identifier: Apache-2.0
#include "exchange/frames.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

std::string garbage(std::mt19937& random, std::size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

std::vector<std::string> bodies_of(cli::FrameReader& reader) {
  std::vector<std::string> bodies;
  while (std::optional<std::string> body = reader.next()) bodies.push_back(*body);
  return bodies;
}

TEST(Frames, BodiesOfAnyBytesArriveByteByByte) {
  const std::string body("a\0\xF5zelk\xF6\r\nb", 11);
  const std::string stream = cli::encode_frame(body) + cli::encode_frame("");
  cli::FrameReader reader;
  std::vector<std::string> bodies;
  for (const char byte : stream) {
    reader.feed({&byte, 1});
    for (const std::string& arrived : bodies_of(reader)) bodies.push_back(arrived);
  }
  EXPECT_EQ(bodies, (std::vector<std::string>{body, ""}));
}

TEST(Frames, GarbageBetweenFramesIsSkipped) {
  std::mt19937 random(1);
  for (std::size_t size = 0; size < 300; ++size) {
    cli::FrameReader reader;
    reader.feed(garbage(random, size) + cli::encode_frame("first") + garbage(random, size * 7) +
                cli::encode_frame("second"));
    EXPECT_EQ(bodies_of(reader), (std::vector<std::string>{"first", "second"}));
  }
}

TEST(Frames, ABeginningOfAFrameAmongGarbageHidesNoLaterFrame) {
  const std::string frame = cli::encode_frame("body");
  for (std::size_t size = 0; size < frame.size(); ++size) {
    cli::FrameReader reader;
    reader.feed(frame.substr(0, size));
    reader.feed(frame);
    reader.feed(frame);
    const std::vector<std::string> bodies = bodies_of(reader);
    ASSERT_GE(bodies.size(), 1U) << size;
    EXPECT_EQ(bodies.back(), "body");
  }
}

TEST(Frames, EveryChangedBitIsNoticed) {
  const std::string frame = cli::encode_frame("body");
  for (std::size_t bit = 0; bit < frame.size() * 8; ++bit) {
    std::string damaged = frame;
    damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
    cli::FrameReader reader;
    reader.feed(damaged + frame);
    EXPECT_EQ(bodies_of(reader), std::vector<std::string>{"body"}) << bit;
  }
}

TEST(Frames, AFloodOfMagicWordsAndFalseFramesIsGotOver) {
  std::string damaged = cli::encode_frame(std::string(1000, 'x'));
  damaged.back() = 'y';
  std::string flood;
  while (flood.size() < cli::kLongestFrame / 2) flood += damaged.substr(0, 8);
  for (int count = 0; count < 50; ++count) flood += damaged;
  cli::FrameReader reader;
  reader.feed(flood);
  reader.feed(cli::encode_frame("body"));
  EXPECT_EQ(bodies_of(reader), std::vector<std::string>{"body"});
  for (int count = 0; count < 100; ++count) reader.feed(damaged);
  reader.feed(cli::encode_frame("body"));
  EXPECT_EQ(bodies_of(reader), std::vector<std::string>()) << "it is not heard any more";
}

TEST(Frames, ABodyBeyondTheLimitIsRefused) {
  EXPECT_THROW(cli::encode_frame(std::string(cli::kLongestFrame + 1, 'x')), std::length_error);
}

}  // namespace
