/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The member's own postings: listing them, and announcing one again. */
#include <algorithm>
#include <array>

#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

/** How long the poster may edit a posting. */
constexpr std::int64_t editable_seconds = std::int64_t{14} * 24 * 3600;

constexpr std::array<std::string_view, 11> listed_fields{"Stamp",  "Title",   "Groups", "FName",
                                                         "Status", "Poster",  "Link",   "Cat",
                                                         "SCat",   "Updated", "Rating"};

bool is_listed(const PostingField &field) {
  return std::ranges::find(listed_fields, field.name) != listed_fields.end();
}

bool can_edit(const Posting &posting, std::int64_t now) {
  return posting.status > state_deleted && posting.stamp > now - editable_seconds;
}

void write_own_posting(XmlWriter &xml, Service &service, const Posting &posting) {
  xml.open("Post");
  xml.attribute("ID", posting.id);
  for (const PostingField &field : posting_fields()) {
    if (is_listed(field))
      write_field(xml, posting, field);
  }
  xml.element("Edit", can_edit(posting, service.clock.now()) ? "y" : "n");
  xml.element("Kudos", posting.kudos);
  xml.element("Forum", service.forum.count(posting.id));
  xml.element("Reps", service.warnings.count(posting.id));
  xml.element("Reqs", std::int64_t{0});
  xml.element("Mod", posting.locked);
  xml.close();
}

Reply overview(Service &service, const Account &account) {
  XmlWriter xml("MyZOX");
  for (const Posting &posting : service.postings.by(account.name))
    write_own_posting(xml, service, posting);
  return xml_reply(xml.finish());
}

/** Announces the posting again in the next dump. */
Reply refresh(Service &service, const Request &request, const Account &account) {
  std::optional<Posting> posting = service.postings.find(request.number("id"));
  if (!posting || posting->poster != account.name)
    return text_reply(word::failed);
  posting->updated = service.change_stamp();
  service.postings.replace(*posting);
  return text_reply(word::done);
}

}  // namespace

Reply myzox(Service &service, const Request &request, const Account &account) {
  const std::string mode = request.value("mode");
  if (mode == "update")
    return refresh(service, request, account);
  return mode.empty() || mode == "list" ? overview(service, account) : text_reply(word::failed);
}

}  // namespace velkor::server::endpoints
