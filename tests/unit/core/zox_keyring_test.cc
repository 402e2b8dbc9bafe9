/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_keyring.h>

#include <gmock/gmock.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_string.h>

#include "core/keyring.h"
#include "support/owned.h"
#include "support/text.h"
#include "tests/support/core_fixture.h"
#include "tests/support/desktop_keyring.h"
#include "tests/support/log_capture.h"

namespace velkor {
namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/** Where no session bus is. */
class WithoutKeyring : public test::CoreTest {
protected:
  WithoutKeyring() {
    keyring::forget();
    test::write_file(cache_file("velkor.conf"), "username=ann\npassword=geheim\n");
    zox_config_load();
  }
  ~WithoutKeyring() override {
    keyring::forget();
    // GLib releases what belonged to a connection in the main loop.
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
  }

  [[nodiscard]] std::string file() const { return test::read_file(cache_file("velkor.conf")); }
  static std::string password() { return zox_string_value(core->config->password); }
  static void set_password(const char *password) {
    replace_string(core->config->password, zox_string_new(password));
  }
  /** The message of a failure; empty after success. */
  static std::string keep(ZoxPasswordPlace place) {
    char *text = nullptr;
    const gint32 kept = zox_keyring_keep_password(place, &text);
    const OwnedText message(text);
    EXPECT_EQ(kept == 1, message == nullptr);
    return message ? message.get() : "";
  }

  const test::EnvironmentVariable no_bus{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"};
  const test::LogCapture log;
};

class ZoxKeyring : public WithoutKeyring {
protected:
  test::DesktopKeyring desktop;
};

TEST_F(ZoxKeyring, KeepsThePasswordInsteadOfTheFile) {
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
  EXPECT_EQ(keep(ZOX_PASSWORD_IN_KEYRING), "");
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_KEYRING);
  EXPECT_THAT(file(), Not(HasSubstr("geheim")));
  EXPECT_THAT(file(), ContainsRegex("password=keyring:[-0-9a-f]{36}\n"));
  EXPECT_EQ(password(), "geheim");
  zox_config_load();
  EXPECT_EQ(password(), "geheim");
  EXPECT_EQ(core->config->firstTime, 0U);
  EXPECT_EQ(zox_keyring_fault(), nullptr);
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxKeyring, SavingKeepsTheToken) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  const std::string before = file();
  zox_config_load();
  zox_config_save();
  EXPECT_EQ(file(), before);
}

TEST_F(ZoxKeyring, SavingGivesItAChangedPassword) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  const std::string before = file();
  set_password("nieuw");
  zox_config_save();
  EXPECT_EQ(file(), before);
  zox_config_load();
  EXPECT_EQ(password(), "nieuw");
}

TEST_F(ZoxKeyring, GivesThePasswordBackToTheFile) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  const std::string with_token = file();
  EXPECT_EQ(keep(ZOX_PASSWORD_IN_FILE), "");
  EXPECT_THAT(file(), HasSubstr("password=geheim\n"));
  // The keyring has forgotten it.
  test::write_file(cache_file("velkor.conf"), with_token);
  zox_config_load();
  EXPECT_STREQ(zox_keyring_fault(), "the keyring has no password for this account");
}

TEST_F(ZoxKeyring, APasswordThatIsUnsetLeavesNothing) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  const std::string with_token = file();
  set_password(nullptr);
  zox_config_save();
  EXPECT_THAT(file(), Not(HasSubstr("keyring:")));
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
  test::write_file(cache_file("velkor.conf"), with_token);
  zox_config_load();
  EXPECT_EQ(core->config->password, nullptr);
}

TEST_F(ZoxKeyring, SettingsFromElsewhereLeaveThePasswordThere) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  const std::string with_token = file();
  zox_config_free();
  zox_config_init();
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
  zox_config_save();
  test::write_file(cache_file("velkor.conf"), with_token);
  zox_config_load();
  EXPECT_EQ(password(), "geheim");
}

TEST_F(ZoxKeyring, ATokenThatCannotBeFollowedStaysInTheFile) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  const std::string before = file();
  desktop.stop();
  zox_config_load();
  EXPECT_EQ(core->config->password, nullptr);
  EXPECT_NE(zox_keyring_fault(), nullptr);
  EXPECT_THAT(log.warnings(), ElementsAre(HasSubstr("niet uit de sleutelbos te halen")));
  EXPECT_NE(keep(ZOX_PASSWORD_IN_FILE), "");
  zox_config_save();
  EXPECT_EQ(file(), before);
}

TEST_F(ZoxKeyring, TheFileTakesAPasswordThatTheKeyringDoesNot) {
  keep(ZOX_PASSWORD_IN_KEYRING);
  desktop.stop();
  set_password("nieuw");
  zox_config_save();
  EXPECT_THAT(file(), HasSubstr("password=nieuw\n"));
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
  EXPECT_THAT(log.warnings(), ElementsAre(HasSubstr("neemt het wachtwoord niet aan")));
}

TEST_F(ZoxKeyring, KeepsNothingWhenTheSettingsCannotBeSaved) {
  std::filesystem::remove(cache_file("velkor.conf"));
  std::filesystem::create_directory(cache_file("velkor.conf"));
  EXPECT_THAT(keep(ZOX_PASSWORD_IN_KEYRING), HasSubstr("velkor.conf"));
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
  EXPECT_EQ(password(), "geheim");
}

TEST_F(WithoutKeyring, ThePasswordStaysInTheFile) {
  const std::string before = file();
  EXPECT_NE(keep(ZOX_PASSWORD_IN_KEYRING), "");
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
  EXPECT_EQ(file(), before);
}

TEST_F(WithoutKeyring, NeedsAPassword) {
  set_password(nullptr);
  EXPECT_EQ(keep(ZOX_PASSWORD_IN_KEYRING), "there is no password");
}

TEST_F(WithoutKeyring, APasswordThatOnlyLooksLikeATokenIsOne) {
  test::write_file(cache_file("velkor.conf"), "password=keyring:geheim\n");
  zox_config_load();
  EXPECT_EQ(password(), "keyring:geheim");
  EXPECT_EQ(zox_keyring_password_place(), ZOX_PASSWORD_IN_FILE);
}

}  // namespace
}  // namespace velkor
