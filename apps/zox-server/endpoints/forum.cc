/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Reading and writing the reactions to a posting. */
#include <set>

#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

enum Code {
  code_data_whole = 0,
  code_reaction = 1,
  code_changed = 2,
  code_kudos = 3,
  code_data = 4
};

constexpr std::size_t max_body_size = std::size_t{16} * 1024;

void write_data(XmlWriter &xml, Service &service, const Posting &posting, std::int64_t since) {
  xml.open_event(since > 0 ? code_data : code_data_whole);
  xml.element("Stamp", service.forum.stamp(posting.id));
  xml.element("Status", posting.status);
  write_forum_data(xml, posting);
  xml.close();
}

void write_reaction(XmlWriter &xml, Service &service, const Reaction &reaction, int code) {
  xml.open_event(code);
  xml.element("MessID", reaction.id);
  xml.element("Author", reaction.author);
  xml.element("Body", reaction.body);
  xml.element("Stamp", reaction.stamp);
  xml.element("Edit", reaction.edit);
  if (reaction.reply > 0)
    xml.element("Reply", reaction.reply);
  const std::optional<Profile> author = service.accounts.profile(reaction.author);
  if (author && !author->avatar.empty())
    xml.element("Avatar", author->avatar);
  xml.close();
}

/** A reaction written after `since` is new to the client; an earlier one has changed. */
void write_reactions(XmlWriter &xml, Service &service, const std::vector<Reaction> &reactions,
                     std::int64_t since) {
  for (const Reaction &reaction : reactions) {
    const bool is_new = reaction.stamp > since;
    if (!is_new)
      write_reaction(xml, service, reaction, code_changed);
    else if (reaction.edit >= 0)
      write_reaction(xml, service, reaction, code_reaction);
  }
}

/** Clients apply kudos only to the reactions that precede them, so these come last. */
void write_kudos(XmlWriter &xml, Service &service, const std::vector<Reaction> &reactions) {
  std::set<std::string> authors;
  for (const Reaction &reaction : reactions) {
    if (reaction.edit < 0 || !authors.insert(reaction.author).second)
      continue;
    xml.open_event(code_kudos);
    xml.element("User", reaction.author);
    xml.element("Kudos", service.postings.kudos_of(reaction.author));
    xml.close();
  }
}

/** The reply that rejects a reaction, null when it is acceptable. */
const char *rejection_of(Service &service, const Posting *posting, const Request &request) {
  const std::string body = request.value("b");
  if (posting == nullptr || posting->status <= state_deleted)
    return word::not_found;
  if (posting->locked != 0)
    return word::locked;
  if (body.empty() || body.size() > max_body_size)
    return word::failed;
  const std::int64_t reply = request.number("r");
  const std::optional<Reaction> answered = service.forum.find(reply);
  const bool fits = reply == 0 || (answered && answered->posting == posting->id);
  return fits ? nullptr : word::failed;
}

}  // namespace

Reply forum(Service &service, const Request &request, const Account &) {
  const std::optional<Posting> posting = service.postings.find(request.number("id"));
  if (!posting)
    return text_reply(word::not_found);
  const std::int64_t since = request.number("lastcheck");
  const std::vector<Reaction> reactions = service.forum.changed_after(posting->id, since);
  XmlWriter xml("Forum");
  write_data(xml, service, *posting, since);
  write_reactions(xml, service, reactions, since);
  write_kudos(xml, service, reactions);
  return xml_reply(xml.finish());
}

Reply react(Service &service, const Request &request, const Account &account) {
  if (request.value("m") != "add")
    return text_reply(word::failed);
  const std::optional<Posting> posting = service.postings.find(request.number("s"));
  if (const char *rejection = rejection_of(service, posting ? &*posting : nullptr, request))
    return text_reply(rejection);
  Reaction reaction;
  reaction.posting = posting->id;
  reaction.author = account.name;
  reaction.body = request.value("b");
  reaction.reply = request.number("r");
  const std::int64_t id = service.forum.add(reaction, service.clock.now());
  return text_reply(std::string(word::done) + std::to_string(id));
}

}  // namespace velkor::server::endpoints
