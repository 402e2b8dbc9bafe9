/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/settings.h"

#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_string.h>

#include "parts_fixture.h"

namespace velkor::ctl {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class SettingsTest : public PartsTest {
protected:
  static void set(const std::string &key, const std::vector<std::string> &values) {
    assign(setting_called(key), *core->config, values);
  }
  static std::vector<std::string> get(const std::string &key) {
    return values_of(setting_called(key), *core->config);
  }
  static std::string error(const std::string &key, const std::vector<std::string> &values) {
    return usage_error_of([&] { set(key, values); });
  }
};

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
  for (const Setting &setting : all_settings())
    known.insert(setting.key);
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
  for (const Setting &setting : all_settings()) {
    if (setting.kind == Setting::Kind::given_text || setting.kind == Setting::Kind::given_number)
      continue;
    const auto preset = values_of(setting, *core->config);
    assign(setting, *core->config, {});
    EXPECT_EQ(values_of(setting, *core->config), preset) << setting.key;
  }
  set("ratingScale", {"10"});
  set("ratingScale", {});
  EXPECT_EQ(get("ratingScale"), before);
  set("username", {"ann"});
  set("username", {});
  EXPECT_THAT(get("username"), IsEmpty());
}

TEST_F(SettingsTest, NumbersAreCheckedAgainstTheirRange) {
  for (const char *value : {"7", "-1", "", "x", "1x", " 1", "99999999999999999999"})
    EXPECT_THAT(error("verwijderPostsNaXDagen", {value}), HasSubstr("0 to 6")) << value;
  EXPECT_THAT(error("trayIcon", {"2"}), HasSubstr("0 to 1"));
  EXPECT_THAT(error("proxyPort", {"65536"}), HasSubstr("65535"));
  EXPECT_THAT(error("ratingScale", {"0"}), HasSubstr("ratingScale"));
  EXPECT_THAT(error("watchlist", {"0"}), HasSubstr("ID"));
}

TEST_F(SettingsTest, ARefusedValueChangesNothing) {
  set("watcher", {"keep"});
  error("watcher", {"a", "b\nusername=x"});
  EXPECT_THAT(get("watcher"), ElementsAre("keep"));
}

TEST_F(SettingsTest, RefusesWhatTheFileCannotHold) {
  EXPECT_THAT(error("username", {"a\npassword=b"}), HasSubstr("line break"));
  EXPECT_THAT(error("username", {" a"}), HasSubstr("white space"));
  EXPECT_THAT(error("username", {std::string(1014, 'a')}), HasSubstr("too long"));
  EXPECT_THAT(error("watcher", {""}), HasSubstr("empty"));
}

TEST_F(SettingsTest, AValueOfMaximumLengthSurvives) {
  const std::string value(1013, 'a');
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

TEST_F(SettingsTest, UnknownKeysAreRefused) {
  EXPECT_THAT(usage_error_of([] { setting_called("firstTime"); }), HasSubstr("firstTime"));
  EXPECT_THAT(usage_error_of([] { setting_called("Username"); }), HasSubstr("Username"));
}

}  // namespace
}  // namespace velkor::ctl
