/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/hosts.h"

#include <optional>

#include <gtest/gtest.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>

#include "support/owned.h"
#include "tests/support/sandbox.h"

namespace velkor {
namespace {

/** Neither set at run time nor in the environment. */
class Hosts : public testing::Test {
protected:
  ~Hosts() override {
    zox_http_set_hosts(nullptr, nullptr);
    zox_http_set_ca_file(nullptr);
  }

private:
  test::EnvironmentVariable main_{"VELKOR_MAIN_HOST", std::nullopt};
  test::EnvironmentVariable static_{"VELKOR_STATIC_HOST", std::nullopt};
  test::EnvironmentVariable authorities_{"VELKOR_CA_FILE", std::nullopt};
};

TEST_F(Hosts, AreTheBuildSettingsByDefault) {
  EXPECT_EQ(main_host(), VELKOR_TEST_MAIN_HOST);
  EXPECT_EQ(static_address(), "http://" VELKOR_TEST_STATIC_HOST);
}

TEST_F(Hosts, ComeFromTheEnvironmentWhenItNamesThem) {
  const test::EnvironmentVariable main("VELKOR_MAIN_HOST", "main.test:81");
  const test::EnvironmentVariable empty("VELKOR_STATIC_HOST", "");
  EXPECT_EQ(main_host(), "main.test:81");
  EXPECT_EQ(static_address(), "http://" VELKOR_TEST_STATIC_HOST);
}

TEST_F(Hosts, SetAtRunTimeWinOverTheEnvironment) {
  const test::EnvironmentVariable main("VELKOR_MAIN_HOST", "environment.test");
  zox_http_set_hosts("main.test", "static.test:8080");
  EXPECT_EQ(main_host(), "main.test");
  EXPECT_EQ(static_address(), "http://static.test:8080");
}

TEST_F(Hosts, SetToNullAreTheDefaultAgain) {
  const test::EnvironmentVariable main("VELKOR_MAIN_HOST", "environment.test");
  zox_http_set_hosts("main.test", "static.test");
  zox_http_set_hosts(nullptr, nullptr);
  EXPECT_EQ(main_host(), "environment.test");
  EXPECT_EQ(static_address(), "http://" VELKOR_TEST_STATIC_HOST);
}

TEST_F(Hosts, NameTheMainHostInTheMessageOfAnUnresolvedName) {
  zox_http_set_hosts("main.test", "static.test");
  const OwnedText message(zox_error_msg(14, nullptr));
  EXPECT_STREQ(message.get(), "Kan main.test niet resolven");
}

TEST_F(Hosts, AreAskedOverHttp) {
  zox_http_set_hosts("main.test:81", "static.test/");
  EXPECT_EQ(main_address(), "http://main.test:81");
  EXPECT_EQ(static_address(), "http://static.test/");
}

TEST_F(Hosts, AreAskedOverHttpsWhenTheySaySo) {
  const test::EnvironmentVariable main("VELKOR_MAIN_HOST", "https://main.test:444");
  zox_http_set_hosts(nullptr, "HTTPS://static.test/");
  EXPECT_EQ(main_address(), "https://main.test:444");
  EXPECT_EQ(main_host(), "main.test:444");
  EXPECT_EQ(static_address(), "https://static.test");
}

TEST_F(Hosts, NameNoSchemeInTheMessageOfAnUnresolvedName) {
  zox_http_set_hosts("https://main.test", nullptr);
  const OwnedText message(zox_error_msg(14, nullptr));
  EXPECT_STREQ(message.get(), "Kan main.test niet resolven");
}

TEST_F(Hosts, AreVouchedForByTheSystemsAuthoritiesByDefault) {
  EXPECT_EQ(ca_file(), "");
}

TEST_F(Hosts, AreVouchedForByTheAuthoritiesInAFile) {
  const test::EnvironmentVariable variable("VELKOR_CA_FILE", "/environment.pem");
  EXPECT_EQ(ca_file(), "/environment.pem");
  zox_http_set_ca_file("/chosen.pem");
  EXPECT_EQ(ca_file(), "/chosen.pem");
  zox_http_set_ca_file(nullptr);
  EXPECT_EQ(ca_file(), "/environment.pem");
}

}  // namespace
}  // namespace velkor
