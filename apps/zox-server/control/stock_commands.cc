/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Looking at the stock and changing it. */
#include "zox-server/control/commands.h"
#include "zox-server/support/json.h"

namespace velkor::server::commands {
namespace {

void write_ids(JsonWriter &json, const char *name, const std::vector<std::int64_t> &ids) {
  json.name(name).begin_array();
  for (const std::int64_t id : ids)
    json.value(id);
  json.end_array();
}

/** The posting to change, or a new one. */
Posting posting_of(Service &service, const Request &request) {
  if (!request.has("id"))
    return {};
  const std::optional<Posting> posting = service.postings.find(request.number("id"));
  if (!posting)
    throw BadCommand("there is no posting of that id");
  return *posting;
}

/** Fields that the service fills itself. */
bool is_own_field(const PostingField &field) {
  const std::string_view name = field.name;
  return name == "PostID" || name == "Updated";
}

}  // namespace

Reply status(const Controlled &controlled, const Request &) {
  Service &service = controlled.service;
  return json_reply(JsonWriter()
                        .begin_object()
                        .member("now", service.clock.now())
                        .member("postings", service.postings.count())
                        .member("waiting", service.postings.waiting())
                        .member("dumps", service.dumps.count())
                        .member("stamp", service.dumps.latest_stamp())
                        .member("newsgroups", service.groups.count())
                        .member("accounts", service.accounts.count())
                        .end_object()
                        .finish());
}

Reply advance(const Controlled &controlled, const Request &request) {
  const Change wanted{counted(request, "new"), counted(request, "updated"),
                      counted(request, "deleted"), counted(request, "removed"),
                      counted(request, "newsgroups")};
  controlled.service.clock.advance(counted(request, "seconds"));
  const Changed changed = controlled.stock.change(wanted);
  JsonWriter json;
  json.begin_object().member("stamp", changed.stamp);
  write_ids(json, "new", changed.added);
  write_ids(json, "updated", changed.updated);
  write_ids(json, "deleted", changed.deleted);
  write_ids(json, "removed", changed.removed);
  return json_reply(json.end_object().finish());
}

Reply posting(const Controlled &controlled, const Request &request) {
  Service &service = controlled.service;
  Posting posting = posting_of(service, request);
  const std::int64_t stamp = service.change_stamp();
  if (posting.id == 0)
    posting.stamp = stamp;
  posting.updated = stamp;
  for (const Parameter &parameter : request.parameters) {
    const PostingField *field = posting_field(parameter.name);
    if (field != nullptr && !is_own_field(*field))
      set_field(posting, field->member, parameter.value);
    else if (parameter.name != "id")
      throw BadCommand("a posting has no field " + parameter.name + " to be set");
  }
  if (posting.id == 0)
    posting.id = service.postings.add(posting);
  else
    service.postings.replace(posting);
  return json_reply(JsonWriter().begin_object().member("id", posting.id).end_object().finish());
}

}  // namespace velkor::server::commands
