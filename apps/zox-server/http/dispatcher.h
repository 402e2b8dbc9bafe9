/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** From a request to its reply: faults, admission, route, log. */
#ifndef ZOX_SERVER_HTTP_DISPATCHER_H
#define ZOX_SERVER_HTTP_DISPATCHER_H

#include <optional>

#include "zox-server/http/faults.h"
#include "zox-server/http/message.h"
#include "zox-server/http/request_log.h"
#include "zox-server/service.h"

namespace velkor::server {

struct Route;

class Dispatcher {
public:
  /**
   * @param proxy who may use this server as a proxy; everyone when there is nobody named
   * @param dumps_apart whether dumps are served at an address of their own only
   */
  Dispatcher(Service &service, std::optional<Credentials> proxy, bool dumps_apart);

  Reply answer(const Request &request) noexcept;

  FaultList faults;
  RequestLog log;

private:
  Reply answer_or_fail(const Request &request, RequestLog::Outcome &outcome);
  Reply carry_out(const Request &request, const Route *route);
  Reply admit(const Request &request, const Route &route);
  [[nodiscard]] bool may_use_proxy(const Request &request) const;

  Service &service_;
  std::optional<Credentials> proxy_;
  bool dumps_apart_;
};

}  // namespace velkor::server

#endif
