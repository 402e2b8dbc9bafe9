/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr std::int64_t online_seconds = 15 * 60;

enum Code { code_stamp = 0, code_newsgroup = 4, code_members = 5, code_dumps = 7 };

void write_newsgroups(XmlWriter &xml, Service &service, std::int64_t since) {
  for (const Group &group : service.groups.later_than(since)) {
    xml.open_event(code_newsgroup);
    xml.element("GroupID", group.id);
    xml.element("Name", group.name);
    xml.close();
  }
}

void write_members(XmlWriter &xml, Service &service) {
  const std::int64_t online = service.accounts.seen_since(service.clock.now() - online_seconds);
  xml.open_event(code_members);
  xml.element("T", service.accounts.count());
  xml.element("N", std::to_string(online));
  xml.close();
}

void write_dumps(XmlWriter &xml, const std::vector<Dump> &dumps) {
  if (dumps.empty())
    return;
  std::string names;
  for (const Dump &dump : dumps)
    names += (names.empty() ? "" : "|") + dump.name;
  xml.open_event(code_dumps);
  xml.element("Chunks", names);
  xml.close();
}

}  // namespace

Reply availability(Service &service, const Request &request, const Account &) {
  service.dumps.seal();
  const std::int64_t since = request.number("lc");
  const std::vector<Dump> dumps = service.dumps.later_than(since, service.settings.dumps_per_reply);
  XmlWriter xml("Events");
  xml.open_event(code_stamp);
  xml.element("Stamp", dumps.empty() ? service.dumps.latest_stamp() : dumps.back().stamp);
  xml.close();
  write_newsgroups(xml, service, since);
  write_members(xml, service);
  write_dumps(xml, dumps);
  return xml_reply(xml.finish());
}

}  // namespace velkor::server::endpoints
