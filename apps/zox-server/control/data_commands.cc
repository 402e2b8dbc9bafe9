/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Commands that inspect and change the postings. */
#include "support/json.h"
#include "zox-server/control/commands.h"

namespace velkor::server::commands {
namespace {

void write_ids(Json &json, const char *name, const std::vector<std::int64_t> &ids) {
  json.begin_array(name);
  for (const std::int64_t id : ids)
    json.value(id);
  json.end_array();
}

/** The posting to change; a new one when no id is given. */
Posting posting_of(Service &service, const Request &request) {
  if (!request.has("id"))
    return {};
  const std::optional<Posting> posting = service.postings.find(request.number("id"));
  if (!posting)
    throw BadCommand("there is no posting with that id");
  return *posting;
}

/** Whether the service sets the field itself. */
bool is_read_only(const PostingField &field) {
  const std::string_view name = field.name;
  return name == "PostID" || name == "Updated";
}

}  // namespace

Reply status(const ControlContext &context, const Request &) {
  Service &service = context.service;
  return json_reply(Json()
                        .begin_object()
                        .member("now", service.clock.now())
                        .member("postings", service.postings.count())
                        .member("waiting", service.postings.waiting())
                        .member("dumps", service.dumps.count())
                        .member("stamp", service.dumps.latest_stamp())
                        .member("newsgroups", service.groups.count())
                        .member("accounts", service.accounts.count())
                        .end_object()
                        .pretty());
}

Reply advance(const ControlContext &context, const Request &request) {
  const Change wanted{count_parameter(request, "new"), count_parameter(request, "updated"),
                      count_parameter(request, "deleted"), count_parameter(request, "removed"),
                      count_parameter(request, "newsgroups")};
  context.service.clock.advance(count_parameter(request, "seconds"));
  const Changed changed = context.sample_data.change(wanted);
  Json json;
  json.begin_object().member("stamp", changed.stamp);
  write_ids(json, "new", changed.added);
  write_ids(json, "updated", changed.updated);
  write_ids(json, "deleted", changed.deleted);
  write_ids(json, "removed", changed.removed);
  return json_reply(json.end_object().pretty());
}

Reply posting(const ControlContext &context, const Request &request) {
  Service &service = context.service;
  Posting posting = posting_of(service, request);
  const std::int64_t stamp = service.change_stamp();
  if (posting.id == 0)
    posting.stamp = stamp;
  posting.updated = stamp;
  for (const Parameter &parameter : request.parameters) {
    const PostingField *field = posting_field(parameter.name);
    if (field != nullptr && !is_read_only(*field))
      set_field(posting, field->member, parameter.value);
    else if (parameter.name != "id")
      throw BadCommand("there is no posting field " + parameter.name + " that can be set");
  }
  if (posting.id == 0)
    posting.id = service.postings.add(posting);
  else
    service.postings.replace(posting);
  return json_reply(Json().begin_object().member("id", posting.id).end_object().pretty());
}

}  // namespace velkor::server::commands
