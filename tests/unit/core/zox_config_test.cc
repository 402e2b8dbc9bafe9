/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_config.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_string.h>

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "tests/support/core_fixture.h"
#include "tests/support/full_disk.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::Not;

std::vector<std::string> texts(const GSList *list) {
  std::vector<std::string> texts;
  for (const ZoxString *item : Items<ZoxString>(list))
    texts.emplace_back(view_of(item));
  return texts;
}

std::vector<gint32> numbers(const GSList *list) {
  std::vector<gint32> numbers;
  for (const void *item : Items<void>(list))
    numbers.push_back(GPOINTER_TO_INT(item));
  return numbers;
}

std::string unknown(const std::string &key) {
  return "zox_config_load(): unknown config option : " + key + "\n";
}

class ZoxConfigTest : public test::CoreTest {
protected:
  /** Loads a file of that content. */
  const ZoxConfig &load(std::string_view content) {
    test::write_file(path, content);
    zox_config_load();
    return *core->config;
  }

  /** What the settings look like as a file. */
  [[nodiscard]] std::string saved() const {
    zox_config_save();
    return test::read_file(path);
  }

  fs::path path = cache_file("velkor.conf");
  test::LogCapture log;
};

/** A file in the order of saving, with a value of its own for every key. */
std::string every_key() {
  return test::read_file(fs::path(VELKOR_TEST_DIR) / "fixtures" / "every_key.conf");
}

TEST_F(ZoxConfigTest, HasItsDefaults) {
  const ZoxConfig &config = *zox_config_get();
  EXPECT_EQ(config.firstTime, 1U);
  EXPECT_STREQ(zox_string_value(config.usersOnline), "Onbekend");
  EXPECT_EQ(config.username, nullptr);
  EXPECT_EQ(config.password, nullptr);
  EXPECT_EQ(config.ircNickname, nullptr);
  EXPECT_EQ(config.watchlist, nullptr);
  EXPECT_EQ(config.groupFilterList, nullptr);
  EXPECT_EQ(saved(), test::read_file(fs::path(VELKOR_TEST_DIR) / "golden" / "defaults.conf"));
}

TEST_F(ZoxConfigTest, KeepsItsDefaultsWithoutAFile) {
  core->config->ratingScale = 7;
  zox_config_load();
  EXPECT_EQ(core->config->ratingScale, 100);
  EXPECT_EQ(zox_app_core_is_first_time(), 1U);
  EXPECT_THAT(log.warnings(), ElementsAre("zox_config_load(): cannot load configfile " +
                                          path.string() + ": No such file or directory"));
}

TEST_F(ZoxConfigTest, ReadsEveryKey) {
  const ZoxConfig &config = load(every_key());
  EXPECT_THAT(log.warnings(), IsEmpty());
  EXPECT_EQ(config.firstTime, 0U);
  EXPECT_EQ(config.lastCheck, 1214913600);
  EXPECT_EQ(config.prevCheck, 1214910000);
  EXPECT_EQ(config.ledenCount, 12345U);
  EXPECT_STREQ(config.usersOnline->str, "321 leden");
  EXPECT_STREQ(config.username->str, "gebruiker");
  EXPECT_STREQ(config.password->str, "wacht=woord");
  EXPECT_STREQ(config.proxyHost->str, "proxy.test");
  EXPECT_STREQ(config.proxyPort->str, "8080");
  EXPECT_STREQ(config.proxyUser->str, "baas");
  EXPECT_STREQ(config.proxyPassword->str, "sleutel");
  EXPECT_STREQ(config.htmlRenderer->str, "webkit");
  EXPECT_STREQ(config.ircNickname->str, "bijnaam");
  EXPECT_STREQ(config.ircAltNickname->str, "bijnaam2");
  EXPECT_THAT(texts(config.groupFilterList), ElementsAre("12", "40"));
  EXPECT_THAT(texts(config.watchlist), ElementsAre("3", "1", "2"));
  EXPECT_THAT(texts(config.watcher), ElementsAre("film", ""));
  EXPECT_THAT(texts(config.badword), ElementsAre("slecht woord"));
  EXPECT_THAT(numbers(config.statusFilter), ElementsAre(-1, 0, 2));
}

TEST_F(ZoxConfigTest, ReadsEveryFlagAndNumber) {
  const ZoxConfig &config = load(every_key());
  EXPECT_EQ(config.updatenBijOpstarten, 101);
  EXPECT_EQ(config.toonInfoBijEenZoekresultaat, 102);
  EXPECT_EQ(config.startMaximized, 103);
  EXPECT_EQ(config.toonStatusBijLaden, 104);
  EXPECT_EQ(config.toonCategoriseerdeLijstBijKnopNieuw, 105);
  EXPECT_EQ(config.verwijderPostsNaXDagen, 106);
  EXPECT_EQ(config.trayIcon, 107);
  EXPECT_EQ(config.gebruikFontFamily, 108);
  EXPECT_EQ(config.toonGUIGroupFilter, 109);
  EXPECT_EQ(config.recursiveUpdate, 110);
  EXPECT_EQ(config.geenTabbedBrowsing, 111);
  EXPECT_EQ(config.toonWatcherNotifications, 112);
  EXPECT_EQ(config.openPostinfoOpAchtergrond, 113);
  EXPECT_EQ(config.ratingScale, 114);
  EXPECT_EQ(config.toonIRCClient, 115);
  EXPECT_EQ(config.groupFilter, 116);
}

TEST_F(ZoxConfigTest, IsSavedAsItWasRead) {
  load(every_key());
  EXPECT_EQ(saved(), every_key());
}

TEST_F(ZoxConfigTest, SavesTheLow32BitsOfTimes) {
  core->config->lastCheck = (gint64{1} << 32) + 5;
  core->config->prevCheck = gint64{1} << 31;
  core->config->ledenCount = G_MAXUINT32;
  const std::string text = saved();
  EXPECT_THAT(text, HasSubstr("\nlastCheck=5\nprevCheck=-2147483648\nledenCount=-1\n"));
}

TEST_F(ZoxConfigTest, SavesAMissingTextAsAnEmptyOne) {
  replace_string(core->config->usersOnline, nullptr);
  replace_string(core->config->htmlRenderer, nullptr);
  const std::string text = saved();
  EXPECT_THAT(text, HasSubstr("\nusersOnline=\n"));
  EXPECT_TRUE(text.starts_with("htmlRenderer=\n"));
}

TEST_F(ZoxConfigTest, TakesAnEmptyAccountForNone) {
  const ZoxConfig &config = load("username=eerst\nusername=\npassword=  \t\nusersOnline=\n");
  EXPECT_EQ(config.username, nullptr);
  EXPECT_EQ(config.password, nullptr);
  EXPECT_EQ(config.usersOnline, nullptr);
}

TEST_F(ZoxConfigTest, KeepsTheOtherTextsEvenWhenEmpty) {
  const ZoxConfig &config = load("htmlRenderer=\nircNickname= \nircAltNickname=\n");
  EXPECT_STREQ(zox_string_value(config.htmlRenderer), "");
  EXPECT_STREQ(zox_string_value(config.ircNickname), "");
  EXPECT_STREQ(zox_string_value(config.ircAltNickname), "");
}

TEST_F(ZoxConfigTest, TrimsValues) {
  EXPECT_STREQ(load("username=\t een twee \r\n").username->str, "een twee");
  EXPECT_THAT(texts(load("badword= a b \n").badword), ElementsAre("a b"));
}

TEST_F(ZoxConfigTest, ReadsNumbersUpToTheFirstOtherCharacter) {
  const ZoxConfig &config =
      load("lastCheck=letters\nprevCheck= 12x3\nledenCount=\ntrayIcon=-5\nstatusFilter=2,3\n");
  EXPECT_EQ(config.lastCheck, 0);
  EXPECT_EQ(config.prevCheck, 12);
  EXPECT_EQ(config.ledenCount, 0U);
  EXPECT_EQ(config.trayIcon, -5);
  EXPECT_THAT(numbers(config.statusFilter), ElementsAre(2));
}

TEST_F(ZoxConfigTest, KeepsListsInTheOrderOfTheFile) {
  load("watchlist=3\nwatchlist=1\nbadword=x\nwatchlist=2\n");
  EXPECT_THAT(texts(core->config->watchlist), ElementsAre("3", "1", "2"));
  EXPECT_THAT(saved(), HasSubstr("\nwatchlist=3\nwatchlist=1\nwatchlist=2\nbadword=x\n"));
}

TEST_F(ZoxConfigTest, ReplacesTheGroupFilterListByALaterOne) {
  EXPECT_THAT(texts(load("groupFilterList=|1|2|\ngroupFilterList=|3|\n").groupFilterList),
              ElementsAre("3"));
}

TEST_F(ZoxConfigTest, WarnsAboutUnknownKeys) {
  EXPECT_EQ(load("trayIcon = 0\nTrayIcon=0\n# proxyHost=\nfirstTime=0\n=\n").trayIcon, 1);
  EXPECT_EQ(core->config->firstTime, 1U);
  EXPECT_THAT(log.warnings(),
              ElementsAre(unknown("trayIcon "), unknown("TrayIcon"), unknown("# proxyHost"),
                          unknown("firstTime"), unknown("")));
}

TEST_F(ZoxConfigTest, SkipsLinesThatSayNothing) {
  load("# commentaar\n\n   \ntrayIcon\n");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxConfigTest, IsFirstTimeUntilUserNameAndPasswordAreThere) {
  EXPECT_EQ(load("username=u\n").firstTime, 1U);
  EXPECT_EQ(load("password=p\n").firstTime, 1U);
  EXPECT_EQ(load("password=p\nusername=u").firstTime, 0U);
}

TEST_F(ZoxConfigTest, TakesALongLineInPieces) {
  const std::string key = "htmlRenderer=";
  const std::string fitting(1023 - key.size(), 'a');
  load(key + fitting + "trayIcon=0\n");
  EXPECT_EQ(core->config->htmlRenderer->str, fitting);
  EXPECT_EQ(core->config->trayIcon, 0);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxConfigTest, EndsALineAtAZeroByte) {
  load(std::string_view("username=u\0rest\n\0trayIcon=0\npassword=p\n", 40));
  EXPECT_STREQ(core->config->username->str, "u");
  EXPECT_EQ(core->config->trayIcon, 1);
  EXPECT_STREQ(core->config->password->str, "p");
}

TEST_F(ZoxConfigTest, SurvivesGarbage) {
  load(test::read_file(fs::path(VELKOR_TEST_DIR) / "fixtures" / "garbage.conf"));
  EXPECT_STREQ(core->config->username->str, "gebruiker");
  EXPECT_EQ(core->config->ratingScale, 50);
}

TEST_F(ZoxConfigTest, IsReadableByItsOwnerAlone) {
  const mode_t earlier = umask(0);
  zox_config_save();
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0600});
  fs::permissions(path, fs::perms{0644});
  zox_config_save();
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0600});
  fs::remove(path);
  zox_config_create_dummy();
  EXPECT_EQ(fs::status(path).permissions(), fs::perms{0600});
  umask(earlier);
}

TEST_F(ZoxConfigTest, WarnsWhenItCannotBeSaved) {
  fs::create_directory(path);
  zox_config_save();
  EXPECT_THAT(log.warnings(),
              ElementsAre("zox_config_save(): cannot open save config : Is a directory"));
}

TEST_F(ZoxConfigTest, WarnsWhenItCannotBeRead) {
  fs::create_directory(path);
  zox_config_load();
  EXPECT_THAT(log.warnings(), ElementsAre("zox_config_load(): cannot load configfile " +
                                          path.string() + ": Is a directory"));
}

/** No file can be opened while it lives. */
class NoMoreFiles {
public:
  NoMoreFiles() {
    getrlimit(RLIMIT_NOFILE, &earlier_);
    const rlimit none{0, earlier_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoMoreFiles() { setrlimit(RLIMIT_NOFILE, &earlier_); }
  NoMoreFiles(const NoMoreFiles &) = delete;
  NoMoreFiles &operator=(const NoMoreFiles &) = delete;

private:
  rlimit earlier_{};
};

TEST_F(ZoxConfigTest, BacksUpAFileThatCouldNotBeReadWhenItSaves) {
  test::write_file(path, "username=u\n");
  {
    const NoMoreFiles none;
    zox_config_load();
  }
  EXPECT_EQ(core->config->username, nullptr);
  ASSERT_THAT(log.warnings(), ElementsAre("zox_config_load(): cannot load configfile " +
                                          path.string() + ": Too many open files"));
  EXPECT_THAT(saved(), HasSubstr("\nratingScale=100\n"));
  std::vector<std::string> kept;
  for (const auto &entry : fs::directory_iterator(path.parent_path()))
    if (entry.path().filename().string().starts_with("velkor.conf.onleesbaar-"))
      kept.push_back(test::read_file(entry.path()));
  EXPECT_THAT(kept, ElementsAre("username=u\n"));
}

TEST_F(ZoxConfigTest, StartsANewUserWithAStarterFile) {
  zox_config_create_dummy();
  EXPECT_EQ(test::read_file(path),
            "# Velkor configuratie file\n"
            "# Alle regels die met '#' beginnen worden als commentaar beschouwd\n"
            "# Let op: alle commentaar regels worden automatisch verwijderd indien er\n"
            "# voor de eerste keer succesvol geupdated is\n"
            "username=<ZOX username hier>\n"
            "password=<ZOX password hier>\n"
            "# proxyHost=\n"
            "# proxyPort=\n"
            "# proxyUser=\n"
            "# proxyPassword=\n"
            "\n"
            "\n");
  zox_config_load();
  EXPECT_STREQ(core->config->username->str, "<ZOX username hier>");
  EXPECT_STREQ(core->config->password->str, "<ZOX password hier>");
  EXPECT_EQ(core->config->firstTime, 0U);
  EXPECT_THAT(log.warnings(), ElementsAre(unknown("# proxyHost"), unknown("# proxyPort"),
                                          unknown("# proxyUser"), unknown("# proxyPassword")));
}

TEST_F(ZoxConfigTest, LeavesNullBehindWhenFreed) {
  load(every_key());
  zox_config_free();
  EXPECT_EQ(core->config, nullptr);
  EXPECT_EQ(zox_config_get(), nullptr);
}

/** Whatever a value holds, it fills one line of the file. */
class OneLinePerValueTest : public ZoxConfigTest {
protected:
  /** Saves, loads again, and expects that nothing but `key` differs from the defaults. */
  const ZoxConfig &reloaded(const std::string &key) {
    std::vector<std::string> others;
    std::istringstream file(saved());
    for (std::string line; std::getline(file, line);)
      if (!line.starts_with(key + "="))
        others.push_back(line);
    zox_config_load();
    EXPECT_THAT(others, IsSubsetOf(default_lines())) << key;
    EXPECT_EQ(core->config->proxyHost, nullptr) << key;
    return *core->config;
  }

  static std::vector<std::string> default_lines() {
    std::istringstream file(
        test::read_file(fs::path(VELKOR_TEST_DIR) / "golden" / "defaults.conf"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
      lines.push_back(line);
    return lines;
  }

  static std::string shortened(const std::string &key) {
    return "zox_config_save(): a value of " + key + " does not fit on one line and is shortened";
  }
  static std::string left_out(const std::string &key) {
    return "zox_config_save(): a value of " + key + " does not fit on one line and is left out";
  }
};

void put(ZoxString *&place, std::string_view text) {
  replace_string(place, g_string_new_len(text.data(), static_cast<gssize>(text.size())));
}

void append(GSList *&list, std::string_view text) {
  list = g_slist_append(list, g_string_new_len(text.data(), static_cast<gssize>(text.size())));
}

TEST_F(OneLinePerValueTest, AControlCharacterEndsAValue) {
  for (const char control : {'\n', '\r', '\0', '\x01', '\x1b', '\x7f'}) {
    put(core->config->usersOnline, std::string("12 ") + control + "proxyHost=evil");
    EXPECT_STREQ(reloaded("usersOnline").usersOnline->str, "12") << int{control};
    EXPECT_THAT(log.warnings().back(), shortened("usersOnline")) << int{control};
  }
}

TEST_F(OneLinePerValueTest, WhiteSpaceAtTheEndIsLostWithoutAWarning) {
  put(core->config->usersOnline, "12 leden \r\n");
  EXPECT_STREQ(reloaded("usersOnline").usersOnline->str, "12 leden");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(OneLinePerValueTest, ATabIsPartOfAValue) {
  put(core->config->username, "een\ttwee");
  EXPECT_STREQ(reloaded("username").username->str, "een\ttwee");
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(OneLinePerValueTest, AValueEndsWhereTheReadersBufferIsFull) {
  const std::string fitting(1023 - std::string("usersOnline=").size(), 'x');
  put(core->config->usersOnline, fitting);
  EXPECT_EQ(reloaded("usersOnline").usersOnline->str, fitting);
  EXPECT_THAT(log.warnings(), IsEmpty());
  put(core->config->usersOnline, fitting + "proxyHost=evil\n");
  EXPECT_EQ(reloaded("usersOnline").usersOnline->str, fitting);
  EXPECT_THAT(log.warnings(), ElementsAre(shortened("usersOnline")));
}

TEST_F(OneLinePerValueTest, AValueIsCutBetweenCharacters) {
  const std::string fitting(1023 - std::string("username=").size() - 2, 'x');
  for (const char *last : {"\u20ac", "\U0001F600"}) {
    put(core->config->username, fitting + last);
    EXPECT_EQ(reloaded("username").username->str, fitting) << last;
  }
  put(core->config->username, fitting + "\u00e9!");
  EXPECT_EQ(reloaded("username").username->str, fitting + "\u00e9");
  put(core->config->username, std::string(2000, '\x80'));
  EXPECT_GT(reloaded("username").username->len, 1000U) << "bytes that are no characters";
}

TEST_F(OneLinePerValueTest, AnOptionalTextOfWhichNothingIsLeftIsNotSet) {
  put(core->config->username, "\nproxyHost=evil");
  put(core->config->ircNickname, "\nproxyHost=evil");
  const std::string text = saved();
  EXPECT_THAT(text, Not(HasSubstr("username=")));
  EXPECT_THAT(text, Not(HasSubstr("ircNickname=")));
}

TEST_F(OneLinePerValueTest, HoldsForTextsInLists) {
  const std::string fitting(1023 - std::string("watcher=").size(), 'x');
  append(core->config->watcher, "film\nproxyHost=evil");
  append(core->config->watcher, fitting + "proxyHost=evil");
  append(core->config->watcher, "");
  append(core->config->watcher, "serie");
  EXPECT_THAT(texts(reloaded("watcher").watcher), ElementsAre("film", fitting, "", "serie"));
  EXPECT_THAT(log.warnings(), ElementsAre(shortened("watcher"), shortened("watcher")));
}

TEST_F(OneLinePerValueTest, ANumberIsNeverCut) {
  append(core->config->watchlist, "12\nproxyHost=evil");
  append(core->config->watchlist, std::string(1020, '1'));
  append(core->config->watchlist, "34");
  EXPECT_THAT(texts(reloaded("watchlist").watchlist), ElementsAre("12", "34"));
  EXPECT_THAT(log.warnings(), ElementsAre(shortened("watchlist"), left_out("watchlist")));
}

TEST_F(OneLinePerValueTest, ASplitListHoldsTheItemsThatFit) {
  append(core->config->groupFilterList, "12\nproxyHost=evil");
  append(core->config->groupFilterList, "\x01");
  for (int id = 1000; id < 1300; ++id)
    append(core->config->groupFilterList, std::to_string(id));
  const std::vector<std::string> kept = texts(reloaded("groupFilterList").groupFilterList);
  // "groupFilterList=|12|" has space for 200 items of 4 digits and a "|".
  ASSERT_EQ(kept.size(), 201U);
  EXPECT_EQ(kept.front(), "12");
  EXPECT_EQ(kept.back(), "1199");
  EXPECT_THAT(log.warnings(), Contains(left_out("groupFilterList")).Times(1));
}

TEST_F(OneLinePerValueTest, ABadWordIsNeverEmpty) {
  for (const char *text : {"", " \t", "\nproxyHost=evil", "woord"})
    append(core->config->badword, text);
  EXPECT_THAT(texts(reloaded("badword").badword), ElementsAre("woord"));
}

using ZoxConfigDeathTest = ZoxConfigTest;

TEST_F(ZoxConfigDeathTest, KeepsTheOldFileWhenTheDiskIsFull) {
  test::write_file(path, "username=u\n");
  g_string_append(core->config->htmlRenderer, std::string(5000, 'x').c_str());
  EXPECT_EXIT(
      {
        g_log_set_default_handler(g_log_default_handler, nullptr);
        test::fill_disk(1000);
        zox_config_save();
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "zox_config_save\\(\\): cannot write .*: File too large");
  EXPECT_EQ(test::read_file(path), "username=u\n");
}

TEST_F(ZoxConfigDeathTest, NeedsSettings) {
  zox_config_free();
  EXPECT_DEATH(zox_config_save(), "assertion failed: \\(core->config\\)");
  EXPECT_DEATH(zox_config_free(), "assertion failed: \\(core->config\\)");
}

TEST(ZoxConfigCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_config_init(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_config_load(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_config_save(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_config_free(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_config_get(), "assertion failed: \\(core\\)");
  EXPECT_DEATH(zox_config_create_dummy(), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
