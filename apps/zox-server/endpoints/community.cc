/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Kudos, warnings to the moderators and member profiles. */
#include <algorithm>

#include "support/numbers.h"
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr std::int64_t max_kudos = 10;

bool is_valid_value(std::int64_t value) {
  return value != 0 && value >= -max_kudos && value <= max_kudos;
}

Reply give_kudos(Service &service, const Request &request, const Account &account) {
  std::optional<Posting> posting = service.postings.find(request.number("id"));
  const std::int64_t value = request.number("kudos");
  if (!posting || posting->poster == account.name || !is_valid_value(value))
    return text_reply(word::failed);
  Transaction transaction(service.database);
  if (!service.kudos.give(account.name, posting->id, value))
    return text_reply(word::duplicate);
  posting->kudos = saturating_add(posting->kudos, value);
  service.postings.replace(*posting, false);
  transaction.commit();
  return text_reply(word::done);
}

/** The posting's kudos and those given by the requesting member. */
Reply get_kudos(Service &service, const Request &request, const Account &account) {
  const std::optional<Posting> posting = service.postings.find(request.number("id"));
  if (!posting)
    return text_reply(word::failed);
  return text_reply(std::to_string(posting->kudos) + "*" +
                    std::to_string(service.kudos.given(account.name, posting->id)));
}

/** Whether the posting exists and, when a reaction is named, belongs to it. */
bool exists(Service &service, std::int64_t posting, std::int64_t reaction) {
  if (reaction <= 0)
    return service.postings.find(posting).has_value();
  const std::optional<Reaction> found = service.forum.find(reaction);
  return found && found->posting == posting;
}

void write_profile(XmlWriter &xml, const Profile &profile) {
  for (const ProfileField &field : profile_fields()) {
    if (const auto *text = std::get_if<std::string Profile::*>(&field.member)) {
      // Clients treat an empty element as an error.
      if (!(profile.**text).empty())
        xml.element(field.name, profile.**text);
    } else {
      xml.element(field.name, profile.*std::get<std::int64_t Profile::*>(field.member));
    }
  }
}

}  // namespace

Reply kudos(Service &service, const Request &request, const Account &account) {
  const std::string mode = request.value("mode");
  if (mode == "give")
    return give_kudos(service, request, account);
  return mode == "get" ? get_kudos(service, request, account) : text_reply(word::failed);
}

Reply warn(Service &service, const Request &request, const Account &account) {
  const std::int64_t posting = request.number("id");
  const std::int64_t reaction = std::max<std::int64_t>(request.number("forumid"), 0);
  if (!exists(service, posting, reaction))
    return text_reply(word::failed);
  const std::optional<std::int64_t> number =
      service.warnings.add(account.name, posting, reaction, request.value("reason"));
  return text_reply(number ? std::string(word::done) + std::to_string(*number)
                           : std::string(word::duplicate));
}

Reply profile(Service &service, const Request &request, const Account &) {
  const std::string name = request.value("user");
  const std::optional<Profile> profile = service.accounts.profile(name);
  if (!profile)
    return text_reply("");
  const std::int64_t received = service.postings.kudos_of(name);
  XmlWriter xml("UserInfo");
  xml.element("Name", name);
  xml.element("Posts", service.forum.count_by(name));
  xml.element("Spots", service.postings.count_by(name));
  xml.element("Kudos", received);
  xml.element("Given", service.kudos.given(name));
  xml.element("Received", received);
  write_profile(xml, *profile);
  return xml_reply(xml.finish());
}

}  // namespace velkor::server::endpoints
