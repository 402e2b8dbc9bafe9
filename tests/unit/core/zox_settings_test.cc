/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_settings.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>

#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"
#include "tests/support/core_fixture.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Texts = std::vector<std::string>;
using Answer = std::pair<ZoxSettingResult, std::string>;

bool is_list(const ZoxSetting &setting) {
  return setting.type >= ZOX_SETTING_TEXT_LIST;
}

std::vector<const ZoxSetting *> all() {
  std::vector<const ZoxSetting *> settings;
  for (guint32 index = 0; index < zox_settings_count(); ++index)
    settings.push_back(zox_settings_at(index));
  return settings;
}

class ZoxSettingsTest : public test::CoreTest {
protected:
  /** The value, or "(none)". */
  static std::string get(const std::string &key) {
    const OwnedString value(zox_settings_get(key.c_str()));
    return value ? std::string(view_of(value.get())) : "(none)";
  }

  static Texts get_list(const std::string &key) {
    ZoxSplittedList *list = zox_settings_get_list(key.c_str());
    Texts texts;
    for (const ZoxString *item : Items<ZoxString>(list))
      texts.emplace_back(view_of(item));
    zox_splitted_list_free(&list);
    return texts;
  }

  static Answer set(const std::string &key, const std::string &text) {
    char *message = nullptr;
    const ZoxSettingResult result = zox_settings_set(key.c_str(), text.c_str(), &message);
    const OwnedText owned(message);
    return {result, owned ? owned.get() : ""};
  }

  static Answer set_list(const std::string &key, const Texts &texts) {
    ListBuilder<ZoxString, free_string> items;
    for (const std::string &text : texts)
      items.append(g_string_new_len(text.data(), static_cast<gssize>(text.size())));
    char *message = nullptr;
    const ZoxSettingResult result = zox_settings_set_list(key.c_str(), items.list(), &message);
    const OwnedText owned(message);
    return {result, owned ? owned.get() : ""};
  }

  test::LogCapture log;
};

const Answer done{ZOX_SETTING_DONE, ""};

TEST_F(ZoxSettingsTest, HasEverySettingOnceAndFindsIt) {
  std::set<std::string> keys;
  for (const ZoxSetting *setting : all()) {
    EXPECT_TRUE(keys.insert(setting->key).second) << setting->key;
    EXPECT_EQ(zox_settings_find(setting->key), setting);
    EXPECT_THAT(setting->description, testing::EndsWith(".")) << setting->key;
  }
  EXPECT_EQ(keys.size(), 34U);
  EXPECT_EQ(zox_settings_at(zox_settings_count()), nullptr);
  EXPECT_EQ(zox_settings_find("firstTime"), nullptr);
  EXPECT_EQ(zox_settings_find("Username"), nullptr);
}

TEST_F(ZoxSettingsTest, StatesTheDefaultThatTheRecordHas) {
  for (const ZoxSetting *setting : all()) {
    const char *initial = setting->defaultText;
    EXPECT_EQ(get(setting->key), initial == nullptr ? "(none)" : initial) << setting->key;
    EXPECT_THAT(get_list(setting->key), IsEmpty()) << setting->key;
  }
}

TEST_F(ZoxSettingsTest, HasARangeForEveryNumber) {
  for (const ZoxSetting *setting : all()) {
    const std::set<ZoxSettingType> texts{ZOX_SETTING_TEXT, ZOX_SETTING_SECRET,
                                         ZOX_SETTING_TEXT_LIST};
    EXPECT_TRUE(setting->lowest < setting->highest || texts.contains(setting->type) ||
                setting->readOnly != 0)
        << setting->key;
  }
}

TEST_F(ZoxSettingsTest, SaysWhatAChoiceStandsFor) {
  const ZoxSetting *setting = zox_settings_find("verwijderPostsNaXDagen");
  EXPECT_EQ(setting->type, ZOX_SETTING_CHOICE);
  EXPECT_EQ(setting->unit, ZOX_SETTING_DAYS);
  EXPECT_EQ(setting->highest, 6);
  for (gint64 index = 0; index <= setting->highest; ++index)
    EXPECT_EQ(setting->choices[index], 7 * (index + 1));
}

TEST_F(ZoxSettingsTest, KnowsWhoUsesASetting) {
  EXPECT_EQ(zox_settings_find("recursiveUpdate")->user, ZOX_SETTING_LIBRARY);
  EXPECT_EQ(zox_settings_find("trayIcon")->user, ZOX_SETTING_FRONT_END);
  EXPECT_EQ(zox_settings_find("password")->type, ZOX_SETTING_SECRET);
  EXPECT_EQ(zox_settings_find("lastCheck")->unit, ZOX_SETTING_SECONDS);
}

TEST_F(ZoxSettingsTest, SetsTheFieldsOfTheRecord) {
  EXPECT_EQ(set("username", "Ann = B"), done);
  EXPECT_EQ(set("trayIcon", "0"), done);
  EXPECT_EQ(set("lastCheck", "2147483647"), done);
  EXPECT_EQ(set("verwijderPostsNaXDagen", "6"), done);
  EXPECT_EQ(set_list("watcher", {"big show", "b"}), done);
  EXPECT_EQ(set_list("statusFilter", {"0", "-5"}), done);
  EXPECT_EQ(set_list("groupFilterList", {"7", "4294967295"}), done);
  const ZoxConfig &config = *core->config;
  EXPECT_STREQ(config.username->str, "Ann = B");
  EXPECT_EQ(config.trayIcon, 0);
  EXPECT_EQ(config.lastCheck, 2147483647);
  EXPECT_EQ(config.verwijderPostsNaXDagen, 6);
  EXPECT_EQ(GPOINTER_TO_INT(config.statusFilter->next->data), -5);
  EXPECT_THAT(get_list("watcher"), ElementsAre("big show", "b"));
  EXPECT_THAT(get_list("groupFilterList"), ElementsAre("7", "4294967295"));
  EXPECT_THAT(get_list("statusFilter"), ElementsAre("0", "-5"));
}

TEST_F(ZoxSettingsTest, WhatWasSetComesBackFromTheFile) {
  const std::string full(1023 - std::string("username=").size(), 'x');
  EXPECT_EQ(set("username", full), done);
  EXPECT_EQ(set("password", "p=q|r\ts"), done);
  EXPECT_EQ(set_list("badword", {"een woord", "|"}), done);
  EXPECT_EQ(set_list("groupFilterList", Texts(201, "1000")), done);
  zox_config_save();
  zox_config_load();
  EXPECT_EQ(get("username"), full);
  EXPECT_EQ(get("password"), "p=q|r\ts");
  EXPECT_THAT(get_list("badword"), ElementsAre("een woord", "|"));
  EXPECT_EQ(get_list("groupFilterList").size(), 201U);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxSettingsTest, PutsNumbersIntoTheirUsualForm) {
  EXPECT_EQ(set("proxyPort", "0080"), done);
  EXPECT_EQ(get("proxyPort"), "80");
  EXPECT_EQ(set_list("watchlist", {"007"}), done);
  EXPECT_THAT(get_list("watchlist"), ElementsAre("7"));
}

TEST_F(ZoxSettingsTest, AnEmptyTextIsNoAccount) {
  set("username", "ann");
  EXPECT_EQ(set("username", ""), done);
  EXPECT_EQ(core->config->username, nullptr);
  EXPECT_EQ(set("proxyPort", ""), done);
  EXPECT_EQ(core->config->proxyPort, nullptr);
  EXPECT_EQ(set("htmlRenderer", ""), done);
  EXPECT_EQ(get("htmlRenderer"), "");
}

TEST_F(ZoxSettingsTest, RefusesNumbersOutOfRange) {
  for (const char *text : {"7", "-1", "", "x", "1x", " 1", "+1", "99999999999999999999"}) {
    const auto [result, message] = set("verwijderPostsNaXDagen", text);
    EXPECT_EQ(result, ZOX_SETTING_OUT_OF_RANGE) << text;
    EXPECT_EQ(message,
              std::string("verwijderPostsNaXDagen: \"") + text + "\" is not a number from 0 to 6");
  }
  EXPECT_EQ(set("trayIcon", "2").first, ZOX_SETTING_OUT_OF_RANGE);
  EXPECT_EQ(set("proxyPort", "65536").first, ZOX_SETTING_OUT_OF_RANGE);
  EXPECT_EQ(set("ratingScale", "0").first, ZOX_SETTING_OUT_OF_RANGE);
  EXPECT_EQ(set("lastCheck", "2147483648").first, ZOX_SETTING_OUT_OF_RANGE);
  EXPECT_EQ(set_list("watchlist", {"1", "0"}).first, ZOX_SETTING_OUT_OF_RANGE);
  EXPECT_EQ(set_list("statusFilter", {"4"}).first, ZOX_SETTING_OUT_OF_RANGE);
  EXPECT_EQ(set_list("groupFilterList", {"1|2"}).first, ZOX_SETTING_OUT_OF_RANGE);
}

TEST_F(ZoxSettingsTest, RefusesWhatTheFileCannotHold) {
  const Texts values{"a\npassword=b", "a\r", "a\x1b", " a", "a ", std::string(1015, 'a')};
  for (const std::string &value : values) {
    EXPECT_EQ(set("username", value).first, ZOX_SETTING_NOT_STORABLE) << value;
    EXPECT_EQ(set_list("watcher", {"x", value + value}).first, ZOX_SETTING_NOT_STORABLE) << value;
  }
  EXPECT_THAT(set("username", values[0]).second, HasSubstr("line break"));
  EXPECT_THAT(set("username", values[3]).second, HasSubstr("white space"));
  EXPECT_THAT(set("username", values[5]).second, HasSubstr("too long"));
  EXPECT_EQ(set_list("groupFilterList", Texts(202, "1000")).first, ZOX_SETTING_NOT_STORABLE);
  EXPECT_EQ(get("username"), "(none)");
  EXPECT_THAT(get_list("groupFilterList"), IsEmpty());
}

TEST_F(ZoxSettingsTest, RefusesEmptyItemsAndZeroBytes) {
  for (const char *key : {"badword", "watcher", "watchlist", "groupFilterList", "statusFilter"})
    EXPECT_EQ(set_list(key, {""}).first, ZOX_SETTING_NOT_STORABLE) << key;
  EXPECT_EQ(set_list("badword", {std::string("a\0b", 3)}).first, ZOX_SETTING_NOT_STORABLE);
  EXPECT_THAT(get_list("badword"), IsEmpty());
}

TEST_F(ZoxSettingsTest, ARefusedListChangesNothing) {
  set_list("watcher", {"keep"});
  EXPECT_EQ(set_list("watcher", {"a", "b\nusername=x"}).first, ZOX_SETTING_NOT_STORABLE);
  EXPECT_THAT(get_list("watcher"), ElementsAre("keep"));
}

TEST_F(ZoxSettingsTest, RefusesWhatIsNotToBeSet) {
  EXPECT_EQ(set("geen", "1"), Answer(ZOX_SETTING_UNKNOWN, "unknown setting \"geen\""));
  EXPECT_EQ(set("ledenCount", "1"),
            Answer(ZOX_SETTING_READ_ONLY, "ledenCount comes from the server and cannot be set"));
  EXPECT_EQ(set("watcher", "a"), Answer(ZOX_SETTING_WRONG_TYPE, "watcher takes a list of values"));
  EXPECT_EQ(set_list("username", {"a"}),
            Answer(ZOX_SETTING_WRONG_TYPE, "username takes one value"));
  EXPECT_EQ(zox_settings_set("geen", "1", nullptr), ZOX_SETTING_UNKNOWN);
  EXPECT_EQ(zox_settings_reset("geen"), ZOX_SETTING_UNKNOWN);
  EXPECT_EQ(zox_settings_reset("usersOnline"), ZOX_SETTING_READ_ONLY);
  EXPECT_EQ(get("geen"), "(none)");
  EXPECT_THAT(get_list("geen"), IsEmpty());
}

TEST_F(ZoxSettingsTest, ResetsEverySettingThatCanBeSet) {
  for (const ZoxSetting *setting : all()) {
    if (setting->readOnly != 0)
      continue;
    EXPECT_EQ(is_list(*setting) ? set_list(setting->key, {"3"})
                                : set(setting->key, setting->highest == 1 ? "0" : "3"),
              done)
        << setting->key;
    EXPECT_EQ(zox_settings_reset(setting->key), ZOX_SETTING_DONE);
    EXPECT_EQ(get(setting->key), setting->defaultText == nullptr ? "(none)" : setting->defaultText);
    EXPECT_THAT(get_list(setting->key), IsEmpty()) << setting->key;
  }
}

TEST_F(ZoxSettingsTest, GivesValuesOutsideTheRangeAsTheyAre) {
  core->config->trayIcon = -7;
  core->config->ledenCount = G_MAXUINT32;
  core->config->lastCheck = G_MAXINT64;
  EXPECT_EQ(get("trayIcon"), "-7");
  EXPECT_EQ(get("ledenCount"), "4294967295");
  EXPECT_EQ(get("lastCheck"), "9223372036854775807");
}

using ZoxSettingsDeathTest = ZoxSettingsTest;

TEST_F(ZoxSettingsDeathTest, NeedsSettings) {
  zox_config_free();
  EXPECT_DEATH(zox_settings_get("username"), "assertion failed: \\(core->config\\)");
  EXPECT_DEATH(zox_settings_get_list("watcher"), "assertion failed: \\(core->config\\)");
  EXPECT_DEATH(zox_settings_set("username", "a", nullptr), "assertion failed: \\(core->config\\)");
  EXPECT_DEATH(zox_settings_set_list("watcher", nullptr, nullptr),
               "assertion failed: \\(core->config\\)");
  EXPECT_DEATH(zox_settings_reset("username"), "assertion failed: \\(core->config\\)");
}

TEST_F(ZoxSettingsTest, AreReadWholeWhileTheyChange) {
  constexpr int changes = 1000;
  const std::string one(100, 'a');
  const std::string other(200, 'b');
  set("username", one);
  set_list("watcher", {one, one});
  std::atomic<bool> changed = false;
  std::set<std::string> texts;
  std::set<Texts> lists;
  std::thread reader([&] {
    while (!changed) {
      texts.insert(get("username"));
      lists.insert(get_list("watcher"));
    }
  });
  for (int change = 0; change < changes; ++change) {
    set("username", change % 2 == 0 ? other : one);
    set_list("watcher", {one, change % 2 == 0 ? other : one});
  }
  changed = true;
  reader.join();
  EXPECT_THAT(texts, testing::IsSubsetOf({one, other}));
  EXPECT_THAT(lists, testing::IsSubsetOf({Texts{one, one}, Texts{one, other}}));
}

}  // namespace
}  // namespace velkor
