/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** zox-server as a program: options, messages, exit status. */
#include <array>
#include <csignal>
#include <list>

#include <curl/curl.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sqlite3.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/integration/server_test.h"
#include "tests/support/certificates.h"
#include "tests/support/child_process.h"

namespace velkor::test {
namespace {

using ::testing::HasSubstr;

struct Outcome {
  int status;
  std::string output;  // standard output and standard error
};

/** Runs the program until it exits. */
Outcome run(const std::string &arguments) {
  ChildProcess process(
      {"sh", "-c", std::string("exec " ZOX_SERVER_PROGRAM " ") + arguments + " 2>&1"});
  std::string output = process.read_rest();
  return {process.wait(), std::move(output)};
}

void change_database(const std::string &file, const char *sql) {
  sqlite3 *database = nullptr;
  ASSERT_EQ(sqlite3_open(file.c_str(), &database), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(database);
}

class ServerProgram : public ServerTest {};

TEST_F(ServerProgram, ExitsCleanlyOnSigterm) {
  start();
  EXPECT_EQ(server->stop(), 0);
}

TEST_F(ServerProgram, ExitsCleanlyOnSigint) {
  ChildProcess process({ZOX_SERVER_PROGRAM, "--port", "0", "--postings", "1"});
  std::optional<std::string> line = process.read_line();
  while (line && line->find("listening on") == std::string::npos)
    line = process.read_line();
  ASSERT_TRUE(line);
  process.send_signal(SIGINT);
  EXPECT_EQ(process.wait(), 0);
}

TEST_F(ServerProgram, CreatesAnAccountWhenThereIsNone) {
  ChildProcess process({ZOX_SERVER_PROGRAM, "--port", "0", "--postings", "1"});
  const std::string account = process.read_line().value_or("");
  EXPECT_THAT(account,
              testing::MatchesRegex("zox-server: account demo with the password [0-9a-f]+"));
  const std::string address = process.read_line().value_or("");
  const std::string url = address.substr(address.find("http://")) + "/3.7.3/xml-groups.php";
  const std::string password = account.substr(account.rfind(' ') + 1);
  EXPECT_TRUE(
      is_xml(send({.url = url, .credentials = "demo:" + server_secret(url, password)}).body));
}

TEST_F(ServerProgram, ReadsThePasswordOfTheDemoAccountFromTheEnvironment) {
  const EnvironmentVariable variable("ZOX_SERVER_PASSWORD", "uit-de-omgeving");
  ChildProcess process({ZOX_SERVER_PROGRAM, "--port", "0", "--postings", "1"});
  const std::string address = process.read_line().value_or("");
  ASSERT_THAT(address, HasSubstr("listening on"));
  const std::string url = address.substr(address.find("http://")) + "/3.7.3/xml-groups.php";
  EXPECT_TRUE(is_xml(
      send({.url = url, .credentials = "demo:" + server_secret(url, "uit-de-omgeving")}).body));
}

TEST_F(ServerProgram, ReadsPasswordsFromFiles) {
  const std::string file = (sandbox.home() / "geheim").string();
  write_file(file, "kwartel\ntweede regel\n");
  start({"--postings", "1", "--account", "anna=" + file});
  EXPECT_TRUE(is_xml(ask("/3.7.3/xml-groups.php", {}, "anna", "kwartel").body));
}

TEST_F(ServerProgram, WritesItsAddressesToTheReadyFile) {
  const std::string file = (sandbox.home() / "ready.json").string();
  start({"--postings", "1", "--static-port", "0", "--ready-file", file});
  const std::string addresses = read_file(file);
  EXPECT_THAT(addresses, HasSubstr("http://" + server->host() + "\""));
  EXPECT_THAT(addresses, HasSubstr("http://" + server->dump_host() + "\""));
  EXPECT_THAT(addresses, HasSubstr("http://" + server->control_host() + "\""));
}

TEST_F(ServerProgram, WritesHttpsAddressesToTheReadyFile) {
  CertificateAuthority authority;
  const ServerCertificate made = authority.sign();
  const std::string file = (sandbox.home() / "ready.json").string();
  start({"--postings", "1", "--static-port", "0", "--tls-certificate", made.certificate,
         "--tls-key", made.key, "--ready-file", file});
  const std::string addresses = read_file(file);
  EXPECT_THAT(addresses, HasSubstr("https://" + server->host() + "\""));
  EXPECT_THAT(addresses, HasSubstr("https://" + server->dump_host() + "\""));
  EXPECT_THAT(addresses, HasSubstr("http://" + server->control_host() + "\""));
}

TEST_F(ServerProgram, RejectsAnUnusableCertificate) {
  const Outcome missing =
      run("--postings 1 --port 0 --tls-certificate /nergens.pem --tls-key /nergens.key");
  EXPECT_EQ(missing.status, 1);
  EXPECT_THAT(missing.output, HasSubstr("cannot use the certificate /nergens.pem"));
  CertificateAuthority authority;
  const ServerCertificate made = authority.sign();
  EXPECT_EQ(run("--postings 1 --port 0 --tls-certificate " + made.certificate.string() +
                " --tls-key " + made.certificate.string())
                .status,
            1);
}

TEST_F(ServerProgram, ListsTheKindsOfFaults) {
  const Outcome outcome = run("--list-faults");
  EXPECT_EQ(outcome.status, 0);
  for (const char *kind : {"unauth", "stall", "drip", "gzip-corrupt", "xml-bomb"})
    EXPECT_THAT(outcome.output, HasSubstr(kind));
}

TEST_F(ServerProgram, PrintsItsVersionAndItsOptions) {
  EXPECT_EQ(run("--version").status, 0);
  const Outcome help = run("--help");
  EXPECT_EQ(help.status, 0);
  EXPECT_THAT(help.output, HasSubstr("--chunks-per-reply"));
}

TEST_F(ServerProgram, RejectsInvalidOptions) {
  for (const char *arguments :
       {"--port 70000", "--chunk-size 0", "--max-connections 0", "--idle-timeout -1", "--nonsense",
        "--auth-rule rot13", "--fault zomaar", "--fault /x=aardbeving", "--fault /x=ban:veel",
        "--account demo", "--account demo=/nergens", "--account a:b=/dev/null",
        "--account demo=/dev/null", "--proxy-user wachter", "--tls-certificate x", "--tls-key x",
        "--now 5", "los"}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments << ": " << outcome.output;
    EXPECT_NE(outcome.output, "") << arguments;
  }
}

TEST_F(ServerProgram, ExplainsInvalidOptions) {
  EXPECT_THAT(run("--fault /x=aardbeving").output, HasSubstr("--list-faults"));
  EXPECT_THAT(run("--account demo=/nergens").output, HasSubstr("no password to read in /nergens"));
}

TEST_F(ServerProgram, RejectsAPortInUse) {
  start();
  const Outcome outcome = run("--postings 1 --port " + server->port());
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("cannot listen on 127.0.0.1 port " + server->port()));
}

TEST_F(ServerProgram, RejectsAnInvalidAddress) {
  const Outcome outcome = run("--postings 1 --port 0 --listen overal");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("overal is not an IP address"));
}

TEST_F(ServerProgram, RejectsAFileThatIsNoDatabase) {
  const std::string file = (sandbox.home() / "zox.db").string();
  write_file(file, std::string(5000, 'x'));
  const Outcome outcome = run("--port 0 --database " + file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("cannot use the database " + file));
  EXPECT_EQ(read_file(file), std::string(5000, 'x'));
}

TEST_F(ServerProgram, RejectsAnInaccessibleDatabase) {
  const Outcome outcome = run("--port 0 --database /nergens/zox.db");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("cannot use the database /nergens/zox.db"));
}

TEST_F(ServerProgram, RejectsADatabaseOfAnotherProgram) {
  const std::string file = (sandbox.home() / "ander.db").string();
  change_database(file, "CREATE TABLE boodschappen (wat TEXT)");
  const Outcome outcome = run("--port 0 --database " + file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("it belongs to another program"));
}

TEST_F(ServerProgram, RejectsADatabaseOfAnotherVersion) {
  const std::string file = (sandbox.home() / "zox.db").string();
  start({"--postings", "1", "--database", file});
  server->stop();
  change_database(file, "PRAGMA user_version = 99");
  const Outcome outcome = run("--port 0 --database " + file);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_THAT(outcome.output, HasSubstr("created by another version of zox-server"));
}

TEST_F(ServerProgram, ReportsDatabaseFailuresToClients) {
  const std::string file = (sandbox.home() / "zox.db").string();
  start({"--postings", "1", "--database", file});
  change_database(file, "DROP TABLE newsgroup");
  EXPECT_EQ(body_of("/3.7.3/xml-groups.php"), "Could not connect to the database");
}

TEST_F(ServerProgram, ListensOnOtherAddressesToo) {
  start({"--postings", "1", "--listen", "127.0.0.2"});
  EXPECT_TRUE(server->host().starts_with("127.0.0.2:")) << server->host();
  EXPECT_TRUE(is_xml(body_of("/3.7.3/xml-groups.php")));
  EXPECT_FALSE(server->requests().back().proxied);
  EXPECT_TRUE(server->control_host().starts_with("127.0.0.1:"));
}

TEST_F(ServerProgram, OnlyTheOwnerCanReadTheDatabase) {
  const std::string file = (sandbox.home() / "zox.db").string();
  start({"--postings", "1", "--database", file});
  struct stat properties {};
  ASSERT_EQ(stat(file.c_str(), &properties), 0);
  EXPECT_EQ(properties.st_mode & 0777U, 0600U);
}

/** A connection to a port of 127.0.0.1 that sends this text and nothing more. */
class IdleConnection {
public:
  explicit IdleConnection(const std::string &port, const std::string &text = "")
      : socket_(socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(std::stoi(port)));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(socket_, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0)
      throw std::runtime_error("cannot connect to port " + port);
    if (::send(socket_, text.data(), text.size(), MSG_NOSIGNAL) !=
        static_cast<ssize_t>(text.size()))
      throw std::runtime_error("cannot write to port " + port);
  }
  ~IdleConnection() { close(socket_); }
  IdleConnection(const IdleConnection &) = delete;
  IdleConnection &operator=(const IdleConnection &) = delete;

  /** What the server sends until it closes the connection. */
  [[nodiscard]] std::string read_until_closed() const {
    std::string received;
    std::array<char, 4096> block{};
    ssize_t length = 0;
    while ((length = recv(socket_, block.data(), block.size(), 0)) > 0)
      received.append(block.data(), static_cast<std::size_t>(length));
    return received;
  }

private:
  int socket_;
};

constexpr const char *groups = "/3.7.3/xml-groups.php";

TEST_F(ServerProgram, ClosesIdleConnections) {
  start({"--postings", "1", "--idle-timeout", "1"});
  const IdleConnection connection(server->port());
  EXPECT_EQ(connection.read_until_closed(), "");
  EXPECT_TRUE(is_xml(body_of(groups)));
}

TEST_F(ServerProgram, ClosesConnectionsThatAreIdleBetweenRequests) {
  start({"--postings", "1", "--idle-timeout", "1"});
  const IdleConnection connection(server->port(),
                                  "GET /nergens HTTP/1.1\r\nHost: " + server->host() + "\r\n\r\n");
  EXPECT_THAT(connection.read_until_closed(), testing::StartsWith("HTTP/1.1 404"));
}

TEST_F(ServerProgram, ClosesConnectionsThatAreIdleWithinARequest) {
  start({"--postings", "1", "--idle-timeout", "1"});
  const IdleConnection connection(server->port(), "GET /nergens HTTP/1.1\r\nHost: ");
  EXPECT_EQ(connection.read_until_closed().find("HTTP/1.1 404"), std::string::npos);
}

TEST_F(ServerProgram, ClosesIdleConnectionsOverHttps) {
  CertificateAuthority authority;
  const ServerCertificate made = authority.sign();
  start({"--postings", "1", "--idle-timeout", "1", "--tls-certificate", made.certificate,
         "--tls-key", made.key});
  const IdleConnection silent(server->port());
  EXPECT_EQ(silent.read_until_closed(), "");
  const IdleConnection beginner(server->port(), "\x16\x03\x01");
  EXPECT_EQ(beginner.read_until_closed(), "");
}

TEST_F(ServerProgram, ServesOthersWhileConnectionsOverHttpsAreIdle) {
  // The leak checker fails on a process in which handshakes are still under way.
  const EnvironmentVariable without_leak_checker("ASAN_OPTIONS", "detect_leaks=0");
  CertificateAuthority authority;
  const ServerCertificate made = authority.sign();
  start({"--postings", "1", "--tls-certificate", made.certificate, "--tls-key", made.key});
  std::list<IdleConnection> connections;
  while (connections.size() < 30)
    connections.emplace_back(server->port());
  EXPECT_EQ(
      send({.url = "https://" + server->host() + "/nergens", .ca_file = authority.certificate()})
          .status,
      404);
}

TEST_F(ServerProgram, LimitsItsConnections) {
  start({"--postings", "1", "--max-connections", "2"});
  const std::string url = "http://" + server->host() + groups;
  std::list<IdleConnection> connections;
  connections.emplace_back(server->port());
  connections.emplace_back(server->port());
  EXPECT_EQ(send({.url = url, .seconds = 1}).result, CURLE_OPERATION_TIMEDOUT);
  connections.pop_back();
  EXPECT_EQ(send({.url = url}).status, 200);
}

TEST_F(ServerProgram, AcceptsAgainAfterRunningOutOfDescriptors) {
  ChildProcess process({"sh", "-c", "ulimit -n 32; exec " ZOX_SERVER_PROGRAM " --port 0"});
  process.read_line();
  const std::string address = process.read_line().value_or("");
  ASSERT_THAT(address, HasSubstr("listening on"));
  const std::string url = address.substr(address.find("http://"));
  std::list<IdleConnection> connections;
  while (connections.size() < 40)
    connections.emplace_back(url.substr(url.rfind(':') + 1));
  EXPECT_EQ(send({.url = url + groups, .seconds = 1}).result, CURLE_OPERATION_TIMEDOUT);
  connections.clear();
  EXPECT_EQ(send({.url = url + groups}).status, 200);
  process.send_signal(SIGTERM);
  EXPECT_EQ(process.wait(), 0);
}

}  // namespace
}  // namespace velkor::test
