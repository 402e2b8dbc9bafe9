/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/xml_file.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libxml/globals.h>

#include "support/xml.h"
#include "tests/support/core_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using XmlFileTest = test::CoreTest;

xml::Document some_document(const char *text = "<a><b>caf&#233;</b><c/></a>") {
  return xml::parse(text);
}

TEST_F(XmlFileTest, SavesWhatLibxml2Would) {
  const auto document = some_document();
  const auto reference = cache_file("reference");
  for (const bool compressed : {false, true}) {
    document->compression = compressed ? 9 : 0;
    xmlIndentTreeOutput = 1;
    const int length = xmlSaveFormatFile(reference.c_str(), document.get(), 1);
    EXPECT_EQ(save_document(document.get(), "cache", compressed, "caller"), length);
    EXPECT_EQ(test::read_file(cache_file(compressed ? "cache.gz" : "cache")),
              test::read_file(reference));
  }
}

TEST_F(XmlFileTest, KeepsTheEncodingOfADocument) {
  const auto document = some_document("<?xml version='1.0' encoding='ISO-8859-1'?><a>caf\xe9</a>");
  EXPECT_GT(save_document(document.get(), "cache", false, "caller"), 0);
  EXPECT_THAT(test::read_file(cache_file("cache")), testing::HasSubstr("<a>caf\xe9</a>"));
}

TEST_F(XmlFileTest, SetsTheProcessWideCompressionMode) {
  const auto document = some_document();
  save_document(document.get(), "cache", true, "caller");
  EXPECT_EQ(xmlGetCompressMode(), 9);
  save_document(document.get(), "cache", false, "caller");
  EXPECT_EQ(xmlGetCompressMode(), 0);
}

TEST_F(XmlFileTest, ReportsAFileThatCannotBeReplaced) {
  const test::LogCapture log;
  std::filesystem::create_directory(cache_file("cache"));
  EXPECT_EQ(save_document(some_document().get(), "cache", false, "caller"), -1);
  EXPECT_EQ(save_document(some_document().get(), "cache", false, "caller", SaveFailure::silent),
            -1);
  const auto warning =
      testing::ContainsRegex("^caller\\(\\): cannot write .*/cache: Is a directory");
  EXPECT_THAT(log.warnings(), testing::ElementsAre(warning));
}

}  // namespace
}  // namespace velkor
