/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A scripted HTTP/1.1 server on a loopback port of the system's choice. It notes every request,
 * answers as told, one connection after the other, and can misbehave in ways that a real server
 * would not on demand.
 */
#ifndef VELKOR_TESTS_SUPPORT_STUB_SERVER_H
#define VELKOR_TESTS_SUPPORT_STUB_SERVER_H

#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace velkor::test {

struct StubRequest {
  std::string method;
  std::string target;  // as sent
  std::string path;    // without host and query, not decoded
  std::vector<std::pair<std::string, std::string>> parameters;  // decoded, in order
  std::map<std::string, std::string> headers;                   // names in lower case

  /** The decoded value of the first parameter of that name; empty without one. */
  [[nodiscard]] std::string parameter(std::string_view name) const;
};

struct StubReply {
  int status = 200;
  std::string body{};
  std::vector<std::pair<std::string, std::string>> headers{};  // beside Content-Length, Connection

  bool close_at_once = false;                 // closes without a word
  std::optional<std::size_t> send_only{};     // closes after this many bytes of the body
  std::optional<std::size_t> claim_length{};  // announces this length instead of the body's
  bool stall = false;  // sends what it has, then keeps the connection until the client leaves
  bool reset = false;  // ends the connection with a reset instead of a close
};

/** Reads one request from the text between the connection's start and the empty line. */
StubRequest parse_request(std::string_view head);

class StubServer {
public:
  StubServer();
  ~StubServer();
  StubServer(const StubServer &) = delete;
  StubServer &operator=(const StubServer &) = delete;

  /** "127.0.0.1:PORT" */
  [[nodiscard]] std::string host() const;

  /** Answers every request of that path so from now on; without a reply it is 404 and empty. */
  void reply(const std::string &path, StubReply reply);
  void reply(const std::string &path, std::string body);
  /** Answers one request of that path so, before the standing reply and after earlier ones. */
  void reply_once(const std::string &path, StubReply reply);
  void reply_once(const std::string &path, std::string body);

  /** The requests so far, in order. */
  [[nodiscard]] std::vector<StubRequest> requests() const;
  [[nodiscard]] std::vector<StubRequest> requests(std::string_view path) const;

private:
  struct Script {
    std::deque<StubReply> once;
    std::optional<StubReply> standing;
  };

  void serve();
  void serve_connection(int connection);
  /** Reads up to the empty line; nothing when the client leaves or the server stops. */
  std::optional<std::string> read_head(int connection) const;
  void answer(int connection, const StubReply &reply) const;
  /** Waits until `descriptor` can be read; false when the server stops. */
  [[nodiscard]] bool wait_for(int descriptor) const;
  StubReply take_reply(const StubRequest &request);

  int listener_;
  int stop_reader_;
  int stop_writer_;
  int port_;
  mutable std::mutex mutex_;
  std::map<std::string, Script> scripts_;
  std::vector<StubRequest> requests_;
  std::thread thread_;
};

}  // namespace velkor::test

#endif
