/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The control port: changes the data, injects faults, reads the request log. */
#ifndef ZOX_SERVER_CONTROL_CONTROL_H
#define ZOX_SERVER_CONTROL_CONTROL_H

#include "zox-server/http/dispatcher.h"
#include "zox-server/http/message.h"
#include "zox-server/sample_data/sample_data.h"
#include "zox-server/service.h"

namespace velkor::server {

/** What the control commands operate on. */
struct ControlContext {
  Service &service;
  Dispatcher &dispatcher;
  SampleData &sample_data;
};

Reply answer_control(const ControlContext &context, const Request &request) noexcept;

}  // namespace velkor::server

#endif
