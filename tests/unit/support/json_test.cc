/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/json.h"

#include <gtest/gtest.h>

#include "support/owned.h"

namespace velkor {
namespace {

TEST(Json, BuildsAnObjectOnOneLine) {
  Json json;
  json.begin_object()
      .member("id", 7)
      .member("title", "a \"b\" \\")
      .member("new", true)
      .null_member("link");
  json.begin_array("tags").value("a0").value(3).end_array().end_object();
  EXPECT_EQ(json.compact(),
            R"({"id":7,"title":"a \"b\" \\","new":true,"link":null,"tags":["a0",3]})");
}

TEST(Json, KeepsNullApartFromEmpty) {
  const OwnedString empty(g_string_new(""));
  Json json;
  json.begin_object().member("a", static_cast<const GString *>(nullptr)).member("b", empty.get());
  EXPECT_EQ(json.end_object().compact(), R"({"a":null,"b":""})");
}

TEST(Json, KeepsLargeNumbersWhole) {
  Json json;
  json.begin_array().value(std::int64_t{9007199254740993}).value(std::int64_t{-5}).end_array();
  EXPECT_EQ(json.compact(), "[9007199254740993,-5]");
}

TEST(Json, EscapesWhatATerminalWouldActOn) {
  Json json;
  json.begin_array().value("\033[2J\x1f\x7f\u009b\u202E\n").end_array();
  EXPECT_EQ(json.compact(), "[\"\\u001b[2J\\u001f\\u007f\\u009b\\u202e\\n\"]");
}

TEST(Json, RepairsInvalidUtf8) {
  Json json;
  json.begin_array().value("a\xff").end_array();
  EXPECT_EQ(json.compact(), "[\"a\uFFFD\"]");
}

}  // namespace
}  // namespace velkor
