/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/http/raw_connection.h"

#include <algorithm>

#include <sys/socket.h>

namespace velkor::server {
namespace {

constexpr std::int64_t writes_per_second = 10;

/** The status line and headers; the length may be wrong on purpose. */
std::string head_of(const Reply &reply, std::size_t length) {
  std::string head = "HTTP/1.1 " + std::to_string(reply.status) + " " +
                     soup_status_get_phrase(reply.status) + "\r\nContent-Type: " + reply.type +
                     "\r\nContent-Length: " + std::to_string(length) + "\r\nConnection: close\r\n";
  for (const Parameter &header : reply.headers)
    head += header.name + ": " + header.value + "\r\n";
  return head + "\r\n";
}

/** Everything that is sent. */
std::string bytes_of(const Reply &reply, bool head_only) {
  const std::size_t length = reply.body.size();
  const std::string body = head_only ? std::string() : reply.body;
  switch (reply.delivery) {
  case Delivery::drop:
    return head_of(reply, length) + body.substr(0, body.size() / 2);
  case Delivery::length_short:
    return head_of(reply, length / 2) + body;
  case Delivery::length_long:
    return head_of(reply, length + length / 2 + 1) + body;
  case Delivery::drip:
    return head_of(reply, length) + body;
  default:
    return {};
  }
}

/** Makes close() reset the connection. */
void reset_on_close(GSocket *socket) {
  const linger at_once{1, 0};
  setsockopt(g_socket_get_fd(socket), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
}

bool would_block(const OwnedError &error) {
  return g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_WOULD_BLOCK) != FALSE;
}

}  // namespace

RawConnection::RawConnection(SoupServerMessage *message, OwnedObject<GSocket> socket,
                             const Reply &reply, bool head_only)
    : socket_(std::move(socket)), stream_(soup_server_message_steal_connection(message)),
      bytes_(bytes_of(reply, head_only)), bytes_at_once_(bytes_.size()) {
  g_socket_set_blocking(socket_.get(), FALSE);
  // A stalled connection stays open, however long it is idle.
  g_socket_set_timeout(socket_.get(), 0);
  if (reply.delivery == Delivery::reset)
    reset_on_close(socket_.get());
  event_ = first_event(reply);
}

RawConnection::~RawConnection() {
  close();
}

EventSource RawConnection::first_event(const Reply &reply) {
  if (reply.delivery == Delivery::stall)
    return EventSource::readable(input(), [this] { return discard_input(); });
  if (reply.delivery != Delivery::drip)
    return EventSource::writable(output(), [this] { return write_some(); });
  const std::int64_t writes =
      std::clamp<std::int64_t>(reply.bytes_per_second, 1, writes_per_second);
  bytes_at_once_ = static_cast<std::size_t>(reply.bytes_per_second / writes);
  return EventSource::timer(static_cast<unsigned>(1000 / writes), [this] { return write_some(); });
}

bool RawConnection::write_some() {
  const std::size_t wanted = std::min(bytes_.size() - sent_, bytes_at_once_);
  gssize written = 0;
  GError *error = nullptr;
  if (wanted > 0)
    written = g_pollable_output_stream_write_nonblocking(
        G_POLLABLE_OUTPUT_STREAM(output()), bytes_.data() + sent_, wanted, nullptr, &error);
  if (written < 0)
    return would_block(OwnedError(error)) || close();
  sent_ += static_cast<std::size_t>(written);
  return sent_ < bytes_.size() || close();
}

bool RawConnection::discard_input() {
  char byte = 0;
  GError *error = nullptr;
  const gssize length = g_pollable_input_stream_read_nonblocking(G_POLLABLE_INPUT_STREAM(input()),
                                                                 &byte, 1, nullptr, &error);
  return length > 0 || would_block(OwnedError(error)) || close();
}

bool RawConnection::close() {
  g_socket_close(socket_.get(), nullptr);
  return false;
}

}  // namespace velkor::server
