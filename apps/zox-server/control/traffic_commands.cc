/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Faults to commit and requests seen. */
#include "zox-server/control/commands.h"
#include "zox-server/support/json.h"

namespace velkor::server::commands {

Reply add_fault(const Controlled &controlled, const Request &request) {
  Fault fault;
  fault.path = needed(request, "path");
  fault.kind = find_fault_kind(needed(request, "kind"));
  fault.times = counted(request, "times");
  fault.argument = request.value("argument");
  if (fault.kind == nullptr)
    throw BadCommand("there is no such kind of fault");
  controlled.dispatcher.faults.add(fault);
  return done();
}

Reply list_faults(const Controlled &controlled, const Request &) {
  JsonWriter json;
  json.begin_array();
  for (const Fault &fault : controlled.dispatcher.faults.all()) {
    json.begin_object().member("path", fault.path).member("kind", fault.kind->name);
    json.member("times", fault.times).member("argument", fault.argument).end_object();
  }
  return json_reply(json.end_array().finish());
}

Reply clear_faults(const Controlled &controlled, const Request &) {
  controlled.dispatcher.faults.clear();
  return done();
}

Reply list_requests(const Controlled &controlled, const Request &) {
  return json_reply(controlled.dispatcher.log.json());
}

Reply clear_requests(const Controlled &controlled, const Request &) {
  controlled.dispatcher.log.clear();
  return done();
}

}  // namespace velkor::server::commands
