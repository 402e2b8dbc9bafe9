/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <array>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "support/descriptor.h"
#include "support/owned.h"
#include "tests/support/sandbox.h"

namespace velkor {
namespace {

TEST(ZoxCurlWriteFunction, AppendsEachChunk) {
  const OwnedString text(zox_string_new("voor"));
  std::string chunk = "abcdef";
  EXPECT_EQ(zox_curl_write_function(chunk.data(), 2, 3, text.get()), 6U);
  EXPECT_EQ(zox_curl_write_function(chunk.data(), 1, 2, text.get()), 2U);
  EXPECT_STREQ(text->str, "voorabcdefab");
}

TEST(ZoxCurlWriteFunction, EndsAChunkAtAZeroByte) {
  const OwnedString text(zox_string_new(""));
  std::array<char, 5> chunk{'a', 'b', '\0', 'c', 'd'};
  EXPECT_EQ(zox_curl_write_function(chunk.data(), 1, chunk.size(), text.get()), chunk.size());
  EXPECT_EQ(std::string(text->str, text->len), "ab");
}

TEST(ZoxCurlWriteFunction, StopsAReplyWithoutEnd) {
  constexpr gsize limit = gsize{256} << 20;
  const OwnedString text(g_string_sized_new(limit));
  g_string_set_size(text.get(), limit - 1);
  std::array<char, 2> chunk{'a', 'b'};
  EXPECT_EQ(zox_curl_write_function(chunk.data(), 1, 2, text.get()), 0U);
  EXPECT_EQ(zox_curl_write_function(chunk.data(), 1, 1, text.get()), 1U);
  EXPECT_EQ(zox_curl_write_function(chunk.data(), 1, 1, text.get()), 0U);
  EXPECT_EQ(text->len, limit);
}

TEST(ZoxCurlWriteFunctionDeathTest, NeedsAText) {
  EXPECT_DEATH(zox_curl_write_function(nullptr, 0, 0, nullptr), "assertion failed: \\(data\\)");
}

TEST(ZoxCurlFileWriteFunction, WritesAllBytes) {
  const test::TemporaryDirectory directory;
  const auto path = directory.path() / "file";
  int descriptor = open(path.c_str(), O_WRONLY | O_CREAT, 0600);
  const Descriptor owner(descriptor);
  std::array<char, 4> chunk{'a', '\0', 'b', 'c'};
  EXPECT_EQ(zox_curl_file_write_function(chunk.data(), 2, 2, &descriptor), 4U);
  EXPECT_EQ(test::read_file(path), std::string(chunk.data(), chunk.size()));
}

TEST(ZoxCurlFileWriteFunction, ReportsAFullDiskAndGoesOn) {
  int descriptor = open("/dev/full", O_WRONLY);
  const Descriptor owner(descriptor);
  std::array<char, 4> chunk{};
  testing::internal::CaptureStdout();
  EXPECT_EQ(zox_curl_file_write_function(chunk.data(), 1, chunk.size(), &descriptor), 4U);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "write(): error = No space left on device (28)");
}

TEST(ZoxCurlFileWriteFunctionDeathTest, NeedsAFile) {
  EXPECT_DEATH(zox_curl_file_write_function(nullptr, 0, 0, nullptr), "assertion failed: \\(fp\\)");
}

}  // namespace
}  // namespace velkor
