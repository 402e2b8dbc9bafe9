/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An HTTP listener: libsoup's server, and the faulty replies that it cannot send. */
#ifndef ZOX_SERVER_HTTP_HTTP_SERVER_H
#define ZOX_SERVER_HTTP_HTTP_SERVER_H

#include <functional>
#include <list>
#include <string>

#include <libsoup/soup.h>

#include "support/owned.h"
#include "zox-server/http/acceptor.h"
#include "zox-server/http/message.h"
#include "zox-server/http/raw_connection.h"

namespace velkor::server {

/** Where a listener listens. */
struct ListenAddress {
  std::string address;
  unsigned port = 0;
  /** What it shows its clients over HTTPS; null for HTTP. */
  OwnedObject<GTlsCertificate> certificate{};
};

class HttpServer {
public:
  using Handler = std::function<Reply(const Request &)>;

  /** Starts to listen. @throws std::runtime_error when the address is not available */
  HttpServer(Listener listener, ListenAddress address, const ConnectionLimits &limits,
             Handler handler);
  ~HttpServer();
  HttpServer(const HttpServer &) = delete;
  HttpServer &operator=(const HttpServer &) = delete;

  /** "http://ADDRESS:PORT" or "https://ADDRESS:PORT", with the actual port. */
  [[nodiscard]] std::string url() const {
    return (certificate_ ? "https://" : "http://") + acceptor_.host();
  }

private:
  static void prepare(SoupServer *server, SoupServerMessage *message, const char *path,
                      GHashTable *query, gpointer self);
  static void handle(SoupServer *server, SoupServerMessage *message, const char *path,
                     GHashTable *query, gpointer self);
  void serve(GSocket *socket);
  [[nodiscard]] OwnedObject<GIOStream> stream_over(GSocket *socket) const;
  void answer(SoupServerMessage *message);
  void answer_raw(SoupServerMessage *message, const Reply &reply, bool head_only);

  Listener listener_;
  Handler handler_;
  OwnedObject<GTlsCertificate> certificate_;
  OwnedObject<SoupServer> server_;
  Acceptor acceptor_;
  std::list<RawConnection> raw_;
};

}  // namespace velkor::server

#endif
