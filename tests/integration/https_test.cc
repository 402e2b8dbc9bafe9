/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Requests of the library over HTTPS, and what it does with a server that cannot be trusted. */
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velkor/velkor.h>

#include "tests/integration/member.h"
#include "tests/support/certificates.h"
#include "tests/support/server_process.h"

namespace velkor::test {
namespace {

using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr int peer_failed_verification = 60;  // CURLE_PEER_FAILED_VERIFICATION
constexpr const char *groups = "/3.7.3/xml-groups.php";

class Https : public MemberTest {
protected:
  ~Https() override { zox_http_set_ca_file(nullptr); }

  void start(const ServerCertificate &certificate, std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--postings", "50", "--chunk-size", "10", "--tls-certificate",
                                   certificate.certificate, "--tls-key", certificate.key});
    server.emplace(options);
    use_hosts("https://" + server->host(), "https://" + server->dump_host());
  }
  static void trust(const CertificateAuthority &trusted) {
    zox_http_set_ca_file(trusted.certificate().c_str());
  }
  /** Why the certificate is refused. */
  std::string refusal() {
    const Answer answer = ask(groups);
    EXPECT_EQ(answer.code, 1U);
    EXPECT_EQ(answer.text, "");
    EXPECT_EQ(answer.transfer_result, peer_failed_verification);
    EXPECT_THAT(server->requests(), IsEmpty());
    return answer.reason;
  }

  CertificateAuthority authority;
  std::optional<ServerProcess> server;
};

TEST_F(Https, BringsAWholeUpdate) {
  start(authority.sign(), {"--static-port", "0"});
  trust(authority);
  EXPECT_EQ(update(), 0U);
  EXPECT_EQ(update(), 5U);
  EXPECT_GT(zox_eventlist_get_count(core->eventlist, 0), 0U);
  for (const LoggedRequest &request : server->requests())
    EXPECT_EQ(request.credentials, request.listener == "main") << request.path;
}

TEST_F(Https, AnUnknownAuthorityIsRefused) {
  start(authority.sign());
  EXPECT_THAT(refusal(), HasSubstr("unable to get local issuer certificate"));
  const CertificateAuthority other;
  trust(other);
  EXPECT_NE(refusal(), "");
}

TEST_F(Https, AnotherHostsCertificateIsRefused) {
  start(authority.sign("DNS:www.zox.example"));
  trust(authority);
  EXPECT_THAT(refusal(), AllOf(HasSubstr("subject name"), HasSubstr("127.0.0.1")));
}

TEST_F(Https, AnExpiredCertificateIsRefused) {
  start(authority.sign("IP:127.0.0.1", -1));
  trust(authority);
  EXPECT_THAT(refusal(), HasSubstr("certificate has expired"));
}

TEST_F(Https, AFileWithoutAuthoritiesTrustsNobody) {
  start(authority.sign());
  const std::string file = (sandbox.home() / "none.pem").string();
  zox_http_set_ca_file(file.c_str());
  const Answer answer = ask(groups);
  EXPECT_EQ(answer.code, 1U);
  EXPECT_THAT(answer.reason, HasSubstr(file));
  EXPECT_THAT(server->requests(), IsEmpty());
}

TEST_F(Https, TheEnvironmentMayNameTheAuthorities) {
  start(authority.sign());
  const EnvironmentVariable variable("VELKOR_CA_FILE", authority.certificate().string());
  EXPECT_EQ(ask(groups).code, 0U);
}

TEST_F(Https, ThereIsNoWayBackToHttp) {
  // A server of HTTP waits for the rest of what it takes for a request.
  server.emplace(std::vector<std::string>{"--postings", "1", "--idle-timeout", "1"});
  use_hosts("https://" + server->host(), "https://" + server->host());
  const Answer answer = ask(groups);
  EXPECT_EQ(answer.code, 1U);
  EXPECT_NE(answer.reason, "");
  EXPECT_THAT(server->requests(), IsEmpty());
}

TEST_F(Https, ARedirectToHttpIsNotFollowed) {
  ServerProcess plain({"--postings", "1"});
  start(authority.sign());
  trust(authority);
  server->fault(groups, "redirect", 1, "http://" + plain.host() + groups);
  const Answer answer = ask(groups);
  EXPECT_EQ(answer.transfer_result, 0);
  EXPECT_EQ(server->requests(groups).size(), 1U);
  EXPECT_THAT(plain.requests(), IsEmpty());
}

TEST_F(Https, AnHttpClientGetsNothing) {
  start(authority.sign());
  use_hosts(server->host(), server->host());
  EXPECT_NE(ask(groups).code, 0U);
  EXPECT_THAT(server->requests(), IsEmpty());
  use_hosts("https://" + server->host(), server->host());
  trust(authority);
  EXPECT_EQ(ask(groups).code, 0U);
}

TEST_F(Https, FaultsAreCommittedAsOverHttp) {
  start(authority.sign());
  trust(authority);
  for (const char *kind : {"close", "reset", "drop", "length-long"}) {
    server->fault(groups, kind, 1);
    const Answer answer = ask(groups);
    EXPECT_NE(answer.code, 0U) << kind;
    EXPECT_NE(answer.transfer_result, 0) << kind;
  }
  server->fault(groups, "drip", 1, "1000000");
  const Answer slow = ask(groups);
  EXPECT_EQ(slow.code, 0U);
  EXPECT_EQ(slow.text, ask(groups).text);
}

}  // namespace
}  // namespace velkor::test
