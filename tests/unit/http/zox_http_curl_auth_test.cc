/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gmodule.h>
#include <gtest/gtest.h>
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>
#include <velkor/zox_string.h>

#include "tests/support/fresh_process.h"
#include "tests/support/log_capture.h"
#include "tests/support/server_fixture.h"
#include "tests/unit/http/request.h"

namespace velkor {
namespace {

bool no_modules = false;

}  // namespace
}  // namespace velkor

/** Stands before GLib's own function, so that a test can be on a platform without modules. */
extern "C" gboolean g_module_supported() {
  return velkor::no_modules ? FALSE : TRUE;
}

namespace velkor {
namespace {

using test::Outcome;
using test::Request;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;
using testing::StrEq;

constexpr const char *path = "/3.7.3/xml.php";

class ZoxHttpCurlAuth : public test::ServerCoreTest {
protected:
  ZoxHttpCurlAuth() {
    core->config->password = zox_string_new("wachtwoord");
    server.reply(path, "OK");
  }

  /** Uses the plug-in of that kind; any other name stands for none. */
  static void use_plugin(const char *name) {
    const std::string directory = std::string(VELKOR_TEST_PLUGINS "/") + name;
    zox_file_set_lib_dir(directory.c_str());
  }

  static std::string basic(const std::string &credentials) {
    const OwnedText encoded(
        g_base64_encode(reinterpret_cast<const guchar *>(credentials.data()), credentials.size()));
    return std::string("Basic ") + encoded.get();
  }

  static ZoxErrorCode add_auth() {
    char *credentials = nullptr;
    const ZoxErrorCode code = zox_http_curl_add_auth("http://host/pad?a=b", &credentials);
    const OwnedText owned(credentials);
    EXPECT_EQ(credentials, nullptr);
    return code;
  }
};

TEST_F(ZoxHttpCurlAuth, JoinsUserNameAndThePluginsSecret) {
  char *credentials = nullptr;
  EXPECT_EQ(zox_http_curl_add_auth("http://host/pad?a=b", &credentials), 0U);
  const OwnedText owned(credentials);
  EXPECT_STREQ(credentials, "gebruiker:geheim:wachtwoord@http://host/pad?a=b");
}

TEST_F(ZoxHttpCurlAuth, SendsTheSecretForTheCompleteAddress) {
  const Request query{.parameters = {{"naam", "a b"}}, .authenticate = true};
  EXPECT_EQ(query.execute().code, 0U);
  const auto requests = server.requests(path);
  ASSERT_THAT(requests, SizeIs(1));
  EXPECT_EQ(requests[0].headers.at("authorization"),
            basic("gebruiker:geheim:wachtwoord@http://" + server.host() + path + "?naam=a%20b"));
}

TEST_F(ZoxHttpCurlAuth, SendsNoCredentialsUnasked) {
  EXPECT_EQ(Request{}.execute().code, 0U);
  const auto requests = server.requests(path);
  ASSERT_THAT(requests, SizeIs(1));
  EXPECT_FALSE(requests[0].headers.contains("authorization"));
}

TEST_F(ZoxHttpCurlAuth, GoesWithoutCredentialsWhenThereIsNoPassword) {
  replace_string(core->config->password, nullptr);
  EXPECT_EQ(add_auth(), 2U);
  EXPECT_EQ(Request{.authenticate = true}.execute().code, 0U);
  const auto requests = server.requests(path);
  ASSERT_THAT(requests, SizeIs(1));
  EXPECT_FALSE(requests[0].headers.contains("authorization"));
}

TEST_F(ZoxHttpCurlAuth, NeverSendsCredentialsToTheStaticHost) {
  use_plugin("none");  // loading it would fail
  server.reply("/3.7.3/dumps/1.gz", "dump");
  EXPECT_EQ((Request{.path = "/3.7.3/dumps/1.gz", .authenticate = true}.execute().code), 0U);
  const auto requests = server.requests();
  ASSERT_THAT(requests, SizeIs(1));
  EXPECT_FALSE(requests[0].headers.contains("authorization"));
}

TEST_F(ZoxHttpCurlAuth, SendsNothingWhenTheCredentialsCannotBeMade) {
  const test::LogCapture log;
  const auto expect_failure = [&](ZoxErrorCode code) {
    EXPECT_EQ(add_auth(), code);
    const Outcome outcome = Request{.authenticate = true}.execute();
    EXPECT_EQ(outcome.code, code);
    EXPECT_EQ(outcome.reply, std::nullopt);
    EXPECT_EQ(zox_http_curl_execute(path, nullptr, 1, nullptr, 1, nullptr, 1), code);
  };
  use_plugin("none");
  expect_failure(8);
  use_plugin("without-entry");
  expect_failure(9);
  use_plugin("silent");
  expect_failure(9);
  use_plugin("good");
  no_modules = true;
  expect_failure(6);
  no_modules = false;
  EXPECT_THAT(server.requests(), IsEmpty());
  EXPECT_THAT(log.warnings(), IsEmpty());
}

TEST_F(ZoxHttpCurlAuth, MayRunOnSeveralThreads) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i)
    threads.emplace_back([] { EXPECT_EQ(Request{.authenticate = true}.execute().code, 0U); });
  for (std::thread &thread : threads)
    thread.join();
  for (const test::StubRequest &request : server.requests(path))
    EXPECT_TRUE(request.headers.contains("authorization"));
}

TEST_F(ZoxHttpCurlAuth, LooksForThePluginBeforeThePassword) {
  replace_string(core->config->password, nullptr);
  use_plugin("none");
  EXPECT_EQ(add_auth(), 8U);
  use_plugin("without-entry");
  EXPECT_EQ(add_auth(), 9U);
}

TEST_F(ZoxHttpCurlAuth, CreatesNoTemporaryFileWhenTheCredentialsCannotBeMade) {
  use_plugin("none");
  const Outcome outcome = Request{.authenticate = true, .into_file = true}.execute();
  EXPECT_EQ(outcome.code, 8U);
  EXPECT_EQ(outcome.file, std::nullopt);
}

using ZoxHttpCurlAuthDeathTest = ZoxHttpCurlAuth;

TEST_F(ZoxHttpCurlAuthDeathTest, NeedsAUserName) {
  const test::FreshProcess fresh(sandbox);
  replace_string(core->config->username, nullptr);
  EXPECT_DEATH(zox_http_curl_execute(path, nullptr, 1, nullptr, 1, nullptr, 1),
               "assertion failed: \\(core->config->username\\)");
  EXPECT_DEATH(zox_http_curl_execute("/3.7.3/dumps/1.gz", nullptr, 1, nullptr, 1, nullptr, 1),
               "assertion failed: \\(core->config->username\\)");
}

TEST_F(ZoxHttpCurlAuthDeathTest, NeedsSettings) {
  const test::FreshProcess fresh(sandbox);
  zox_config_free();
  EXPECT_DEATH(zox_http_curl_add_auth("http://host/", nullptr),
               "assertion failed: \\(core->config\\)");
}

TEST(ZoxHttpCurlAuthCoreDeathTest, NeedsACore) {
  EXPECT_DEATH(zox_http_curl_add_auth("http://host/", nullptr), "assertion failed: \\(core\\)");
}

}  // namespace
}  // namespace velkor
