/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/setting.h"

#include <gtest/gtest.h>

#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

using Texts = std::vector<std::string>;

Settings some_settings() {
  return {{.key = "username", .values = {"anna"}},
          {.key = "watcher", .kind = SettingField::Kind::list, .values = {"haven", "schip"}},
          {.key = "proxyPort", .kind = SettingField::Kind::number}};
}

TEST(Setting, IsFoundByItsKey) {
  const Settings settings = some_settings();
  ASSERT_NE(find_setting(settings, "watcher"), nullptr);
  EXPECT_EQ(find_setting(settings, "watcher")->values, (Texts{"haven", "schip"}));
  EXPECT_EQ(find_setting(settings, "nothing"), nullptr);
  EXPECT_EQ(find_setting(settings, "username")->value(), "anna");
  EXPECT_EQ(find_setting(settings, "proxyPort")->value(), "");
}

TEST(SettingChanges, AreWhatDiffers) {
  const SettingChanges wanted{
      {"username", {"anna"}}, {"watcher", {"haven"}}, {"proxyPort", {"8080"}}};
  EXPECT_EQ(changed_values(some_settings(), wanted),
            (SettingChanges{{"watcher", {"haven"}}, {"proxyPort", {"8080"}}}));
  EXPECT_EQ(changed_values(some_settings(), {{"proxyPort", {}}}), SettingChanges{});
}

TEST(SettingChanges, AreUndoneByTheValuesBefore) {
  EXPECT_EQ(values_before(some_settings(), {{"watcher", {}}, {"proxyPort", {"1"}}}),
            (SettingChanges{{"watcher", {"haven", "schip"}}, {"proxyPort", {}}}));
}

TEST(SettingItems, AreLinesWithoutBlanksAndRepetitions) {
  EXPECT_EQ(items_of_lines("  de haven \n\n\tschip\nde haven\n"), (Texts{"de haven", "schip"}));
  EXPECT_EQ(items_of_lines(""), Texts{});
  EXPECT_EQ(items_of_lines("\n \n"), Texts{});
  EXPECT_EQ(lines_of_items({"de haven", "schip"}), "de haven\nschip");
  EXPECT_EQ(lines_of_items({}), "");
}

TEST(SettingTime, IsThatOfTheUsersZone) {
  const test::Sandbox sandbox;  // Europe/Amsterdam
  EXPECT_EQ(text_of_time("1763730309"), "2025-11-21 14:05:09");
  EXPECT_EQ(time_of_text("2025-11-21 14:05:09"), "1763730309");
  EXPECT_EQ(time_of_text(" 2025-11-21 14:05 "), "1763730300");
  EXPECT_EQ(time_of_text("2025-11-21"), "1763679600");
}

TEST(SettingTime, IsNeverWithoutAText) {
  EXPECT_EQ(text_of_time("0"), "");
  EXPECT_EQ(text_of_time(""), "");
  EXPECT_EQ(text_of_time("soon"), "");
  EXPECT_EQ(time_of_text(" "), "0");
}

TEST(SettingTime, ThatIsNoneIsLeftToBeRefused) {
  EXPECT_EQ(time_of_text("soon"), "soon");
  EXPECT_EQ(time_of_text("2025-13-01"), "2025-13-01");
}

}  // namespace
}  // namespace velkor::app
