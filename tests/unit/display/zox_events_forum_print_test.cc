/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_forum.h>

#include "tests/unit/services/service_fixture.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

ZoxString *shout(ZoxString *body) {
  return g_string_new(("(" + text_of(body) + "!)").c_str());
}
ZoxString *grow(ZoxString *) {
  return g_string_new(std::string(300, 'x').c_str());
}
ZoxString *fail(ZoxString *) {
  return nullptr;
}

class ZoxEventsForumPrint : public LibraryTest {
protected:
  ZoxEventsForumPrint() { event->forum = zox_events_forum_new(); }

  ZoxReactie &add(const char *author, const char *body) {
    ZoxReactie *reactie = zox_events_forum_reactie_new();
    reactie->author = zox_string_new(author);
    reactie->body = zox_string_new(body);
    event->forum->reactions = g_slist_append(event->forum->reactions, reactie);
    return *reactie;
  }

  [[nodiscard]] std::string printed(ZoxTextFunc converter = nullptr) const {
    return taken(zox_events_forum_print(event.get(), converter));
  }

  OwnedEvent event{zox_event_new()};
};

TEST_F(ZoxEventsForumPrint, PrintsReactionsInOrder) {
  ZoxReactie &edited = add("Jan & co", "regel <een>\nregel twee");
  edited.messId = 4294967295U;
  edited.kudos = 12;
  edited.stamp = 1200000000;
  edited.edit = 1200003600;
  edited.reply = 5;
  edited.avatar = zox_string_new("http://x.example/a.png");
  add(nullptr, nullptr);
  ZoxReactie &late = add("laat", "na 2038 ]]> ");
  late.stamp = 4294967297;
  EXPECT_EQ(printed(), read_file(VELKOR_TEST_DIR "/golden/forum.xml"));
}

TEST_F(ZoxEventsForumPrint, PrintsOnlyTheCountOfAnEmptyForum) {
  EXPECT_EQ(printed(), "\t\t<NumReacties>0</NumReacties>\n");
}

TEST_F(ZoxEventsForumPrint, PrintsNoDatesThatAreNotAboveZero) {
  add("a", "b");
  ZoxReactie &withdrawn = add("c", "d");
  withdrawn.stamp = -1;
  withdrawn.edit = -1;
  EXPECT_THAT(printed(), Not(HasSubstr("<Datum>")));
  EXPECT_THAT(printed(), Not(HasSubstr("<Edit>")));
  EXPECT_THAT(printed(), HasSubstr("<Stamp>-1</Stamp>"));
}

TEST_F(ZoxEventsForumPrint, PrintsConvertedBodies) {
  add("a", "b");
  add("c", nullptr);
  EXPECT_THAT(printed(shout), HasSubstr("<Body><![CDATA[(b!)]]></Body>"));
  EXPECT_THAT(printed(shout), HasSubstr("<Body><![CDATA[(!)]]></Body>"));
  EXPECT_THAT(printed(fail), HasSubstr("<Body><![CDATA[]]></Body>"));
}

TEST_F(ZoxEventsForumPrint, MakesRoomForALongConvertedBody) {
  add("a", "b");
  EXPECT_THAT(printed(grow),
              HasSubstr("\t\t\t<Body><![CDATA[" + std::string(300, 'x') + "]]></Body>\n"));
}

TEST_F(ZoxEventsForumPrint, CutsLinesThatAreLongerThanTheBuffer) {
  ZoxReactie &reactie = add("auteur", "kort");
  reactie.avatar = zox_string_new(std::string(200, 'y').c_str());
  // Six characters of the author and the margin, one of them for the terminating zero.
  const std::string line = "\t\t\t<Avatar><![CDATA[" + std::string(200, 'y');
  EXPECT_THAT(printed(), HasSubstr("\n" + line.substr(0, 105) + "\t\t</Reactie>\n"));
}

TEST_F(ZoxEventsForumPrint, PrintsALineThatJustFitsWhole) {
  ZoxReactie &reactie = add("auteur", "kort");
  const std::string_view around = "\t\t\t<Avatar><![CDATA[]]></Avatar>\n";
  reactie.avatar = zox_string_new(std::string(105 - around.size(), 'y').c_str());
  EXPECT_THAT(printed(), HasSubstr("y]]></Avatar>\n\t\t</Reactie>\n"));
}

using ZoxEventsForumPrintDeathTest = LibraryTest;

TEST_F(ZoxEventsForumPrintDeathTest, AssertsItsArguments) {
  EXPECT_DEATH(zox_events_forum_print(nullptr, nullptr), "assertion failed: \\(event\\)");
  const OwnedEvent event(zox_event_new());
  EXPECT_DEATH(zox_events_forum_print(event.get(), nullptr),
               "assertion failed: \\(event->forum\\)");
}

}  // namespace
}  // namespace velkor::test
