/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Sends a reply that violates HTTP over a connection taken over from libsoup. */
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
  /** Starts sending as `reply.delivery` says; without the body when `head_only`. `socket` is that
   * of the message. */
  RawConnection(SoupServerMessage *message, OwnedObject<GSocket> socket, const Reply &reply,
                bool head_only);
  ~RawConnection();
  RawConnection(const RawConnection &) = delete;
  RawConnection &operator=(const RawConnection &) = delete;

  [[nodiscard]] bool is_closed() const { return g_socket_is_closed(socket_.get()) != 0; }

private:
  [[nodiscard]] EventSource first_event(const Reply &reply);
  [[nodiscard]] GInputStream *input() { return g_io_stream_get_input_stream(stream_.get()); }
  [[nodiscard]] GOutputStream *output() { return g_io_stream_get_output_stream(stream_.get()); }
  bool write_some();
  bool discard_input();
  /** @return false, which ends the event source */
  bool close();

  OwnedObject<GSocket> socket_;
  /** What is sent and received over the socket, encrypted if the listener's connections are. */
  OwnedObject<GIOStream> stream_;
  std::string bytes_;
  std::size_t sent_ = 0;
  std::size_t bytes_at_once_;
  std::optional<EventSource> event_;
};

}  // namespace velkor::server

#endif
