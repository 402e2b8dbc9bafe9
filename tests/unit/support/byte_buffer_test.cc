/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/byte_buffer.h"

#include <string>

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(ByteBufferTest, HoldsNothingAtFirst) {
  const ByteBuffer buffer;
  EXPECT_EQ(buffer.view(), "");
}

TEST(ByteBufferTest, CollectsWhatIsAppended) {
  ByteBuffer buffer;
  std::string expected;
  for (int number = 0; number < 1000; ++number) {
    const std::string piece = std::to_string(number);
    buffer.append(piece.data(), piece.size());
    expected += piece;
  }
  EXPECT_EQ(buffer.view(), expected);
}

TEST(ByteBufferTest, TakesNoBytesFromNowhere) {
  ByteBuffer buffer;
  buffer.append(nullptr, 0);
  EXPECT_EQ(buffer.view(), "");
  buffer.append("a", 1);
  buffer.append(nullptr, 0);
  EXPECT_EQ(buffer.view(), "a");
}

TEST(ByteBufferTest, KeepsZeroBytes) {
  ByteBuffer buffer;
  buffer.append("a\0b", 3);
  EXPECT_EQ(buffer.view(), std::string_view("a\0b", 3));
}

TEST(ByteBufferTest, IsUsedAgainInTheSameMemory) {
  ByteBuffer buffer;
  buffer.append("first", 5);
  const char *memory = buffer.view().data();
  buffer.clear();
  EXPECT_EQ(buffer.view(), "");
  buffer.append("next", 4);
  EXPECT_EQ(buffer.view(), "next");
  EXPECT_EQ(buffer.view().data(), memory);
}

}  // namespace
}  // namespace velkor
