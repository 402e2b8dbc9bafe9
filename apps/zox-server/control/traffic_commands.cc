/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Commands about the faults to inject and the requests received. */
#include "support/json.h"
#include "zox-server/control/commands.h"

namespace velkor::server::commands {

Reply add_fault(const ControlContext &context, const Request &request) {
  Fault fault;
  fault.path = required(request, "path");
  fault.kind = find_fault_kind(required(request, "kind"));
  fault.times = count_parameter(request, "times");
  fault.argument = request.value("argument");
  if (fault.kind == nullptr)
    throw BadCommand("there is no such kind of fault");
  context.dispatcher.faults().add(fault);
  return ok_reply();
}

Reply list_faults(const ControlContext &context, const Request &) {
  Json json;
  json.begin_array();
  for (const Fault &fault : context.dispatcher.faults().all()) {
    json.begin_object().member("path", fault.path).member("kind", fault.kind->name);
    json.member("times", fault.times).member("argument", fault.argument).end_object();
  }
  return json_reply(json.end_array().pretty());
}

Reply clear_faults(const ControlContext &context, const Request &) {
  context.dispatcher.faults().clear();
  return ok_reply();
}

Reply list_requests(const ControlContext &context, const Request &) {
  return json_reply(context.dispatcher.log().json());
}

Reply clear_requests(const ControlContext &context, const Request &) {
  context.dispatcher.log().clear();
  return ok_reply();
}

}  // namespace velkor::server::commands
