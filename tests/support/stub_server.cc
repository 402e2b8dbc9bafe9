/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/stub_server.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <arpa/inet.h>
#include <glib.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velkor::test {
namespace {

std::string lower_case(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), g_ascii_tolower);
  return result;
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t\r");
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/** Cuts `text` behind the first `separator`, or takes all of it, and returns what came before. */
std::string_view take_until(std::string_view &text, std::string_view separator) {
  const auto place = std::min(text.find(separator), text.size());
  const std::string_view before = text.substr(0, place);
  text.remove_prefix(std::min(place + separator.size(), text.size()));
  return before;
}

std::string decoded(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && i + 2 < text.size() && g_ascii_isxdigit(text[i + 1]) &&
        g_ascii_isxdigit(text[i + 2])) {
      result += static_cast<char>(g_ascii_xdigit_value(text[i + 1]) * 16 +
                                  g_ascii_xdigit_value(text[i + 2]));
      i += 2;
    } else {
      result += text[i];
    }
  }
  return result;
}

/** The path and query of a target; a proxy is sent the whole address. */
std::string_view without_host(std::string_view target) {
  constexpr std::string_view scheme = "http://";
  if (!target.starts_with(scheme))
    return target;
  target.remove_prefix(scheme.size());
  target.remove_prefix(std::min(target.find('/'), target.size()));
  return target;
}

std::string head_of(const StubReply &reply) {
  std::string head = "HTTP/1.1 " + std::to_string(reply.status) + " Scripted\r\n";
  for (const auto &[name, value] : reply.headers)
    head += name + ": " + value + "\r\n";
  head +=
      "Content-Length: " + std::to_string(reply.claim_length.value_or(reply.body.size())) + "\r\n";
  return head + "Connection: close\r\n\r\n";
}

void send_all(int connection, std::string_view text) {
  while (!text.empty()) {
    const ssize_t sent = send(connection, text.data(), text.size(), MSG_NOSIGNAL);
    if (sent <= 0)
      return;
    text.remove_prefix(static_cast<std::size_t>(sent));
  }
}

/** Lets the coming close() send a reset. */
void close_by_reset(int connection) {
  const linger none{.l_onoff = 1, .l_linger = 0};
  setsockopt(connection, SOL_SOCKET, SO_LINGER, &none, sizeof none);
}

void require(bool done, const char *what) {
  if (!done)
    throw std::runtime_error(std::string("the stub server cannot ") + what);
}

}  // namespace

std::string StubRequest::parameter(std::string_view name) const {
  const auto found =
      std::ranges::find(parameters, name, &std::pair<std::string, std::string>::first);
  return found == parameters.end() ? "" : found->second;
}

StubRequest parse_request(std::string_view head) {
  StubRequest request;
  std::string_view line = take_until(head, "\r\n");
  request.method = take_until(line, " ");
  request.target = take_until(line, " ");
  std::string_view query = without_host(request.target);
  request.path = take_until(query, "?");
  while (!query.empty()) {
    std::string_view value = take_until(query, "&");
    const std::string_view name = take_until(value, "=");
    request.parameters.emplace_back(decoded(name), decoded(value));
  }
  while (!head.empty()) {
    std::string_view value = take_until(head, "\r\n");
    const std::string_view name = take_until(value, ":");
    request.headers.emplace(lower_case(name), trimmed(value));
  }
  return request;
}

StubServer::StubServer()
    : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)), stop_reader_(-1), stop_writer_(-1),
      port_(0) {
  require(listener_ >= 0, "make a socket");
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  auto *generic = reinterpret_cast<sockaddr *>(&address);
  socklen_t length = sizeof address;
  require(bind(listener_, generic, length) == 0, "bind");
  require(listen(listener_, SOMAXCONN) == 0, "listen");
  require(getsockname(listener_, generic, &length) == 0, "learn its port");
  port_ = ntohs(address.sin_port);
  std::array<int, 2> ends{};
  require(pipe(ends.data()) == 0, "make a pipe");
  stop_reader_ = ends[0];
  stop_writer_ = ends[1];
  thread_ = std::thread(&StubServer::serve, this);
}

StubServer::~StubServer() {
  close(stop_writer_);
  thread_.join();
  close(stop_reader_);
  close(listener_);
}

std::string StubServer::host() const {
  return "127.0.0.1:" + std::to_string(port_);
}

void StubServer::reply(const std::string &path, StubReply reply) {
  const std::lock_guard lock(mutex_);
  scripts_[path].standing = std::move(reply);
}

void StubServer::reply(const std::string &path, std::string body) {
  reply(path, StubReply{.body = std::move(body)});
}

void StubServer::reply_once(const std::string &path, StubReply reply) {
  const std::lock_guard lock(mutex_);
  scripts_[path].once.push_back(std::move(reply));
}

void StubServer::reply_once(const std::string &path, std::string body) {
  reply_once(path, StubReply{.body = std::move(body)});
}

std::vector<StubRequest> StubServer::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

std::vector<StubRequest> StubServer::requests(std::string_view path) const {
  std::vector<StubRequest> found = requests();
  std::erase_if(found, [&](const StubRequest &request) { return request.path != path; });
  return found;
}

void StubServer::serve() {
  while (wait_for(listener_)) {
    const int connection = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
    if (connection < 0)
      continue;
    serve_connection(connection);
    close(connection);
  }
}

void StubServer::serve_connection(int connection) {
  const std::optional<std::string> head = read_head(connection);
  if (head)
    answer(connection, take_reply(parse_request(*head)));
}

std::optional<std::string> StubServer::read_head(int connection) const {
  std::string text;
  std::array<char, 4096> block{};
  while (wait_for(connection)) {
    const ssize_t length = recv(connection, block.data(), block.size(), 0);
    if (length <= 0)
      return std::nullopt;
    text.append(block.data(), static_cast<std::size_t>(length));
    if (const auto end = text.find("\r\n\r\n"); end != std::string::npos)
      return text.substr(0, end);
  }
  return std::nullopt;
}

void StubServer::answer(int connection, const StubReply &reply) const {
  if (!reply.close_at_once) {
    const std::string_view body = reply.body;
    send_all(connection, head_of(reply));
    send_all(connection, body.substr(0, reply.send_only.value_or(body.size())));
  }
  std::array<char, 1> ignored{};
  if (reply.stall && wait_for(connection))
    recv(connection, ignored.data(), ignored.size(), 0);
  if (reply.reset)
    close_by_reset(connection);
}

bool StubServer::wait_for(int descriptor) const {
  std::array<pollfd, 2> watched{{{.fd = descriptor, .events = POLLIN, .revents = 0},
                                 {.fd = stop_reader_, .events = POLLIN, .revents = 0}}};
  while (poll(watched.data(), watched.size(), -1) < 0)
    continue;
  return watched[1].revents == 0;
}

StubReply StubServer::take_reply(const StubRequest &request) {
  const std::lock_guard lock(mutex_);
  requests_.push_back(request);
  const auto script = scripts_.find(request.path);
  if (script == scripts_.end())
    return {.status = 404};
  auto &[once, standing] = script->second;
  if (once.empty())
    return standing.value_or(StubReply{.status = 404});
  StubReply reply = std::move(once.front());
  once.pop_front();
  return reply;
}

}  // namespace velkor::test
