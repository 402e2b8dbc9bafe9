/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_groups.h>

#include <string>

#include <gmock/gmock.h>
#include <velkor/zox_file.h>

#include <velkor/zox_string.h>

#include "support/xml.h"
#include "taxonomy/group_record.h"
#include "tests/support/layer_fixtures.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/** "id=name" of each newsgroup, "-" for one without name. */
std::string printed(const GSList *groups) {
  std::string text;
  for (const ZoxGroup *group : Items<ZoxGroup>(groups)) {
    text += std::to_string(group->id) + "=";
    text += group->groupName == nullptr ? "-" : group->groupName->str;
    text += " ";
  }
  return text;
}

class ZoxGroupsDocument : public test::TableTest {
protected:
  ZoxGroupsDocument() : path(cache_file("velkor.groups.gz")) {}

  /** What a document reads as, after what it says on standard error. */
  static std::string parse(const char *document) {
    const OwnedString text(zox_string_new(document));
    testing::internal::CaptureStderr();
    GSList *groups = zox_group_parse(text.get());
    const std::string said = testing::internal::GetCapturedStderr();
    const std::string result = said + printed(groups);
    for (ZoxGroup *group : Items<ZoxGroup>(groups))
      release_group(group);
    g_slist_free(groups);
    return result;
  }

  static std::string load() {
    testing::internal::CaptureStderr();
    zox_group_load();
    return testing::internal::GetCapturedStderr();
  }

  static void add_group(guint32 id, const char *name) {
    ZoxGroup *group = zox_group_new();
    group->id = id;
    group->groupName = zox_string_new(name);
    core->groups = g_slist_append(core->groups, group);
  }

  [[nodiscard]] std::vector<std::filesystem::path> backups() const {
    std::vector<std::filesystem::path> found;
    for (const auto &entry : std::filesystem::directory_iterator(path.parent_path())) {
      if (entry.path().filename().string().starts_with("velkor.groups.gz.onleesbaar-"))
        found.push_back(entry.path());
    }
    return found;
  }

  std::filesystem::path path;
};

TEST_F(ZoxGroupsDocument, ReadsNewsgroupsInOrder) {
  EXPECT_EQ(parse("<Groups><Group ID=\"7\"><Name>alt.binaries.a</Name></Group>"
                  "<Group ID='3'><Name>a &amp; b</Name></Group></Groups>"),
            "7=alt.binaries.a 3=a & b ");
}

TEST_F(ZoxGroupsDocument, ElementNamesMatchRegardlessOfCase) {
  EXPECT_EQ(parse("<groups><GROUP ID=\"1\"><name>x</name></GROUP></groups>"), "1=x ");
}

TEST_F(ZoxGroupsDocument, OtherElementsAreSkipped) {
  EXPECT_EQ(parse("<Groups>tekst<Iets ID=\"9\"><Name>y</Name></Iets>"
                  "<Group ID=\"1\"><Ander>z</Ander><Name>x</Name></Group></Groups>"),
            "1=x ");
}

TEST_F(ZoxGroupsDocument, TheLastNameWins) {
  EXPECT_EQ(parse("<Groups><Group ID=\"1\"><Name>x</Name><Name>y</Name></Group></Groups>"), "1=y ");
}

TEST_F(ZoxGroupsDocument, GroupWithoutNameIsKept) {
  EXPECT_EQ(parse("<Groups><Group ID=\"1\"/><Group ID=\"2\"><Name/></Group></Groups>"), "1=- 2=- ");
}

TEST_F(ZoxGroupsDocument, IdThatIsMissingOrNoNumberIsZero) {
  EXPECT_EQ(parse("<Groups><Group><Name>x</Name></Group><Group ID=\"y\"/></Groups>"), "0=x 0=- ");
}

TEST_F(ZoxGroupsDocument, IdIsAnUnsignedNumber) {
  EXPECT_EQ(parse("<Groups><Group ID=\"4294967295\"/></Groups>"), "4294967295=- ");
}

TEST_F(ZoxGroupsDocument, IdsOfOneDocumentMayRepeat) {
  EXPECT_EQ(parse("<Groups><Group ID=\"1\"><Name>x</Name></Group>"
                  "<Group ID=\"1\"><Name>y</Name></Group></Groups>"),
            "1=x 1=y ");
}

TEST_F(ZoxGroupsDocument, WhatTheTableKnowsIsLeftOut) {
  add_group(1, "bekend");
  EXPECT_EQ(parse("<Groups><Group ID=\"1\"/><Group ID=\"1\"><Name>x</Name></Group>"
                  "<Group ID=\"2\"><Name>y</Name></Group></Groups>"),
            "2=y ");
  EXPECT_EQ(printed(core->groups), "1=bekend ");
}

TEST_F(ZoxGroupsDocument, WithoutGroupsThereAreNone) {
  const test::LogCapture log;
  EXPECT_EQ(parse("<Groups/>"), "");
  EXPECT_EQ(parse("<Groups> <Ander/> </Groups>"), "");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxGroupsDocument, WhatIsNoDocumentIsReported) {
  EXPECT_EQ(parse(""), "zox_group_parse(): empty document!\n");
  EXPECT_THAT(parse("OK"), HasSubstr("zox_group_parse(): empty document!\n"));
  EXPECT_THAT(parse("<Groups><Group>"), HasSubstr("zox_group_parse(): empty document!\n"));
}

TEST_F(ZoxGroupsDocument, AnotherDocumentIsReported) {
  EXPECT_EQ(parse("<Filters><Group ID=\"1\"/></Filters>"),
            "zox_group_parse(): document of the wrong type, root node != Groups");
}

TEST_F(ZoxGroupsDocument, EntityBombIsNoDocument) {
  const std::string ten = "&x;&x;&x;&x;&x;&x;&x;&x;&x;&x;";
  std::string document = "<!DOCTYPE Groups [<!ENTITY a \"" + std::string(500, 'a') + "\">";
  for (char name = 'b'; name <= 'h'; ++name) {
    std::string body = ten + ten;
    std::ranges::replace(body, 'x', static_cast<char>(name - 1));
    document += std::string("<!ENTITY ") + name + " \"" + body + "\">";
  }
  document += "]><Groups><Group ID=\"1\"><Name>&h;</Name></Group></Groups>";
  EXPECT_THAT(parse(document.c_str()), HasSubstr("zox_group_parse(): empty document!\n"));
}

TEST_F(ZoxGroupsDocument, ChildrenOfOneGroup) {
  const xml::Document document = xml::parse("<Group ID=\"5\"><Name>x</Name></Group>");
  const xmlNode *root = xmlDocGetRootElement(document.get());
  const OwnedGroup group(zox_group_parse_group(document.get(), root->children));
  EXPECT_STREQ(group->groupName->str, "x");
  EXPECT_EQ(group->id, 0U);
  const OwnedGroup bare(zox_group_parse_group(document.get(), nullptr));
  EXPECT_EQ(bare->groupName, nullptr);
}

TEST_F(ZoxGroupsDocument, SaveWritesTheTableCompressed) {
  add_group(7, "alt.binaries.a");
  add_group(4294967295U, "a & <b>");
  add_group(8, nullptr);
  const std::string expected = "<?xml version=\"1.0\"?>\n"
                               "<Groups>\n"
                               "  <Group ID=\"7\">\n"
                               "    <Name>alt.binaries.a</Name>\n"
                               "  </Group>\n"
                               "  <Group ID=\"4294967295\">\n"
                               "    <Name>a &amp; &lt;b&gt;</Name>\n"
                               "  </Group>\n"
                               "  <Group ID=\"8\"/>\n"
                               "</Groups>\n";
  EXPECT_EQ(zox_group_save(), static_cast<gint32>(expected.size()));
  EXPECT_EQ(test::read_gzip(path), expected);
  // Level 9 notes in the header that the compressor took its time.
  EXPECT_EQ(test::read_file(path).at(8), '\2');
}

TEST_F(ZoxGroupsDocument, SaveThatFailsSaysSo) {
  std::filesystem::create_directory(path);
  const test::LogCapture log;
  EXPECT_EQ(zox_group_save(), -1);
}

TEST_F(ZoxGroupsDocument, LoadReadsWhatSaveWrote) {
  add_group(7, "alt.binaries.a");
  add_group(8, nullptr);
  add_group(7, "a & <b>");
  zox_group_save();
  zox_group_free_all();
  EXPECT_EQ(load(), "");
  EXPECT_EQ(printed(core->groups), "7=alt.binaries.a 8=- 7=a & <b> ");
}

TEST_F(ZoxGroupsDocument, WhatXmlCannotHoldIsLeftOut) {
  add_group(7, "alt\1.bin\xff");
  zox_group_save();
  EXPECT_EQ(load(), "");
  EXPECT_EQ(printed(core->groups), "7=alt.bin\ufffd ");
}

TEST_F(ZoxGroupsDocument, LoadReplacesTheTable) {
  add_group(1, "oud");
  test::write_gzip(path, "<Groups><Group ID=\"1\"><Name>nieuw</Name></Group></Groups>");
  EXPECT_EQ(load(), "");
  EXPECT_EQ(printed(core->groups), "1=nieuw ");
}

TEST_F(ZoxGroupsDocument, LoadTakesAnUncompressedFileOnce) {
  test::write_file(cache_file("velkor.groups"), "<Groups><Group ID=\"1\"/></Groups>");
  EXPECT_EQ(load(), "");
  EXPECT_EQ(printed(core->groups), "1=- ");
  EXPECT_FALSE(std::filesystem::exists(cache_file("velkor.groups")));
}

TEST_F(ZoxGroupsDocument, MissingFileLeavesTheTable) {
  add_group(1, "oud");
  EXPECT_EQ(load(), "");
  EXPECT_EQ(printed(core->groups), "1=oud ");
}

TEST_F(ZoxGroupsDocument, DocumentWithoutGroupsEmptiesTheTable) {
  add_group(1, "oud");
  test::write_gzip(path, "<Groups/>");
  EXPECT_EQ(load(), "");
  EXPECT_EQ(core->groups, nullptr);
  zox_group_save();
  EXPECT_THAT(backups(), IsEmpty());
}

TEST_F(ZoxGroupsDocument, NextSaveBacksUpAnUnreadableFile) {
  add_group(1, "oud");
  test::write_gzip(path, "<Groups><Group ID=\"1\"");
  EXPECT_THAT(load(), HasSubstr("zox_group_parse(): empty document!\n"));
  EXPECT_EQ(core->groups, nullptr);
  const test::LogCapture log;
  zox_group_save();
  ASSERT_THAT(backups(), SizeIs(1));
  EXPECT_EQ(test::read_gzip(backups().front()), "<Groups><Group ID=\"1\"");
  EXPECT_EQ(test::read_gzip(path), "<?xml version=\"1.0\"?>\n<Groups/>\n");
}

TEST_F(ZoxGroupsDocument, NextSaveBacksUpABrokenGzipFile) {
  const std::string broken = std::string("\x1f\x8b\x08\0\0\0\0\0\0\3", 10) + "geen deflate";
  test::write_file(path, broken);
  add_group(1, "oud");
  EXPECT_EQ(load(), "");
  EXPECT_EQ(printed(core->groups), "1=oud ");
  const test::LogCapture log;
  zox_group_save();
  ASSERT_THAT(backups(), SizeIs(1));
  EXPECT_EQ(test::read_file(backups().front()), broken);
}

TEST_F(ZoxGroupsDocument, ReadableFileInItsPlaceIsNotBackedUp) {
  test::write_gzip(path, "geen xml");
  EXPECT_NE(load(), "");
  test::write_gzip(path, "<Groups><Group ID=\"1\"/></Groups>");
  EXPECT_EQ(load(), "");
  zox_group_save();
  EXPECT_THAT(backups(), IsEmpty());
}

TEST_F(ZoxGroupsDocument, OutcomeTellsWhatTheFileWas) {
  load();
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_MISSING);
  test::write_gzip(path, "<Groups><Group ID=\"1\"/></Groups>");
  EXPECT_EQ(load(), "");
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_FINE);
  test::write_gzip(path, "<Other/>");
  EXPECT_NE(load(), "");
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_DAMAGED);
  EXPECT_EQ(zox_file_last_error()->message,
            "cannot read " + path.string() + ": the root element is not Groups");
}

TEST_F(ZoxGroupsDocument, FailedSaveNamesThePublicFunction) {
  const test::LogCapture log;
  std::filesystem::create_directory(path);
  EXPECT_EQ(zox_group_save(), -1);
  EXPECT_EQ(zox_file_last_error()->status, ZOX_FILE_NOT_WRITTEN);
  EXPECT_EQ(zox_file_last_error()->path, path.string());
  EXPECT_THAT(log.warnings(), testing::ElementsAre("zox_group_save(): cannot write " +
                                                   path.string() + ": Is a directory"));
}

using ZoxGroupsDocumentDeathTest = ZoxGroupsDocument;

TEST_F(ZoxGroupsDocumentDeathTest, ParseNeedsAText) {
  EXPECT_DEATH(zox_group_parse(nullptr), "assertion failed: \\(buffer\\)");
}

TEST(ZoxGroupsDocumentWithoutCoreDeathTest, NeedsACore) {
  const OwnedString text(zox_string_new("<Groups/>"));
  EXPECT_DEATH(zox_group_parse(text.get()), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_group_load(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_group_save(), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
