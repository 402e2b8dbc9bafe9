/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Other people's servers and proxies for one test, each an unprivileged child process with a
 * directory and a loopback port of its own.
 */
#ifndef VELKOR_TESTS_INTEGRATION_PEERS_H
#define VELKOR_TESTS_INTEGRATION_PEERS_H

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/certificates.h"
#include "tests/support/child_process.h"
#include "tests/support/sandbox.h"

namespace velkor::test {

/**
 * A port of 127.0.0.1 on which a program that cannot choose one itself may listen. The port stays
 * bound here, though nothing listens, so that nobody else is given it.
 */
class ReservedPort {
public:
  ReservedPort();
  ~ReservedPort();
  ReservedPort(const ReservedPort &) = delete;
  ReservedPort &operator=(const ReservedPort &) = delete;

  [[nodiscard]] std::string number() const { return std::to_string(port_); }
  /** Waits until somebody listens. @throws std::runtime_error when nobody does in half a minute */
  void wait_for_listener() const;

private:
  int socket_;
  unsigned port_ = 0;
};

class Peer {
public:
  [[nodiscard]] std::string port() const { return port_.number(); }
  /** "127.0.0.1:PORT" */
  [[nodiscard]] std::string host() const { return "127.0.0.1:" + port(); }
  void stop();

protected:
  Peer() = default;
  ~Peer() { stop(); }
  Peer(const Peer &) = delete;
  Peer &operator=(const Peer &) = delete;

  /** Starts it as the owner of the files in its directory, and waits until it listens. */
  void start(std::vector<std::string> command);
  [[nodiscard]] std::filesystem::path file(const std::string &name) const {
    return directory_.path() / name;
  }

private:
  ReservedPort port_;
  TemporaryDirectory directory_;
  std::optional<ChildProcess> process_;
};

/** Nginx as the host of files. */
class FileServer : public Peer {
public:
  struct Options {
    /** Serves over HTTPS when set. */
    std::optional<ServerCertificate> certificate{};
    /** Further lines of its configuration of the server. */
    std::string configuration{};
  };
  using Files = std::vector<std::pair<std::string, std::string>>;

  /** @param files paths, such as "/a/b", with their contents */
  FileServer(const Files &files, const Options &options);

  /**
   * The requests so far, each as "STATUS PATH CREDENTIALS" with "-" for what is lacking. The server
   * notes them after it has answered, so this waits until there are `count`.
   */
  [[nodiscard]] std::vector<std::string> requests(std::size_t count) const;
};

/** What a proxy demands of its clients; nothing without a user. */
struct ProxyAccount {
  std::string user{};
  std::string password{};
};

/** Tinyproxy, an HTTP proxy. */
class HttpProxy : public Peer {
public:
  explicit HttpProxy(const ProxyAccount &account = {});
  /** What it says of its connections. */
  [[nodiscard]] std::string log() const { return read_file(file("log")); }
};

/** Microsocks, a SOCKS5 proxy. */
class SocksProxy : public Peer {
public:
  explicit SocksProxy(const ProxyAccount &account = {});
};

}  // namespace velkor::test

#endif
