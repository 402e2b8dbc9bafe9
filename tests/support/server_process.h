/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A zox-server for one test: a child process on loopback ports of the system's choice, with its
 * sample data in memory.
 *
 *     ServerProcess server({"--postings", "50", "--chunk-size", "10"});
 *     zox_http_set_hosts(server.host().c_str(), server.host().c_str());
 *     core->config->username = zox_string_new(ServerProcess::user);
 *     core->config->password = zox_string_new(ServerProcess::password);
 *     const auto changed = server.advance({.added = 3, .deleted = 1});
 *     server.fault("/3.7.3/xml.php", "message", 1, "Onderhoud");
 *     EXPECT_EQ(server.requests("/3.7.3/xml.php").size(), 2);
 *
 * The secrets of its members are those of the plug-in in lib/ of the build tree
 * (ServerProcess::plugin_directory). The process ends with the object; any failure to communicate
 * with it throws std::runtime_error.
 */
#ifndef VELKOR_TESTS_SUPPORT_SERVER_PROCESS_H
#define VELKOR_TESTS_SUPPORT_SERVER_PROCESS_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/child_process.h"

namespace velkor::test {

/** How many postings are added and changed; the clock is advanced by `seconds` first. */
struct DataChange {
  std::int64_t added = 0;
  std::int64_t updated = 0;
  std::int64_t deleted = 0;     // status -2
  std::int64_t removed = 0;     // status -3
  std::int64_t newsgroups = 0;  // new ones
  std::int64_t seconds = 0;
};

/** The ids of the postings that changed, and their new timestamp. */
struct ChangedData {
  std::vector<std::int64_t> added;
  std::vector<std::int64_t> updated;
  std::vector<std::int64_t> deleted;
  std::vector<std::int64_t> removed;
  std::int64_t stamp = 0;
};

/** One request as the server saw it. */
struct LoggedRequest {
  std::string method;
  std::string path;
  std::vector<std::pair<std::string, std::string>> parameters;  // decoded, in order
  std::string host;       // the host (and port) that was asked for
  std::string listener;   // "main", or "dumps" for --static-port
  bool credentials;       // whether a user name and a secret were sent
  bool proxied;           // whether the server was asked as a proxy
  bool proxyCredentials;  // whether the proxy was given a name and a password
  std::int64_t status;    // HTTP status of the reply
  std::string fault;      // the kind of fault committed, empty for none
};

class ServerProcess {
public:
  /** The account that every such server has. */
  static constexpr const char *user = "demo";
  static constexpr const char *password = "demo-geheim";
  /** The library directory that holds the plug-in with the server's own rule. */
  static const char *plugin_directory();

  using Parameters = std::vector<std::pair<std::string, std::string>>;

  /** Starts the server with further options (see zox-server(1)) and waits until it listens. */
  explicit ServerProcess(const std::vector<std::string> &options = {});
  ~ServerProcess();

  /** "127.0.0.1:PORT" of the main address, which is a proxy as well unless it is one of HTTPS. */
  [[nodiscard]] const std::string &host() const { return main_; }
  /** The port alone. */
  [[nodiscard]] std::string port() const;
  /** The address of the dumps: that of --static-port, else the main one. */
  [[nodiscard]] const std::string &dump_host() const { return dumps_; }
  [[nodiscard]] const std::string &control_host() const { return control_; }

  /** Changes the sample data, as the next update will report. */
  ChangedData advance(const DataChange &change);
  /** Adds a posting with these fields (by element name: "Title", "Cat", ...). @return its id */
  std::int64_t add_posting(const Parameters &fields);
  /** Changes fields of a posting. */
  void change_posting(std::int64_t id, const Parameters &fields);
  /** Answers the next `times` requests of `path` wrongly (0: all); see zox-server --list-faults. */
  void fault(const std::string &path, const std::string &kind, std::int64_t times = 0,
             const std::string &argument = "");
  void clear_faults();
  /** The requests so far, in order; with a path only those of that path. */
  std::vector<LoggedRequest> requests(const std::string &path = "");
  void forget_requests();
  void add_account(const std::string &name, const std::string &secret, bool banned = false);

  /** Any command of the control address. @return the JSON reply */
  std::string command(const std::string &method, const std::string &path,
                      const Parameters &parameters = {});

  /** Asks the server to end. @return its exit status */
  int stop();
  /** Whether it has not been stopped yet. */
  [[nodiscard]] bool is_running() const { return running_; }

private:
  void wait_until_ready();

  ChildProcess process_;
  bool running_ = true;
  std::string main_;
  std::string dumps_;
  std::string control_;
};

/**
 * A new secret for a request under the rule of the reference plug-in.
 * @param clock_error by how many seconds the clock of the client is fast
 */
std::string server_secret(const std::string &url, const std::string &password,
                          std::int64_t clock_error = 0);
/** The HMAC-SHA256 in hexadecimal. */
std::string keyed_hash(const std::string &text, const std::string &password);

}  // namespace velkor::test

#endif
