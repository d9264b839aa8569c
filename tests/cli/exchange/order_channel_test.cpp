// SPDX-License-Identifier: Apache-2.0
#include "exchange/order_channel.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace {

using cli::Descriptor;
using cli::OrderWithDocument;

// A file that holds `text`, to be read from its start.
Descriptor file_with(const std::string& text) {
  Descriptor file(memfd_create("document", MFD_CLOEXEC));
  EXPECT_EQ(write(file.number(), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  lseek(file.number(), 0, SEEK_SET);
  return file;
}

std::string content(const Descriptor& descriptor) {
  char buffer[100];
  const ssize_t count = read(descriptor.number(), buffer, sizeof buffer);
  return {buffer, static_cast<std::size_t>(std::max<ssize_t>(0, count))};
}

class OrderChannelTest : public testing::Test {
 protected:
  OrderChannelTest() {
    int ends[2];
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    sending = Descriptor(ends[0]);
    receiving = Descriptor(ends[1]);
    fcntl(sending.number(), F_SETFL, O_NONBLOCK);
  }

  Descriptor sending;
  Descriptor receiving;
  cli::OrderSender sender;
};

TEST_F(OrderChannelTest, EveryDocumentArrivesWithItsOrder) {
  sender.add({cli::StartOrder{}, {}});
  sender.add({cli::OpenOrder{"first", false}, file_with("one")});
  sender.add({cli::AssembleOrder{}, {}});
  sender.add({cli::PagesOrder{"second", {}}, file_with("two")});
  sender.send(sending.number());
  EXPECT_FALSE(sender.has_pending());
  cli::OrderReceiver receiver(receiving.number());
  EXPECT_FALSE(receiver.receive()->document.is_open());
  EXPECT_EQ(content(receiver.receive()->document), "one");
  EXPECT_FALSE(receiver.receive()->document.is_open());
  EXPECT_EQ(content(receiver.receive()->document), "two");
  sending = Descriptor();
  EXPECT_FALSE(receiver.receive().has_value());
}

TEST_F(OrderChannelTest, WhatFindsNoRoomIsSentLater) {
  cli::PagesOrder large{std::string(1 << 20, 'x'), {}};
  sender.add({large, file_with("one")});
  sender.add({large, file_with("two")});
  sender.send(sending.number());
  EXPECT_TRUE(sender.has_pending());
  fcntl(receiving.number(), F_SETFL, O_NONBLOCK);
  cli::OrderReceiver receiver(receiving.number());
  std::string contents;
  for (int turn = 0; turn < 1000 && contents.size() < 6; ++turn) {
    if (const auto order = receiver.receive()) contents += content(order->document);
    sender.send(sending.number());
  }
  EXPECT_EQ(contents, "onetwo");
}

TEST_F(OrderChannelTest, WithoutADescriptorLeftTheOrderArrivesAlone) {
  sender.add({cli::OpenOrder{"first", false}, file_with("one")});
  sender.send(sending.number());
  cli::OrderReceiver receiver(receiving.number());
  struct rlimit before = {};
  getrlimit(RLIMIT_NOFILE, &before);
  const struct rlimit none = {0, before.rlim_max};
  setrlimit(RLIMIT_NOFILE, &none);
  const std::optional<OrderWithDocument> received = receiver.receive();
  setrlimit(RLIMIT_NOFILE, &before);
  ASSERT_TRUE(received.has_value());
  EXPECT_FALSE(received->document.is_open());
}

}  // namespace
