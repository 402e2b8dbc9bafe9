/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What an update fetches: what is new, the dumps and the newsgroups. */
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr std::int64_t online_seconds = std::int64_t{15} * 60;
constexpr std::string_view dump_suffix = ".gz";

enum Code { code_stamp = 0, code_newsgroup = 4, code_members = 5, code_dumps = 7 };

void write_new_groups(XmlWriter &xml, Service &service, std::int64_t since) {
  for (const Group &group : service.groups.newer_than(since)) {
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
  xml.element("N", online);
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

/** A gzip file by itself; the gzip is not a content encoding. */
Reply file_reply(std::string content) {
  Reply reply = text_reply(std::move(content));
  reply.type = "application/gzip";
  reply.headers.push_back({"Cache-Control", "public, max-age=31536000, immutable"});
  return reply;
}

}  // namespace

Reply availability(Service &service, const Request &request, const Account &) {
  service.dumps.publish();
  const std::int64_t since = request.number("lc");
  const std::vector<Dump> dumps = service.dumps.newer_than(since, service.settings.dumps_per_reply);
  XmlWriter xml("Events");
  xml.open_event(code_stamp);
  xml.element("Stamp", dumps.empty() ? service.dumps.latest_stamp() : dumps.back().stamp);
  xml.close();
  write_new_groups(xml, service, since);
  write_members(xml, service);
  write_dumps(xml, dumps);
  return xml_reply(xml.finish());
}

Reply dump(Service &service, const Request &request, const Account &) {
  std::string_view name = std::string_view(request.path).substr(dump_directory.size());
  if (!name.ends_with(dump_suffix))
    return failure(404, "There is no such dump.");
  name.remove_suffix(dump_suffix.size());
  std::optional<std::string> content = service.dumps.content(std::string(name));
  return content ? file_reply(std::move(*content)) : failure(404, "There is no such dump.");
}

Reply newsgroups(Service &service, const Request &, const Account &) {
  XmlWriter xml("Groups");
  for (const Group &group : service.groups.newer_than(0)) {
    xml.open("Group");
    xml.attribute("ID", group.id);
    xml.element("Name", group.name);
    xml.close();
  }
  return xml_reply(xml.finish());
}

}  // namespace velkor::server::endpoints
