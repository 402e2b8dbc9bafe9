/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A scripted HTTP/1.1 server on a loopback port of the system's choice. It records every request
 * and answers it as scripted, one reply per connection. It can also send broken replies, which a
 * real server would not produce on demand.
 */
#ifndef VELKOR_TESTS_SUPPORT_STUB_SERVER_H
#define VELKOR_TESTS_SUPPORT_STUB_SERVER_H

#include <cstddef>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include <libsoup/soup.h>

#include "support/owned.h"

namespace velkor::test {

struct StubRequest {
  std::string method;
  std::string target;  // the path and the query; the whole URL when it names another server
  std::string path;    // without host and query, not decoded
  std::vector<std::pair<std::string, std::string>> parameters;  // decoded, in order
  std::map<std::string, std::string> headers;                   // names in lower case

  /** The decoded value of the first parameter of that name; empty without one. */
  [[nodiscard]] std::string parameter(std::string_view name) const;
};

struct StubReply {
  int status = 200;
  std::string body{};
  /** In addition to Content-Length and Connection. */
  std::vector<std::pair<std::string, std::string>> headers{};

  bool close_at_once = false;                 // closes the connection without sending anything
  std::optional<std::size_t> send_only{};     // closes after this many bytes of the body
  std::optional<std::size_t> claim_length{};  // announces this length instead of the body's
  bool stall = false;  // sends what it has, then keeps the connection open until the server ends
  bool reset = false;  // ends the connection with a reset instead of a close
  bool keep_alive = false;  // lets the client keep the connection
};

class StubServer {
public:
  StubServer();
  ~StubServer();
  StubServer(const StubServer &) = delete;
  StubServer &operator=(const StubServer &) = delete;

  /** "127.0.0.1:PORT" */
  [[nodiscard]] const std::string &host() const { return host_; }

  /** The reply to every request of that path from now on; without one it is 404 and empty. */
  void reply(const std::string &path, StubReply reply);
  void reply(const std::string &path, std::string body);
  /** The reply to one request of that path, after earlier ones of this kind and before reply(). */
  void reply_once(const std::string &path, StubReply reply);
  void reply_once(const std::string &path, std::string body);

  /** The requests so far, in order. */
  [[nodiscard]] std::vector<StubRequest> requests() const;
  [[nodiscard]] std::vector<StubRequest> requests(std::string_view path) const;
  /** How often a request came while another client held its connection without using it. */
  [[nodiscard]] int clients_kept_waiting() const;

private:
  struct Script {
    std::deque<StubReply> once;
    std::optional<StubReply> standing;
  };

  static void handle(SoupServer *server, SoupServerMessage *message, const char *path,
                     GHashTable *query, gpointer self) noexcept;
  void listen();
  void serve(const std::stop_token &stop);
  void send_raw(SoupServerMessage *message, const StubReply &reply);
  /** Counts the client of `socket` if a server of one connection would keep it waiting. */
  void count_waiting_client(GSocket *socket);
  StubReply take_reply(const StubRequest &request);

  std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>> context_;
  OwnedObject<SoupServer> server_;
  OwnedObject<GSocketService> service_;
  std::string host_;
  std::vector<OwnedObject<GIOStream>> stalled_;
  std::vector<OwnedObject<GSocket>> kept_;
  mutable std::mutex mutex_;
  std::map<std::string, Script> scripts_;
  std::vector<StubRequest> requests_;
  int clients_kept_waiting_ = 0;
  std::jthread thread_;
};

}  // namespace velkor::test

#endif
