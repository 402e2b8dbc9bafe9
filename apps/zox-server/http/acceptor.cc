/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/acceptor.h"

#include <stdexcept>

#include <netinet/in.h>
#include <netinet/tcp.h>

namespace velkor::server {
namespace {

constexpr unsigned retry_milliseconds = 100;
constexpr int backlog = 128;

OwnedObject<GSocketAddress> parse_address(const std::string &address, unsigned port) {
  OwnedObject<GSocketAddress> parsed(g_inet_socket_address_new_from_string(address.c_str(), port));
  if (!parsed)
    throw std::runtime_error(address + " is not an IP address");
  return parsed;
}

/** @return null on failure, with `error` set */
OwnedObject<GSocket> listen_on(GSocketAddress *address, GError **error) {
  OwnedObject<GSocket> socket(g_socket_new(g_socket_address_get_family(address),
                                           G_SOCKET_TYPE_STREAM, G_SOCKET_PROTOCOL_TCP, error));
  if (!socket)
    return nullptr;
  g_socket_set_blocking(socket.get(), FALSE);
  g_socket_set_listen_backlog(socket.get(), backlog);
  const bool listening = g_socket_bind(socket.get(), address, TRUE, error) != FALSE &&
                         g_socket_listen(socket.get(), error) != FALSE;
  return listening ? std::move(socket) : nullptr;
}

OwnedObject<GSocket> open_socket(const std::string &address, unsigned port) {
  const OwnedObject<GSocketAddress> parsed = parse_address(address, port);
  GError *error = nullptr;
  OwnedObject<GSocket> socket = listen_on(parsed.get(), &error);
  if (const OwnedError failed{error})
    throw std::runtime_error("cannot listen on " + address + " port " + std::to_string(port) +
                             ": " + failed->message);
  return socket;
}

}  // namespace

Acceptor::Acceptor(const std::string &address, unsigned port, const ConnectionLimits &limits,
                   Handler handler)
    : limits_(limits), handler_(std::move(handler)), socket_(open_socket(address, port)) {
  resume();
}

std::string Acceptor::host() const {
  const OwnedObject<GSocketAddress> local(g_socket_get_local_address(socket_.get(), nullptr));
  const OwnedText text(g_socket_connectable_to_string(G_SOCKET_CONNECTABLE(local.get())));
  return text.get();
}

void Acceptor::resume() {
  incoming_ = EventSource::socket(socket_.get(), G_IO_IN, [this] { return accept_next(); });
}

bool Acceptor::accept_next() {
  connections_.remove_if(
      [](const auto &connection) { return g_socket_is_closed(connection.get()) != FALSE; });
  if (connections_.size() >= limits_.max_connections)
    return pause();
  GError *error = nullptr;
  OwnedObject<GSocket> connection(g_socket_accept(socket_.get(), nullptr, &error));
  const OwnedError failed(error);
  if (connection)
    start(std::move(connection));
  else if (g_error_matches(failed.get(), G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK) == FALSE)
    return pause();
  return true;
}

bool Acceptor::pause() {
  retry_ = EventSource::timer(retry_milliseconds, [this] {
    resume();
    return false;
  });
  return false;
}

void Acceptor::start(OwnedObject<GSocket> connection) {
  g_socket_set_timeout(connection.get(), limits_.idle_timeout_seconds);
  g_socket_set_option(connection.get(), IPPROTO_TCP, TCP_NODELAY, TRUE, nullptr);
  handler_(connection.get());
  connections_.push_back(std::move(connection));
}

}  // namespace velkor::server
