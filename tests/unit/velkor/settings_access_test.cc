/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/settings_access.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>
#include <velkor/zox_app_core.h>

#include "model/setting_labels.h"
#include "tests/support/sandbox.h"

namespace velkor::app {
namespace {

using Kind = SettingField::Kind;
using Why = SettingRefusal::Why;

class SettingsAccess : public ::testing::Test {
protected:
  SettingsAccess() {
    const std::string cache = sandbox_.cache();
    ZoxCoreOptions options{};
    options.cacheDir = cache.c_str();
    options.parts = ZOX_CORE_SETTINGS;
    opened_ = zox_app_core_open(&options, nullptr) == ZOX_CORE_OPENED;
  }
  ~SettingsAccess() override { zox_app_core_close(); }
  SettingsAccess(const SettingsAccess &) = delete;
  SettingsAccess &operator=(const SettingsAccess &) = delete;

  void SetUp() override { ASSERT_TRUE(opened_); }

  [[nodiscard]] std::string saved() const {
    return test::read_file(sandbox_.cache() / "velkor.conf");
  }
  [[nodiscard]] std::filesystem::path servers() const { return sandbox_.home() / "servers.ini"; }

  test::Sandbox sandbox_;
  bool opened_ = false;
};

TEST_F(SettingsAccess, DescribesEverySetting) {
  for (const SettingField &field : read_settings(servers()))
    if (field.kind != Kind::server) {
      EXPECT_FALSE(field.description.empty()) << field.key;
    }
}

TEST_F(SettingsAccess, HasALabelForEverySettingButTheWatchlist) {
  for (const SettingField &field : read_settings(servers()))
    EXPECT_EQ(std::ranges::count(setting_labels(), field.key, &SettingLabel::key),
              field.key == "watchlist" ? 0 : 1)
        << field.key;
}

TEST_F(SettingsAccess, TellsRangesChoicesAndDefaults) {
  const Settings settings = read_settings(servers());
  const SettingField &age = *find_setting(settings, "verwijderPostsNaXDagen");
  EXPECT_EQ(age.kind, Kind::choice);
  EXPECT_EQ(age.days.front(), 7);
  EXPECT_EQ(age.days.back(), 49);
  EXPECT_EQ(age.initial, "1");
  EXPECT_EQ(age.value(), "1");
  const SettingField &port = *find_setting(settings, "proxyPort");
  EXPECT_EQ(port.kind, Kind::number);
  EXPECT_EQ(port.highest, 65535);
  EXPECT_TRUE(port.values.empty());
  EXPECT_TRUE(find_setting(settings, "usersOnline")->read_only);
}

TEST_F(SettingsAccess, SavesWhatIsTaken) {
  EXPECT_TRUE(
      apply_settings({{"username", {"anna"}}, {"badword", {"haven", "schip"}}}, servers()).empty());
  EXPECT_NE(saved().find("username=anna\n"), std::string::npos);
  EXPECT_NE(saved().find("badword=haven\nbadword=schip\n"), std::string::npos);
  EXPECT_TRUE(apply_settings({{"username", {}}, {"badword", {}}}, servers()).empty());
  EXPECT_EQ(saved().find("anna"), std::string::npos);
  EXPECT_EQ(saved().find("haven"), std::string::npos);
}

TEST_F(SettingsAccess, RefusesOneValueAndTakesTheOthers) {
  const SettingRefusals refusals =
      apply_settings({{"proxyPort", {"70000"}}, {"proxyHost", {"proxy.example"}}}, servers());
  ASSERT_EQ(refusals.size(), 1U);
  EXPECT_EQ(refusals[0].key, "proxyPort");
  EXPECT_EQ(refusals[0].why, Why::out_of_range);
  EXPECT_NE(saved().find("proxyHost=proxy.example\n"), std::string::npos);
  EXPECT_EQ(saved().find("70000"), std::string::npos);
}

TEST_F(SettingsAccess, KeepsServersInTheirOwnFile) {
  EXPECT_TRUE(
      apply_settings({{std::string(main_server_key), {"zox.example:81"}}}, servers()).empty());
  const Settings settings = read_settings(servers());
  EXPECT_EQ(find_setting(settings, main_server_key)->value(), "zox.example:81");
  EXPECT_EQ(saved().find("zox.example"), std::string::npos);
  const SettingRefusals refusals =
      apply_settings({{std::string(dump_server_key), {"no server"}}}, servers());
  ASSERT_EQ(refusals.size(), 1U);
  EXPECT_EQ(refusals[0].why, Why::no_server);
}

}  // namespace
}  // namespace velkor::app
