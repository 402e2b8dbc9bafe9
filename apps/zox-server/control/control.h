/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The control address: the stock changes, faults and accounts are set, the log is read. */
#ifndef ZOX_SERVER_CONTROL_CONTROL_H
#define ZOX_SERVER_CONTROL_CONTROL_H

#include "zox-server/http/dispatcher.h"
#include "zox-server/http/message.h"
#include "zox-server/service.h"
#include "zox-server/stock/stock.h"

namespace velkor::server {

/** What a control command works on. */
struct Controlled {
  Service &service;
  Dispatcher &dispatcher;
  Stock &stock;
};

Reply answer_control(const Controlled &controlled, const Request &request) noexcept;

}  // namespace velkor::server

#endif
