/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Sends a reply that breaks the rules of HTTP, over a connection taken from the server's hands. */
#ifndef ZOX_SERVER_HTTP_RAW_CONNECTION_H
#define ZOX_SERVER_HTTP_RAW_CONNECTION_H

#include <optional>
#include <string>

#include <libsoup/soup.h>

#include "support/owned.h"
#include "zox-server/http/message.h"
#include "zox-server/support/event_source.h"

namespace velkor::server {

class RawConnection {
public:
  /** Begins to answer as `reply.delivery` says; without its body when `head_only`. */
  RawConnection(SoupServerMessage *message, const Reply &reply, bool head_only);
  ~RawConnection();
  RawConnection(const RawConnection &) = delete;
  RawConnection &operator=(const RawConnection &) = delete;

  /** Whether the connection is closed. */
  [[nodiscard]] bool is_over() const { return g_socket_is_closed(socket_.get()) != 0; }

private:
  [[nodiscard]] EventSource first_event(const Reply &reply);
  bool write_some();
  bool wait_for_end();
  /** @return false, so that no event follows */
  bool close();

  OwnedObject<GSocket> socket_;
  OwnedObject<GIOStream> connection_;
  std::string bytes_;
  std::size_t sent_ = 0;
  std::size_t bytes_at_once_;
  std::optional<EventSource> event_;
};

}  // namespace velkor::server

#endif
