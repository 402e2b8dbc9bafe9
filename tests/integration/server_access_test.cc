/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Authentication: members and their secrets, plug-ins, proxies, the listener of the dumps. */
#include <ctime>
#include <functional>
#include <memory>
#include <set>

#include <gmock/gmock.h>
#include <gmodule.h>

#include <curl/curl.h>

#include "tests/integration/server_test.h"

namespace velkor::test {
namespace {

constexpr const char *groups = "/3.7.3/xml-groups.php";

class ServerAccess : public ServerTest {
protected:
  std::string url_of(const std::string &path) { return "http://" + server->host() + path; }
  std::string ask_with(const std::string &credentials, const std::string &path = groups) {
    return send({.url = url_of(path), .credentials = credentials}).body;
  }
  std::string valid_secret(const std::string &path = groups) {
    return server_secret(url_of(path), ServerProcess::password);
  }
};

/** A plug-in as the library loads it. */
class Plugin {
public:
  explicit Plugin(const std::string &directory)
      : module_(
            g_module_open((directory + "/libzox_http_plugin.so.2.0").c_str(), G_MODULE_BIND_LAZY)) {
    gpointer entry = nullptr;
    if (module_ == nullptr || g_module_symbol(module_, "zox_plugin_auth", &entry) == FALSE)
      throw std::runtime_error(g_module_error());
    auth_ = reinterpret_cast<char *(*)(const char *, const GString *)>(entry);
  }
  ~Plugin() { g_module_close(module_); }
  Plugin(const Plugin &) = delete;
  Plugin &operator=(const Plugin &) = delete;

  [[nodiscard]] std::string secret(const std::string &url, const std::string &password) const {
    GString *text = g_string_new(password.c_str());
    char *made = auth_(url.c_str(), text);
    g_string_free(text, TRUE);
    std::string secret = made;
    g_free(made);
    return secret;
  }

private:
  GModule *module_;
  char *(*auth_)(const char *, const GString *);
};

TEST_F(ServerAccess, TheRightSecretIsAccepted) {
  start();
  EXPECT_TRUE(is_xml(ask_with("demo:" + valid_secret())));
}

TEST_F(ServerAccess, AllOtherCredentialsAreRejected) {
  start();
  const std::string secret = valid_secret();
  EXPECT_EQ(ask_as_nobody(groups).body, "UNAUTH");
  EXPECT_EQ(ask_as_nobody(groups).status, 200);
  EXPECT_EQ(ask_with(std::string("demo:") + ServerProcess::password), "UNAUTH");
  EXPECT_EQ(ask_with("demo:" + secret + "0"), "UNAUTH");
  EXPECT_EQ(ask_with("demo:"), "UNAUTH");
  EXPECT_EQ(ask_with("niemand:" + secret), "UNAUTH");
  EXPECT_EQ(ask_with("demo:" + secret, "/3.7.3/xml.php"), "UNAUTH");
  EXPECT_TRUE(is_xml(ask_with("demo:" + secret))) << "only a success uses it up";
}

TEST_F(ServerAccess, ARecordedRequestCannotBeSentAgain) {
  start();
  server->add_account("anna", ServerProcess::password);
  const std::string secret = valid_secret();
  EXPECT_TRUE(is_xml(ask_with("demo:" + secret)));
  EXPECT_EQ(ask_with("demo:" + secret), "UNAUTH");
  EXPECT_EQ(ask_with("demo:" + secret), "UNAUTH");
  EXPECT_TRUE(is_xml(ask_with("anna:" + secret))) << "members have nonces of their own";
  EXPECT_TRUE(is_xml(ask_with("demo:" + valid_secret())));
}

TEST_F(ServerAccess, ARestartDoesNotMakeARecordedRequestValid) {
  const std::string database = (sandbox.home() / "zox.db").string();
  start({"--postings", "1", "--database", database});
  const std::string port = server->port();
  const std::string secret = valid_secret();
  EXPECT_TRUE(is_xml(ask_with("demo:" + secret)));
  ASSERT_EQ(server->stop(), 0);
  // The URL is the same through the proxy that the second server is.
  const std::string url = "http://127.0.0.1:" + port + groups;
  start({"--postings", "1", "--database", database});
  const auto ask_again = [&](const std::string &sent) {
    return send({.url = url, .credentials = "demo:" + sent, .proxy = server->host()}).body;
  };
  EXPECT_EQ(ask_again(secret), "UNAUTH");
  EXPECT_TRUE(is_xml(ask_again(server_secret(url, ServerProcess::password))));
}

TEST_F(ServerAccess, ClocksMayDifferByMinutesOnly) {
  start();
  constexpr int minute = 60;
  const auto ask_at = [this](int clock_error) {
    return ask_with("demo:" + server_secret(url_of(groups), ServerProcess::password, clock_error));
  };
  EXPECT_TRUE(is_xml(ask_at(-2 * minute)));
  EXPECT_TRUE(is_xml(ask_at(2 * minute)));
  EXPECT_EQ(ask_at(-6 * minute), "UNAUTH");
  EXPECT_EQ(ask_at(30 * minute), "UNAUTH");
}

TEST_F(ServerAccess, TheClockOfTheServiceDoesNotMatter) {
  start({"--postings", "5", "--now", "1227351600"});
  EXPECT_TRUE(is_xml(ask_with("demo:" + valid_secret())));
  server->advance({.seconds = 100'000});
  EXPECT_TRUE(is_xml(ask_with("demo:" + valid_secret())));
}

TEST_F(ServerAccess, TimeAndNonceHaveTheirForm) {
  start();
  const std::string nonce = "0123456789abcdef0123456789abcdef";
  const std::string now = std::to_string(std::time(nullptr));
  const auto ask_with_salt = [&](const std::string &salt) {
    return ask_with("demo:" + salt + keyed_hash(salt + url_of(groups), ServerProcess::password));
  };
  for (const std::string &salt :
       {std::string(), std::string("."), now + ".", "." + nonce + ".", now + ".." + nonce + ".",
        now + "." + nonce.substr(1) + ".", now + "." + nonce + "0.", now + "x." + nonce + ".",
        now + ".X" + nonce.substr(1) + ".", now + "." + nonce})
    EXPECT_EQ(ask_with_salt(salt), "UNAUTH") << salt;
  EXPECT_TRUE(is_xml(ask_with_salt(now + "." + nonce + ".")));
}

TEST_F(ServerAccess, TheSecretCoversTheParameters) {
  start();
  const std::string asked = "/3.7.3/xml.php?lc=5";
  EXPECT_TRUE(is_xml(ask_with("demo:" + valid_secret(asked), asked)));
  EXPECT_EQ(ask_with("demo:" + valid_secret(asked), "/3.7.3/xml.php?lc=6"), "UNAUTH");
}

TEST_F(ServerAccess, ParametersMayContainAnyByte) {
  start();
  std::string value;
  for (int code = 1; code < 256; ++code)
    value += static_cast<char>(code);
  EXPECT_TRUE(is_xml(body_of(groups, {{"x", value}})));
  EXPECT_TRUE(is_xml(body_of(groups, {{"leeg", ""}, {"plus", "a+b c%20d"}})));
  EXPECT_EQ(server->requests(groups).back().parameters[1].second, "a+b c%20d");
}

TEST_F(ServerAccess, PostersWithoutAPasswordCannotLogIn) {
  start();
  const std::string poster = first_in_xml(dump(dump_names().front()), "//Poster");
  EXPECT_EQ(ask(groups, {}, poster, "").body, "UNAUTH");
}

TEST_F(ServerAccess, BannedMembersGetBan) {
  start();
  server->add_account("schurk", "boef", true);
  EXPECT_EQ(ask(groups, {}, "schurk", "boef").body, "BAN");
  EXPECT_EQ(ask(groups, {}, "schurk", "fout").body, "UNAUTH");
  server->add_account("schurk", "boef", false);
  EXPECT_TRUE(is_xml(ask(groups, {}, "schurk", "boef").body));
}

TEST_F(ServerAccess, ThePluginComputesTheSecretThatTheServerExpects) {
  start();
  const Plugin plugin(ServerProcess::plugin_directory());
  EXPECT_TRUE(is_xml(ask_with("demo:" + plugin.secret(url_of(groups), ServerProcess::password))));
}

TEST_F(ServerAccess, ThePluginHashesTimeNonceAndUrl) {
  // RFC 4231, test case 2.
  ASSERT_EQ(keyed_hash("what do ya want for nothing?", "Jefe"),
            "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843");
  const Plugin plugin(ServerProcess::plugin_directory());
  const std::time_t earliest = std::time(nullptr);
  const std::string secret = plugin.secret("http://zox.test/", "Jefe");
  ASSERT_THAT(secret, ::testing::MatchesRegex("[0-9]+[.][0-9a-f]{32}[.][0-9a-f]{64}"));
  const std::string salt = secret.substr(0, secret.rfind('.') + 1);
  EXPECT_EQ(secret.substr(salt.size()), keyed_hash(salt + "http://zox.test/", "Jefe"));
  EXPECT_THAT(std::stoll(salt),
              ::testing::AllOf(::testing::Ge(earliest), ::testing::Le(std::time(nullptr))));
}

TEST_F(ServerAccess, ThePluginMakesEverySecretAnew) {
  const Plugin plugin(ServerProcess::plugin_directory());
  std::set<std::string> secrets;
  for (int count = 0; count < 100; ++count)
    secrets.insert(plugin.secret("http://zox.test/", "Jefe"));
  EXPECT_EQ(secrets.size(), 100U);
}

TEST_F(ServerAccess, ARuleWithoutNonceAcceptsASecretAgain) {
  start({"--postings", "5", "--auth-rule", "hmac-sha256"});
  const std::string secret = keyed_hash(url_of(groups), ServerProcess::password);
  EXPECT_TRUE(is_xml(ask_with("demo:" + secret)));
  EXPECT_TRUE(is_xml(ask_with("demo:" + secret)));
  EXPECT_EQ(ask_with("demo:" + valid_secret()), "UNAUTH");
}

TEST_F(ServerAccess, AnotherRuleAcceptsAnotherPlugin) {
  start({"--postings", "5", "--auth-rule", "plain"});
  const Plugin plugin(VELKOR_PLAIN_PLUGIN_DIRECTORY);
  EXPECT_TRUE(is_xml(ask_with("demo:" + plugin.secret(url_of(groups), ServerProcess::password))));
  EXPECT_EQ(ask_with("demo:" + valid_secret()), "UNAUTH");
}

TEST_F(ServerAccess, AnswersAsAProxyForAnyHost) {
  start();
  const std::string url = std::string("http://www.zox.example") + groups;
  const HttpReply reply =
      send({.url = url,
            .credentials = "demo:" + server_secret(url, ServerProcess::password),
            .proxy = server->host()});
  EXPECT_TRUE(is_xml(reply.body));
  const LoggedRequest request = server->requests().back();
  EXPECT_TRUE(request.proxied);
  EXPECT_EQ(request.host, "www.zox.example");
  EXPECT_EQ(request.path, groups);
}

TEST_F(ServerAccess, TheSecretOfAProxiedRequestIsThatOfItsHost) {
  start();
  const HttpReply reply = send({.url = std::string("http://www.zox.example") + groups,
                                .credentials = "demo:" + valid_secret(),
                                .proxy = server->host()});
  EXPECT_EQ(reply.body, "UNAUTH");
}

TEST_F(ServerAccess, AProxyMayRequireCredentials) {
  const std::string file = (sandbox.home() / "proxy").string();
  write_file(file, "poort\n");
  start({"--postings", "5", "--proxy-user", "wachter", "--proxy-password-file", file});
  const std::string url =
      std::string("http://static.zox.example/3.7.3/dumps/") + dump_names().front() + ".gz";
  const HttpReply rejected = send({.url = url, .proxy = server->host()});
  EXPECT_EQ(rejected.status, 407);
  EXPECT_THAT(rejected.headers.at("proxy-authenticate"), ::testing::StartsWith("Basic"));
  const auto status = [&](const std::string &credentials) {
    return send({.url = url, .proxy = server->host(), .proxy_credentials = credentials}).status;
  };
  EXPECT_EQ(status("wachter:fout"), 407);
  EXPECT_EQ(status("ander:poort"), 407);
  EXPECT_EQ(status("wachter:poort"), 200);
  EXPECT_TRUE(server->requests().back().proxyCredentials);
  EXPECT_FALSE(server->requests().back().credentials);
}

TEST_F(ServerAccess, DumpsMayHaveAListenerOfTheirOwn) {
  start({"--postings", "5", "--static-port", "0"});
  ASSERT_NE(server->dump_host(), server->host());
  const std::string path = "/3.7.3/dumps/" + dump_names().front() + ".gz";
  EXPECT_EQ(ask_as_nobody(path).status, 404);
  const std::string url = "http://" + server->dump_host();
  EXPECT_EQ(send({.url = url + path}).status, 200);
  EXPECT_EQ(send({.url = url + groups}).status, 404);
  EXPECT_EQ(server->requests(path).back().listener, "dumps");
  EXPECT_EQ(server->requests(path).front().listener, "main");
}

TEST_F(ServerAccess, CredentialsSentWithDumpRequestsAreLogged) {
  start({"--postings", "5", "--static-port", "0"});
  const std::string path = "/3.7.3/dumps/" + dump_names().front() + ".gz";
  send({.url = "http://" + server->dump_host() + path});
  send({.url = "http://" + server->dump_host() + path, .credentials = "demo:x"});
  const std::vector<LoggedRequest> requests = server->requests(path);
  EXPECT_FALSE(requests[0].credentials);
  EXPECT_TRUE(requests[1].credentials);
}

TEST_F(ServerAccess, TheLogContainsRequestsWithoutSecrets) {
  start();
  server->forget_requests();
  const std::string path = with_parameters("/3.7.3/xml.php", {{"lc", "12"}, {"é", "1 & 2"}});
  const std::string secret = valid_secret(path);
  ask_with("demo:" + secret, path);
  const std::vector<LoggedRequest> requests = server->requests();
  ASSERT_EQ(requests.size(), 1U);
  EXPECT_EQ(requests[0].method, "GET");
  EXPECT_EQ(requests[0].path, "/3.7.3/xml.php");
  EXPECT_THAT(requests[0].parameters,
              ::testing::ElementsAre(std::pair("lc", "12"), std::pair("é", "1 & 2")));
  EXPECT_TRUE(requests[0].credentials);
  EXPECT_FALSE(requests[0].proxied);
  const std::string log = server->command("GET", "/requests");
  EXPECT_EQ(log.find(ServerProcess::password), std::string::npos);
  EXPECT_EQ(log.find(secret), std::string::npos);
}

TEST_F(ServerAccess, UnknownPathsAreNotFound) {
  start();
  for (const char *path : {"/", "/3.7.3/", "/3.7.3/xml.php/", "/3.7.4/xml.php", "/XML.PHP"})
    EXPECT_EQ(ask(path).status, 404) << path;
}

TEST_F(ServerAccess, OnlyGetAndHeadAreSupported) {
  start();
  EXPECT_EQ(send({.url = url_of(groups), .method = "POST"}).status, 405);
  EXPECT_EQ(send({.url = url_of(groups), .method = "DELETE"}).status, 405);
  const HttpReply head = send({.url = url_of(groups), .method = "HEAD"});
  EXPECT_EQ(head.status, 200);
  EXPECT_EQ(head.body, "");
}

TEST_F(ServerAccess, LongRepliesAreCompressedForClientsThatAcceptIt) {
  start();
  const HttpReply reply =
      send({.url = url_of(groups), .credentials = "demo:" + valid_secret(), .accept_gzip = true});
  EXPECT_EQ(reply.headers.at("content-encoding"), "gzip");
  EXPECT_EQ(reply.body, body_of(groups));
}

TEST_F(ServerAccess, OverlongRequestsAreRejected) {
  start();
  const std::string url = url_of(groups) + "?x=" + std::string(200'000, 'a');
  const HttpReply reply = send({.url = url});
  EXPECT_TRUE(reply.result != CURLE_OK || reply.status >= 400) << reply.status;
  EXPECT_TRUE(is_xml(ask(groups).body));
}

TEST_F(ServerAccess, TheControlPortRejectsWebPagesAndInvalidCommands) {
  start();
  const std::string control = "http://" + server->control_host();
  EXPECT_EQ(send({.url = control + "/faults",
                  .method = "DELETE",
                  .headers = {"Origin: http://www.kwaad.example"}})
                .status,
            403);
  EXPECT_EQ(send({.url = control + "/nergens"}).status, 404);
  EXPECT_EQ(send({.url = control + "/advance?new=veel", .method = "POST"}).status, 400);
  EXPECT_EQ(send({.url = control + "/advance?new=-1", .method = "POST"}).status, 400);
  EXPECT_EQ(
      send({.url = control + "/advance?seconds=9223372036854775807", .method = "POST"}).status,
      400);
  EXPECT_EQ(send({.url = control + "/account", .method = "POST"}).status, 400);
  EXPECT_EQ(send({.url = control + "/account?user=a:b", .method = "POST"}).status, 400);
}

TEST_F(ServerAccess, TheControlPortRejectsForeignHosts) {
  start();
  const std::string url = "http://" + server->control_host() + "/status";
  const std::string port = server->control_host().substr(server->control_host().find(':'));
  const auto status = [&](const std::string &host) {
    return send({.url = url, .headers = {"Host: " + host}}).status;
  };
  for (const char *host : {"127.0.0.1", "127.0.0.2", "localhost", "LocalHost", "[::1]"})
    EXPECT_EQ(status(host + port), 200) << host;
  for (const char *host : {"www.kwaad.example", "192.0.2.1", "127.0.0.1.kwaad.example", "[::2]"})
    EXPECT_EQ(status(host + port), 403) << host;
  EXPECT_EQ(status("127.0.0.1"), 403);
  EXPECT_EQ(status("localhost:1"), 403);
  EXPECT_EQ(
      send({.url = "http://www.kwaad.example" + port + "/status", .proxy = server->control_host()})
          .status,
      403);
}

}  // namespace
}  // namespace velkor::test
