/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The stream reader against the tree reader, and against broken and hostile documents. */
#include "store/event_reader.h"

#include <memory>
#include <string>
#include <thread>

#include <gmock/gmock.h>

#include "support/xml.h"
#include "tests/support/filter_fixture.h"
#include "tests/support/log_capture.h"
#include "tests/support/sandbox.h"
#include "tests/unit/posting/event_samples.h"
#include "tests/unit/store/reading.h"

namespace velkor {
namespace {

using test::read_by_tree;
using test::read_events;

class EventReaderTest : public test::FilterTest {
protected:
  EventReaderTest() { keep({0, 1, 2, 3}); }

  const test::LogCapture log;
};

class SameAsTree : public EventReaderTest, public testing::WithParamInterface<const char *> {};

TEST_P(SameAsTree, ReadsTheSamePostings) {
  const std::string text = test::fixture(GetParam());
  const auto reading = read_events(text);
  const auto expected = read_by_tree(text);
  ASSERT_TRUE(expected);
  EXPECT_FALSE(expected->empty());
  EXPECT_EQ(reading.code, 0U);
  EXPECT_EQ(reading.postings, *expected);
}

std::string name_of(const testing::TestParamInfo<const char *> &info) {
  std::string name = info.param;
  name.resize(name.find('.'));
  std::erase(name, '-');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Fixtures, SameAsTree,
                         testing::Values("all-elements.xml", "cdata-forms.xml",
                                         "duplicate-elements.xml", "nested-elements.xml",
                                         "entities.xml", "namespaces.xml", "undeclared-prefix.xml",
                                         "letter-case.xml", "instructions.xml", "latin1.xml",
                                         "utf16.xml"),
                         name_of);

class BrokenDocument : public EventReaderTest, public testing::WithParamInterface<const char *> {};

TEST_P(BrokenDocument, GivesADiagnosisAndNothingElse) {
  const auto reading = read_events(test::fixture(GetParam()));
  EXPECT_EQ(reading.code, 11U);
  EXPECT_TRUE(reading.postings.empty());
  EXPECT_FALSE(reading.error.value_or("").empty());
}

INSTANTIATE_TEST_SUITE_P(Fixtures, BrokenDocument,
                         testing::Values("truncated.xml", "wrong-root.xml", "two-roots.xml",
                                         "mismatch.xml", "bad-encoding.xml", "unknown-encoding.xml",
                                         "nul-byte.xml", "control-character.xml",
                                         "undefined-entity.xml", "open-cdata.xml",
                                         "entity-bomb.xml", "element-bomb.xml", "entity-loop.xml"),
                         name_of);

TEST_F(EventReaderTest, EveryCutOfADocumentIsRefused) {
  const std::string text = test::fixture("all-elements.xml");
  const std::size_t end = text.rfind('>');
  for (std::size_t length = 0; length < end; ++length)
    EXPECT_EQ(read_events(std::string_view(text).substr(0, length)).code, 11U) << length;
  EXPECT_EQ(read_events(std::string_view(text).substr(0, end + 1)).code, 0U);
}

TEST_F(EventReaderTest, NeverOpensAFile) {
  const test::TemporaryDirectory directory;
  const std::string secret = directory.path() / "geheim.txt";
  test::write_file(secret, "<Event><PostID>666</PostID></Event>");
  const std::string declaration = "<!DOCTYPE Events [<!ENTITY e SYSTEM 'file://" + secret + "'>]>";
  for (const std::string &body :
       {std::string("<Events>&e;<Event/></Events>"),
        std::string("<Events><Event><Title>&e;</Title></Event></Events>")}) {
    const auto reading = read_events(declaration + body);
    EXPECT_EQ(testing::PrintToString(reading.postings).find("666"), std::string::npos);
  }
  const auto reading =
      read_events("<!DOCTYPE Events SYSTEM 'file://" + secret + "'><Events><Event/></Events>");
  EXPECT_EQ(reading.code, 0U);
  EXPECT_EQ(reading.postings.size(), 1U);
}

TEST_F(EventReaderTest, OneLargeEntityUsedOftenIsRefused) {
  std::string text = "<!DOCTYPE Events [<!ENTITY e '" + std::string(100'000, 'x') + "'>]><Events>";
  for (int number = 0; number < 2000; ++number)
    text += "<Event><Title>&e;</Title></Event>";
  const auto reading = read_events(text + "</Events>");
  EXPECT_EQ(reading.code, 11U);
  EXPECT_TRUE(reading.postings.empty());
  EXPECT_THAT(reading.error.value_or(""), testing::HasSubstr("entity reference loop"));
}

TEST_F(EventReaderTest, EntitiesWithinReasonAreReplaced) {
  std::string text = "<!DOCTYPE Events [<!ENTITY e '" + std::string(1000, 'x') + "'>]><Events>";
  for (int number = 0; number < 200; ++number)
    text += "<Event><Title>&e;</Title></Event>";
  const auto reading = read_events(text + "</Events>");
  EXPECT_EQ(reading.code, 0U);
  EXPECT_EQ(reading.postings, *read_by_tree(text + "</Events>"));
}

TEST_F(EventReaderTest, HugeTextsAreReadWhole) {
  const std::string title(11'000'000, 't');
  const auto reading = read_events("<Events><Event><PostID>1</PostID><Title>" + title +
                                   "</Title><Poster>p</Poster></Event></Events>");
  EXPECT_EQ(reading.code, 0U);
  ASSERT_EQ(reading.postings.size(), 1U);
  EXPECT_NE(reading.postings[0].find("title=[" + title + "]"), std::string::npos);
}

TEST_F(EventReaderTest, CdataBeyondTheParsersLimitIsRefused) {
  const auto reading = read_events("<Events><Event><Title><![CDATA[" +
                                   std::string(11'000'000, 't') + "]]></Title></Event></Events>");
  EXPECT_EQ(reading.code, 11U);
}

TEST_F(EventReaderTest, DeepNestingIsRefused) {
  std::string text = "<Events>";
  for (int depth = 0; depth < 2000; ++depth)
    text += "<a>";
  EXPECT_EQ(read_events(text).code, 11U);
}

TEST_F(EventReaderTest, ASilentReaderPrintsNothing) {
  std::string names = "<Events>";
  for (int number = 0; number <= xml::max_names; ++number)
    names += "<n" + std::to_string(number) + "/>";
  // So much more text that the parser asks for it after it has met the names.
  names += std::string(100'000, ' ') + "</Events>";
  for (const std::string &document : {names, std::string("<Events><Event></Events>")}) {
    testing::internal::CaptureStderr();
    EventReader told;
    EXPECT_EQ(told.read(document), EventReader::Outcome::NotWellFormed);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EventReader silent(std::make_shared<SharedParts>(), EventReader::Diagnosis::silent);
    EXPECT_EQ(silent.read(document), EventReader::Outcome::NotWellFormed);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  }
}

TEST_F(EventReaderTest, ReadersOfSeveralThreadsKeepTheirDiagnosesApart) {
  std::vector<std::thread> threads;
  std::vector<std::string> faults(4);
  for (std::size_t number = 0; number < faults.size(); ++number) {
    threads.emplace_back([&faults, number] {
      const std::string text = "<Events><Thread" + std::to_string(number) + "></Events>";
      for (int round = 0; round < 50; ++round) {
        const std::string found = read_events(text).error.value_or("");
        if (found.find("Thread" + std::to_string(number) + " line 1 and Events") ==
                std::string::npos ||
            (round > 0 && found != faults[number]))
          faults[number] = "wrong";
        else
          faults[number] = found;
      }
    });
  }
  for (std::thread &thread : threads)
    thread.join();
  for (const std::string &fault : faults)
    EXPECT_NE(fault, "wrong");
}

}  // namespace
}  // namespace velkor
