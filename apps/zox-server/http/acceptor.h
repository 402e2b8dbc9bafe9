/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Accepts TCP connections, within limits. */
#ifndef ZOX_SERVER_HTTP_ACCEPTOR_H
#define ZOX_SERVER_HTTP_ACCEPTOR_H

#include <functional>
#include <list>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "support/owned.h"
#include "zox-server/support/event_source.h"

namespace velkor::server {

struct ConnectionLimits {
  /** Open connections per listener; further clients wait until one is closed. */
  std::size_t max_connections = 256;
  /** A connection without traffic for this long is closed; 0 for no timeout. */
  unsigned idle_timeout_seconds = 60;
};

/**
 * Accepts connections. At the limit, or when the process is out of file descriptors, it pauses and
 * tries again a little later; SoupServer's own listener stops for good at the first failure.
 */
class Acceptor {
public:
  using Handler = std::function<void(GSocket *)>;

  /** Starts to listen. @throws std::runtime_error when the address is not available */
  Acceptor(const std::string &address, unsigned port, const ConnectionLimits &limits,
           Handler handler);

  /** "ADDRESS:PORT", with the actual port. */
  [[nodiscard]] std::string host() const;

private:
  void resume();
  /** @return whether to wait for the next connection; otherwise it tries again later */
  bool accept_next();
  bool pause();
  void start(OwnedObject<GSocket> connection);

  ConnectionLimits limits_;
  Handler handler_;
  OwnedObject<GSocket> socket_;
  std::list<OwnedObject<GSocket>> connections_;
  std::optional<EventSource> incoming_;
  std::optional<EventSource> retry_;
};

}  // namespace velkor::server

#endif
