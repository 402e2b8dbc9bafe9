/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Turns a request into its reply: faults, authorization, routing, logging. */
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
   * @param proxy who may use this server as a proxy; everyone without a value
   * @param separate_dumps whether dumps are served only by a listener of their own
   */
  Dispatcher(Service &service, std::optional<Credentials> proxy, bool separate_dumps);

  Reply answer(const Request &request) noexcept;

  FaultList &faults() { return faults_; }
  RequestLog &log() { return log_; }

private:
  Reply answer_or_throw(const Request &request, RequestLog::Outcome &outcome);
  Reply execute(const Request &request, const Route *route);
  Reply authorize(const Request &request, const Route &route);
  [[nodiscard]] bool may_use_proxy(const Request &request) const;

  Service &service_;
  FaultList faults_;
  RequestLog log_;
  std::optional<Credentials> proxy_;
  bool separate_dumps_;
};

}  // namespace velkor::server

#endif
