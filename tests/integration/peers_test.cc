/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The shared library among other people's programs: file servers, proxies, readers of its cache.
 */
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/velkor.h>

#include "tests/integration/member.h"
#include "tests/integration/peers.h"
#include "tests/support/certificates.h"
#include "tests/support/http_client.h"
#include "tests/support/server_process.h"

namespace velkor::test {
namespace {

using ::testing::Each;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

constexpr const char *groups = "/3.7.3/xml-groups.php";
constexpr const char *dump_directory = "/3.7.3/dumps/";

/** The paths of the dumps that an answer of the main server names. */
std::vector<std::string> dump_paths(const std::string &answer) {
  std::vector<std::string> paths;
  std::smatch chunks;
  if (!std::regex_search(answer, chunks, std::regex("<Chunks>([^<]*)</Chunks>")))
    return paths;
  const std::string names = chunks[1];
  const std::regex name("[^|]+");
  for (std::sregex_iterator place(names.begin(), names.end(), name), end; place != end; ++place)
    paths.push_back(dump_directory + place->str() + ".gz");
  return paths;
}

class PeersTest : public MemberTest {
protected:
  ~PeersTest() override { zox_http_set_ca_file(nullptr); }

  static void use_proxy(const std::string &host, const std::string &port,
                        const ProxyAccount &account = {}) {
    set("proxyHost", host);
    set("proxyPort", port);
    set("proxyUser", account.user);
    set("proxyPassword", account.password);
  }

  CertificateAuthority authority;
  ServerCertificate certificate = authority.sign();
};

/** The main server leaves the dumps to another host. */
class StaticHost : public PeersTest {
protected:
  StaticHost() {
    use_hosts(server.host(), server.dump_host());
    paths = dump_paths(ask("/3.7.3/xml.php").text);
    for (const std::string &path : paths)
      files.emplace_back(path, send({.url = "http://" + server.dump_host() + path}).body);
    server.forget_requests();
  }

  /** An update with the dumps from there. */
  void expect_update(const FileServer &host) {
    ASSERT_THAT(paths, SizeIs(5));
    EXPECT_EQ(update(), 0U);
    EXPECT_GT(zox_eventlist_get_count(core->eventlist, 0), 0U);
    std::vector<std::string> expected;
    for (const std::string &path : paths)
      expected.push_back("200 " + path + " -");
    EXPECT_THAT(host.requests(expected.size()), IsSupersetOf(expected));
    for (const LoggedRequest &request : server.requests())
      EXPECT_THAT(request.path, Not(StartsWith(dump_directory)));
  }

  ServerProcess server{{"--postings", "50", "--chunk-size", "10"}};
  std::vector<std::string> paths;
  FileServer::Files files;
};

TEST_F(StaticHost, ServesTheDumpsWithoutSeeingCredentials) {
  const FileServer host(files, {});
  use_hosts(server.host(), host.host());
  expect_update(host);
}

TEST_F(StaticHost, ServesThemOverHttps) {
  const FileServer host(files, {.certificate = certificate});
  use_hosts(server.host(), "https://" + host.host());
  EXPECT_NE(update(), 0U);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
  zox_http_set_ca_file(authority.certificate().c_str());
  expect_update(host);
}

TEST_F(StaticHost, MayTakeGzipForAnEncoding) {
  const FileServer host(files, {.configuration = "add_header Content-Encoding x-gzip;\n"});
  use_hosts(server.host(), host.host());
  expect_update(host);
}

TEST_F(StaticHost, MayLackADump) {
  const std::string lacking = files.back().first;
  files.pop_back();
  const FileServer host(files, {});
  use_hosts(server.host(), host.host());
  EXPECT_NE(update(), 0U);
  EXPECT_THAT(host.requests(paths.size()), ::testing::Contains("404 " + lacking + " -"));
  EXPECT_EQ(core->config->lastCheck, 0);
}

TEST_F(StaticHost, OverHttpsIsNotAskedOverHttp) {
  const FileServer host(files, {.certificate = certificate});
  use_hosts(server.host(), host.host());
  EXPECT_NE(update(), 0U);
  EXPECT_EQ(zox_eventlist_get_count(core->eventlist, 0), 0U);
}

TEST_F(StaticHost, OverHttpIsNotAskedInItsPlace) {
  const FileServer host(files, {});
  use_hosts(server.host(), "https://" + host.host());
  EXPECT_NE(update(), 0U);
  EXPECT_THAT(host.requests(1), Each(StartsWith("400 ")));
}

/** Behind a proxy, over HTTP and over HTTPS. */
class Proxied : public PeersTest, public ::testing::WithParamInterface<bool> {
protected:
  Proxied() {
    zox_http_set_ca_file(authority.certificate().c_str());
    std::vector<std::string> options{"--postings", "50", "--chunk-size", "10"};
    if (is_secure())
      options.insert(options.end(),
                     {"--tls-certificate", certificate.certificate, "--tls-key", certificate.key});
    server.emplace(options);
    const std::string address = (is_secure() ? "https://" : "") + server->host();
    use_hosts(address, address);
  }
  static bool is_secure() { return GetParam(); }

  void expect_update() {
    EXPECT_EQ(update(), 0U);
    EXPECT_EQ(update(), 5U);
    EXPECT_GT(zox_eventlist_get_count(core->eventlist, 0), 0U);
  }
  /** A request fails before the server sees it. */
  Answer expect_refusal() {
    server->forget_requests();
    Answer answer = ask(groups);
    EXPECT_NE(answer.reason, "");
    EXPECT_THAT(server->requests(), IsEmpty());
    return answer;
  }
  void expect_refusal_by_proxy() {
    const Answer answer = expect_refusal();
    EXPECT_TRUE(answer.proxy_failed) << answer.reason;
  }

  const ProxyAccount account{"wachter", "poort"};
  std::optional<ServerProcess> server;
};

INSTANTIATE_TEST_SUITE_P(All, Proxied, ::testing::Bool(), [](const auto &tested) {
  return std::string(tested.param ? "Https" : "Http");
});

TEST_P(Proxied, AnHttpProxyPassesAnUpdateOn) {
  HttpProxy proxy;
  use_proxy("127.0.0.1", proxy.port());
  expect_update();
  const std::string request =
      is_secure() ? "CONNECT " + server->host() : "GET http://" + server->host();
  EXPECT_THAT(proxy.log(), HasSubstr(request));
  proxy.stop();
  expect_refusal_by_proxy();
}

TEST_P(Proxied, AnHttpProxyMayDemandAPassword) {
  const HttpProxy proxy(account);
  use_proxy("127.0.0.1", proxy.port(), account);
  expect_update();
  use_proxy("127.0.0.1", proxy.port());
  expect_refusal_by_proxy();
  use_proxy("127.0.0.1", proxy.port(), {"wachter", "fout"});
  // Without a tunnel, this proxy's refusal looks like one of the server.
  const Answer refused = expect_refusal();
  EXPECT_EQ(refused.proxy_failed, is_secure());
  EXPECT_THAT(refused.reason, HasSubstr("401"));
}

TEST_P(Proxied, ASocksProxyPassesAnUpdateOn) {
  SocksProxy proxy;
  use_proxy("socks5h://127.0.0.1", proxy.port());
  expect_update();
  proxy.stop();
  expect_refusal_by_proxy();
}

TEST_P(Proxied, ASocksProxyMayDemandAPassword) {
  const SocksProxy proxy(account);
  use_proxy("socks5h://127.0.0.1", proxy.port(), account);
  expect_update();
  for (const ProxyAccount &wrong : {ProxyAccount{}, ProxyAccount{"wachter", "fout"}}) {
    use_proxy("socks5h://127.0.0.1", proxy.port(), wrong);
    expect_refusal_by_proxy();
  }
}

class CacheFile : public PeersTest {
protected:
  CacheFile() {
    use_hosts(server.host(), server.host());
    EXPECT_EQ(update(), 0U);
    EXPECT_EQ(update(), 5U);
  }

  [[nodiscard]] std::string path() const { return sandbox.cache() / "velkor.posts.gz"; }

  ServerProcess server{{"--postings", "3000", "--chunk-size", "1000"}};
};

TEST_F(CacheFile, IsOneThatGzipFindsWhole) {
  const ProcessResult tested = run_program({"gzip", "--test", "--verbose", path()});
  EXPECT_EQ(tested.status, 0);
  EXPECT_THAT(tested.err, EndsWith("OK\n"));
}

TEST_F(CacheFile, IsADocumentToXmlReaders) {
  const std::string count = std::to_string(zox_eventlist_get_count(core->eventlist, 0));
  const std::string plain = sandbox.home() / "plain.xml";
  ASSERT_EQ(ChildProcess({"zcat", path()}, {.output_file = plain}).wait(), 0);
  for (const std::string &file : {path(), plain}) {
    const ProcessResult counted = run_program({"xmllint", "--xpath", "count(/Events/Event)", file});
    EXPECT_EQ(counted.out, count + "\n") << file << counted.err;
    EXPECT_EQ(run_program({"xmllint", "--stream", "--noout", file}).err, "") << file;
  }
}

}  // namespace
}  // namespace velkor::test
