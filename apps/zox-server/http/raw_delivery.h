/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Sends replies that break the rules of HTTP, over connections taken out of the server's hands. */
#ifndef ZOX_SERVER_HTTP_RAW_DELIVERY_H
#define ZOX_SERVER_HTTP_RAW_DELIVERY_H

#include <list>
#include <memory>

#include <gio/gio.h>

#include "support/owned.h"
#include "zox-server/http/message.h"

namespace velkor::server {

/** One connection whose bytes are written by the main loop; closes it in the end. */
class RawConnection;

class RawDeliveries {
public:
  RawDeliveries();
  ~RawDeliveries();

  /** Answers over `connection` as `reply.delivery` says. With `head_only` no body follows. */
  void start(OwnedObject<GIOStream> connection, const Reply &reply, bool head_only);

private:
  std::list<std::unique_ptr<RawConnection>> connections_;
};

}  // namespace velkor::server

#endif
