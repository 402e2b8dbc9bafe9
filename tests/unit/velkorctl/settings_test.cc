/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/settings.h"

#include <set>
#include <sstream>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_string.h>

#include "parts_fixture.h"
#include "velkorctl/setting_words.h"

namespace velkor::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SettingsTest : public PartsTest {
protected:
  static void set(const std::string &key, const std::vector<std::string> &values) {
    assign(setting_called(key), values);
  }
  static std::vector<std::string> get(const std::string &key) {
    return values_of(setting_called(key));
  }
  static std::string error(const std::string &key, const std::vector<std::string> &values) {
    return usage_error_of([&] { set(key, values); });
  }
};

TEST_F(SettingsTest, SuggestsAKeyForOneThatIsWrong) {
  EXPECT_THAT(usage_error_of([] { setting_called("usrname"); }),
              HasSubstr("unknown setting \"usrname\"; did you mean username?"));
}

/** Every key must survive a save by the library, and nothing that it saves may be unknown. */
TEST_F(SettingsTest, KnowsExactlyTheKeysOfTheFile) {
  for (const char *key : {"username", "password", "proxyHost", "proxyUser", "proxyPassword",
                          "ircNickname", "watcher", "badword"})
    set(key, {"x"});
  for (const char *key : {"proxyPort", "watchlist", "statusFilter"})
    set(key, {"1"});
  zox_config_save();
  std::istringstream file(test::read_file(sandbox.cache() / "velkor.conf"));
  std::set<std::string> saved;
  for (std::string line; std::getline(file, line);)
    saved.insert(line.substr(0, line.find('=')));
  std::set<std::string> known;
  for (const ZoxSetting *setting : all_settings())
    known.insert(setting->key);
  EXPECT_EQ(saved, known);
}

TEST_F(SettingsTest, EveryValueComesBackFromTheFile) {
  set("username", {"Ann = B"});
  set("password", {"p=q|r"});
  set("verwijderPostsNaXDagen", {"6"});
  set("trayIcon", {"0"});
  set("watcher", {"big show", "b"});
  set("groupFilterList", {"a.b.tv", "12"});
  set("statusFilter", {"ready", "-1"});
  zox_config_save();
  zox_config_load();
  EXPECT_THAT(get("username"), ElementsAre("Ann = B"));
  EXPECT_THAT(get("password"), ElementsAre("p=q|r"));
  EXPECT_THAT(get("verwijderPostsNaXDagen"), ElementsAre("6"));
  EXPECT_THAT(get("trayIcon"), ElementsAre("0"));
  EXPECT_THAT(get("watcher"), ElementsAre("big show", "b"));
  EXPECT_THAT(get("groupFilterList"), ElementsAre("7", "12"));
  EXPECT_THAT(get("statusFilter"), ElementsAre("0", "-1"));
}

TEST_F(SettingsTest, UnsetReturnsToTheDefault) {
  const std::vector<std::string> before = get("ratingScale");
  for (const ZoxSetting *setting : all_settings()) {
    if (setting->readOnly != 0)
      continue;
    const auto preset = values_of(*setting);
    assign(*setting, {});
    EXPECT_EQ(values_of(*setting), preset) << setting->key;
  }
  set("ratingScale", {"10"});
  set("ratingScale", {});
  EXPECT_EQ(get("ratingScale"), before);
  set("username", {"ann"});
  set("username", {});
  EXPECT_THAT(get("username"), IsEmpty());
}

TEST_F(SettingsTest, NumbersAreCheckedAgainstTheirRange) {
  for (const char *value : {"8", "-1", "", "x", "1x", " 1", "99999999999999999999"})
    EXPECT_THAT(error("verwijderPostsNaXDagen", {value}), HasSubstr("0 to 6")) << value;
  EXPECT_THAT(error("trayIcon", {"2"}), HasSubstr("neither yes (1) nor no (0)"));
  EXPECT_THAT(error("proxyPort", {"65536"}), HasSubstr("65535"));
  EXPECT_THAT(error("ratingScale", {"0"}), HasSubstr("ratingScale"));
  EXPECT_THAT(error("watchlist", {"0"}), HasSubstr("1 to 2147483647"));
}

TEST_F(SettingsTest, ARefusedValueChangesNothing) {
  set("watcher", {"keep"});
  error("watcher", {"a", "b\nusername=x"});
  EXPECT_THAT(get("watcher"), ElementsAre("keep"));
}

TEST_F(SettingsTest, RefusesWhatTheFileCannotHold) {
  EXPECT_THAT(error("username", {"a\npassword=b"}), HasSubstr("line break"));
  EXPECT_THAT(error("username", {" a"}), HasSubstr("white space"));
  EXPECT_THAT(error("username", {std::string(1015, 'a')}), HasSubstr("too long"));
  EXPECT_THAT(error("watcher", {""}), HasSubstr("empty"));
}

TEST_F(SettingsTest, AValueOfMaximumLengthSurvives) {
  const std::string value(1014, 'a');
  set("username", {value});
  zox_config_save();
  zox_config_load();
  EXPECT_THAT(get("username"), ElementsAre(value));
}

TEST_F(SettingsTest, WhatTheServerGivesIsNotSet) {
  EXPECT_THAT(error("ledenCount", {"5"}), HasSubstr("server"));
  EXPECT_THAT(error("usersOnline", {"5"}), HasSubstr("server"));
}

TEST_F(SettingsTest, OneValueForWhatIsNoList) {
  EXPECT_THAT(error("username", {"a", "b"}), HasSubstr("one value"));
}

TEST_F(SettingsTest, AFlagIsYesOrNo) {
  for (const char *no : {"no", "FALSE", "off", "0"}) {
    set("trayIcon", {no});
    EXPECT_THAT(get("trayIcon"), ElementsAre("0")) << no;
    set("trayIcon", {});
  }
  for (const char *yes : {"yes", "True", "on", "1"}) {
    set("recursiveUpdate", {yes});
    EXPECT_THAT(get("recursiveUpdate"), ElementsAre("1")) << yes;
    set("recursiveUpdate", {});
  }
  for (const char *word : {"", "y", "yes ", "01", "-1"})
    EXPECT_THAT(error("trayIcon", {word}), HasSubstr("neither yes")) << word;
}

TEST_F(SettingsTest, AnAgeIsGivenInDaysOrByItsNumber) {
  for (const auto &[words, stored] : std::vector<std::pair<std::string, std::string>>{
           {"7", "0"}, {"28", "3"}, {"28 days", "3"}, {"49days", "6"}, {"0", "0"}, {"6", "6"}}) {
    set("verwijderPostsNaXDagen", {words});
    EXPECT_THAT(get("verwijderPostsNaXDagen"), ElementsAre(stored)) << words;
  }
  for (const char *words : {"30", "3 days", "8", "28 weeks", "days", "28 days x", "-7", ""})
    EXPECT_THAT(error("verwijderPostsNaXDagen", {words}),
                HasSubstr("is not one of 7, 14, 21, 28, 35, 42 or 49 days, nor the number of one"))
        << words;
}

TEST_F(SettingsTest, ATimeIsADateOrSeconds) {
  set("lastCheck", {"2026-01-31 18:30"});
  EXPECT_EQ(meaning_of(setting_called("lastCheck"), get("lastCheck").front()), "2026-01-31 18:30");
  set("lastCheck", {"never"});
  EXPECT_THAT(get("lastCheck"), ElementsAre("0"));
  set("lastCheck", {"1700000000"});
  EXPECT_THAT(get("lastCheck"), ElementsAre("1700000000"));
  EXPECT_THAT(error("lastCheck", {"soon"}), HasSubstr("neither a time"));
  EXPECT_THAT(error("lastCheck", {"2100-01-01"}), HasSubstr("0 to 2147483647"));
}

TEST_F(SettingsTest, AStoredValueHasAMeaning) {
  const auto meaning = [](const char *key, const char *value) {
    return meaning_of(setting_called(key), value);
  };
  EXPECT_EQ(meaning("trayIcon", "0"), "no");
  EXPECT_EQ(meaning("trayIcon", "101"), "yes");
  EXPECT_EQ(meaning("verwijderPostsNaXDagen", "1"), "14 days");
  EXPECT_EQ(meaning("verwijderPostsNaXDagen", "7"), "not one of its choices");
  EXPECT_EQ(meaning("verwijderPostsNaXDagen", "-1"), "not one of its choices");
  EXPECT_EQ(meaning("lastCheck", "0"), "never");
  EXPECT_EQ(meaning("statusFilter", "0"), "Ready");
  EXPECT_EQ(meaning("groupFilterList", "12"), "comp.os");
  EXPECT_EQ(meaning("groupFilterList", "99"), "");
  EXPECT_EQ(meaning("ratingScale", "100"), "");
  EXPECT_EQ(meaning("username", "1"), "");
}

TEST_F(SettingsTest, EverySettingSaysWhatItCanBe) {
  const auto values = [](const char *key) { return possible_values(setting_called(key)); };
  EXPECT_EQ(values("trayIcon"), "yes or no");
  EXPECT_EQ(values("verwijderPostsNaXDagen"), "7, 14, 21, 28, 35, 42 or 49 days");
  EXPECT_EQ(values("proxyPort"), "1 to 65535");
  EXPECT_EQ(values("watchlist"), "a list of numbers, 1 to 2147483647");
  EXPECT_EQ(values("statusFilter"), "a list of states, by name or number");
  EXPECT_EQ(values("ledenCount"), "given by the server");
  EXPECT_EQ(default_in_words(setting_called("verwijderPostsNaXDagen")), "14 days");
  EXPECT_EQ(default_in_words(setting_called("username")), "not set");
  EXPECT_EQ(default_in_words(setting_called("watcher")), "empty");
}

TEST_F(SettingsTest, UnknownKeysAreRefused) {
  EXPECT_THAT(usage_error_of([] { setting_called("firstTime"); }), HasSubstr("firstTime"));
  EXPECT_THAT(usage_error_of([] { setting_called("Username"); }), HasSubstr("Username"));
}

}  // namespace
}  // namespace velkor::ctl
