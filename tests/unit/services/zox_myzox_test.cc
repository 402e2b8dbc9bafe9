/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_myzox.h>

#include "services/myzox_fields.h"
#include "support/slist.h"
#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ZoxMyzox : public LibraryTest {
protected:
  ~ZoxMyzox() override { clear(); }

  gint32 parse(const std::string &document) {
    clear();
    GSList placeholder{};
    list = &placeholder;
    const OwnedString text = string_of(document);
    gint32 result = -1;
    said = standard_error_of([&] { result = zox_myzox_parse(text.get(), &list); });
    return result;
  }

  [[nodiscard]] std::vector<gint32> ids() const {
    std::vector<gint32> found;
    for (const ZoxMyzoxPost *post : Items<const ZoxMyzoxPost>(list))
      found.push_back(post->postId);
    return found;
  }
  [[nodiscard]] const ZoxMyzoxPost &first() const {
    return *static_cast<const ZoxMyzoxPost *>(list->data);
  }

  void clear() {
    for (ZoxMyzoxPost *post : Items<ZoxMyzoxPost>(list))
      free_myzox_post(post);
    g_slist_free(std::exchange(list, nullptr));
  }

  GSList *list = nullptr;
  LogCapture log;
  QuietXml quiet;
  std::string said;
};

TEST_F(ZoxMyzox, ReadsAllElements) {
  EXPECT_EQ(parse(read_file(VELKOR_TEST_DIR "/fixtures/myzox.xml")), 0);
  ASSERT_THAT(ids(), ElementsAre(7, 8));
  const ZoxMyzoxPost &post = first();
  EXPECT_EQ(post.stamp, 1200000000);
  EXPECT_EQ(post.canEdit, 0U);
  EXPECT_EQ(text_of(post.title), "Titel <1> & meer");
  ASSERT_EQ(g_slist_length(post.groups), 2U);
  EXPECT_EQ(text_of(static_cast<const GString *>(post.groups->next->data)), "40");
  EXPECT_EQ(text_of(post.fName), "bestand");
  EXPECT_EQ(post.status, 4294967295U);
  EXPECT_EQ(text_of(post.poster), "plaatser");
  EXPECT_EQ(text_of(post.link), "http://x.example/?a=1&b=2");
  EXPECT_EQ(post.cat, 1U);
  EXPECT_EQ(post.sCat, 2U);
  EXPECT_EQ(post.updated, 1200003600);
  EXPECT_EQ(post.kudos, 3U);
  EXPECT_EQ(post.forum, 4U);
  EXPECT_EQ(post.reps, 5U);
  EXPECT_EQ(post.reqs, 6U);
  EXPECT_EQ(post.rating, 7U);
  EXPECT_EQ(post.mod, 8U);
}

TEST_F(ZoxMyzox, SkipsPostsWithoutAValidId) {
  EXPECT_EQ(parse("<MyZOX><Post ID=\"0\"/><Post ID=\"-4\"/><Post/><Post ID=\"x\"/>"
                  "<Other ID=\"5\"/>tekst<pOST ID=\"6\"/></MyZOX>"),
            0);
  EXPECT_THAT(ids(), ElementsAre(6));
  EXPECT_EQ(parse("<MyZOX><Post ID=\"0\"/></MyZOX>"), 0);
  EXPECT_EQ(list, nullptr);
}

TEST_F(ZoxMyzox, ForbidsEditingOnlyByTheWordN) {
  const std::pair<const char *, guint32> words[] = {
      {"n", 0}, {"N", 1}, {"no", 1}, {" n", 1}, {"y", 1}};
  for (const auto &[word, can_edit] : words) {
    EXPECT_EQ(parse("<MyZOX><Post ID=\"1\"><EDIT>" + std::string(word) + "</EDIT></Post></MyZOX>"),
              0);
    EXPECT_EQ(first().canEdit, can_edit) << word;
  }
  EXPECT_EQ(parse("<MyZOX><Post ID=\"1\"/></MyZOX>"), 0);
  EXPECT_EQ(first().canEdit, 0U);
}

TEST_F(ZoxMyzox, TakesTheLastOfARepeatedElement) {
  EXPECT_EQ(parse("<mYzOx><Post ID=\"1\"><Title>a</Title><title>b</title><Groups>|1|</Groups>"
                  "<Groups>|2|3|</Groups><Link>l</Link><Link/><Edit>n</Edit><Edit>j</Edit>"
                  "</Post></mYzOx>"),
            0);
  EXPECT_EQ(text_of(first().title), "b");
  EXPECT_EQ(g_slist_length(first().groups), 2U);
  EXPECT_EQ(first().link, nullptr);
  EXPECT_EQ(first().canEdit, 1U);
}

TEST_F(ZoxMyzox, TellsOfAnUnusableDocumentInTheWordsOfTheNewsgroups) {
  EXPECT_EQ(parse("<MyZOX>"), 1);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(said, "zox_group_parse(): empty document!\n");
  EXPECT_EQ(parse("<Groups/>"), 2);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(said, "zox_group_parse(): document of the wrong type, root node != Groups");
  EXPECT_EQ(parse("<MyZOX/>"), 3);
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(said, "");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxMyzox, PassesOverAnEmptyEditInTolerantMode) {
  const Tolerance tolerance;
  EXPECT_EQ(parse("<MyZOX><Post ID=\"1\"><Title>t</Title><Edit/></Post><Post ID=\"2\"/></MyZOX>"),
            0);
  EXPECT_THAT(ids(), ElementsAre(2));
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_myzox_parse_event(): posting 1: Edit zonder tekst\n"));
}

TEST_F(ZoxMyzox, FillsOneEntry) {
  const xml::Document document = xml::parse("<Post ID=\"9\"><Title>t</Title><Mod>-1</Mod></Post>");
  auto *post = g_new0(ZoxMyzoxPost, 1);
  list = g_slist_prepend(nullptr, post);
  zox_myzox_parse_event(document.get(), xmlDocGetRootElement(document.get())->children, post);
  EXPECT_EQ(post->postId, 0);
  EXPECT_EQ(text_of(post->title), "t");
  EXPECT_EQ(post->mod, 4294967295U);
}

using ZoxMyzoxUpdate = ServiceTest;

TEST_F(ZoxMyzoxUpdate, SendsTheIdAndAcceptsAnyReply) {
  for (const char *reply : {"", "OK", "iets anders"}) {
    server.reply("/3.7.3/xml-myzox.php", reply);
    EXPECT_EQ(zox_myzox_update(-2147483647, message), 0U);
    EXPECT_EQ(message.text(), "(voorheen)");
    EXPECT_EQ(sent().back(), "/3.7.3/xml-myzox.php mode=update id=-2147483647");
  }
}

using ZoxMyzoxDeathTest = LibraryTest;

TEST_F(ZoxMyzoxDeathTest, AssertsTheDocumentTheCoreAndEdit) {
  GSList *posts = nullptr;
  EXPECT_DEATH(zox_myzox_parse(nullptr, &posts), "assertion failed: \\(buffer\\)");
  const OwnedString text = string_of("<MyZOX><Post ID=\"1\"><Edit/></Post></MyZOX>");
  EXPECT_DEATH(zox_myzox_parse(text.get(), &posts),
               "zox_myzox_parse_event: assertion failed: \\(tmp\\)");
  EXPECT_DEATH(
      {
        core = nullptr;
        zox_myzox_parse(text.get(), &posts);
      },
      "assertion failed: \\(core\\)");
}

class ZoxMyzoxFetch : public ServiceTest {
protected:
  ~ZoxMyzoxFetch() override { zox_myzox_free(list); }

  ZoxErrorCode fetch(const std::string &reply) {
    zox_myzox_free(list);
    server.reply("/3.7.3/xml-myzox.php", reply);
    return zox_myzox_fetch(&list, message);
  }

  GSList *list = nullptr;
};

TEST_F(ZoxMyzoxFetch, BringsTheOverview) {
  EXPECT_EQ(fetch("<MyZOX><Post ID=\"7\"><Title>t</Title><Groups>|3|</Groups></Post>"
                  "<Post ID=\"8\"/></MyZOX>"),
            0U);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_THAT(sent(), ElementsAre("/3.7.3/xml-myzox.php"));
  ASSERT_EQ(g_slist_length(list), 2U);
  EXPECT_EQ(text_of(static_cast<const ZoxMyzoxPost *>(list->data)->title), "t");
}

TEST_F(ZoxMyzoxFetch, AnOverviewWithoutPostingsIsNoFailure) {
  EXPECT_EQ(fetch("<MyZOX/>"), 0U);
  EXPECT_EQ(list, nullptr);
}

TEST_F(ZoxMyzoxFetch, TellsOfFailures) {
  standard_error_of([&] { EXPECT_EQ(fetch("<Groups><Group/></Groups>"), 11U); });
  EXPECT_EQ(list, nullptr);
  EXPECT_EQ(message.text(), "(null)");
  EXPECT_EQ(fetch("MSGOnderhoud"), 29U);
  EXPECT_EQ(message.text(), "Onderhoud");
}

TEST_F(ZoxMyzoxFetch, APostingIsFreedByItself) {
  ASSERT_EQ(fetch("<MyZOX><Post ID=\"7\"><Title>t</Title></Post></MyZOX>"), 0U);
  zox_myzox_post_free(static_cast<ZoxMyzoxPost *>(list->data));
  list = g_slist_delete_link(list, list);
  EXPECT_EQ(list, nullptr);
}

}  // namespace
}  // namespace velkor::test
