/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/section_scanner.h"

#include <array>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "store/event_reader.h"
#include "store/event_text.h"
#include "store/posts_layout.h"
#include "tests/unit/posting/event_samples.h"

namespace velkor {
namespace {

std::vector<std::string> described(const std::vector<PackedEvent> &events) {
  std::vector<std::string> texts;
  for (const PackedEvent &event : events)
    texts.push_back(test::describe(*event));
  return texts;
}

std::optional<std::vector<std::string>> scanned(const std::string &text) {
  SharedParts parts;
  const auto events = scan_elements(text, parts);
  return events ? std::optional(described(*events)) : std::nullopt;
}

/** What an XML parser reads; nothing when it refuses the text or finds anything odd. */
std::optional<std::vector<std::string>> parsed(const std::string &text) {
  EventReader reader(std::make_shared<SharedParts>(), EventReader::Diagnosis::silent);
  const std::string document = std::string(document_begin) + text + std::string(document_end);
  if (reader.read(document) != EventReader::Outcome::Read || !reader.remarks.empty())
    return std::nullopt;
  return described(reader.postings);
}

std::string element_of(const ZoxEvent &event) {
  std::string text;
  append_element(text, event);
  return text;
}

std::string some_elements() {
  std::string text = element_of(*test::full_event(1));
  text += element_of(*test::basic_event(2, "één titel & meer <b>"));
  const OwnedEvent bare(zox_event_new());
  return text + element_of(*bare);
}

TEST(SectionScannerTest, ReadsWhatASaveWrites) {
  const auto events = scanned(some_elements());
  ASSERT_TRUE(events);
  EXPECT_EQ(events->size(), 3U);
  EXPECT_EQ(events, parsed(some_elements()));
}

TEST(SectionScannerTest, TextWithoutPostingsHasNone) {
  ASSERT_TRUE(scanned(""));
  EXPECT_TRUE(scanned("")->empty());
}

TEST(SectionScannerTest, DerivesTheSubCategory) {
  const OwnedEvent event = test::basic_event(1);
  event->sCat = -1;
  EXPECT_EQ(scanned(element_of(*event)), parsed(element_of(*event)));
}

TEST(SectionScannerTest, LeavesOtherLayoutsToTheParser) {
  const std::string text = element_of(*test::full_event(1));
  EXPECT_FALSE(scanned("\n" + text));
  EXPECT_FALSE(scanned(text + " "));
  EXPECT_FALSE(scanned(text + "<!-- -->"));
  EXPECT_FALSE(scanned(text.substr(0, text.size() - 1)));
  for (const auto &[was, is] :
       {std::pair("<PostID>1", "<PostID>+1"), std::pair("<PostID>1", "<PostID> 1"),
        std::pair("<PostID>1", "<PostID>4294967297"),
        std::pair("<Event Code=\"1\">", "<Event Code='1'>"),
        std::pair("<![CDATA[Een titel]]>", "Een titel"), std::pair("Een titel", "Een\rtitel"),
        std::pair("Een titel", "Een\x01titel"), std::pair("Een titel", "Een\xff titel"),
        std::pair("Een titel", "Een ]]]]><![CDATA[> titel"), std::pair("<Tag>", "<Tags>")}) {
    std::string other = text;
    other.replace(other.find(was), std::string_view(was).size(), is);
    EXPECT_FALSE(scanned(other)) << is;
  }
}

/** Whatever the bytes: if the scanner reads them at all, then as the parser does. */
TEST(SectionScannerTest, NeverDiffersFromTheParser) {
  std::mt19937 random(11);
  const std::array<std::string, 12> pieces{
      "]]>", "<![CDATA[", "&amp;", "\r", "\n",           "    <Title><![CDATA[x]]></Title>\n",
      "|",   "\xc3\xa9",  "\xff",  "-",  "  </Event>\n", "  <Event Code=\"1\">\n"};
  int read = 0;
  for (int round = 0; round < 4000; ++round) {
    std::string text = some_elements();
    for (auto changes = 1 + random() % 2; changes > 0; --changes) {
      const std::size_t place = random() % text.size();
      switch (random() % 3) {
      case 0:
        text[place] = static_cast<char>(32 + random() % 95);
        break;
      case 1:
        text.erase(place, 1 + random() % 3);
        break;
      default:
        text.insert(place, pieces[random() % pieces.size()]);
        break;
      }
    }
    if (const auto events = scanned(text)) {
      ++read;
      ASSERT_EQ(events, parsed(text)) << text;
    }
  }
  EXPECT_GT(read, 100);
}

}  // namespace
}  // namespace velkor
