/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Posting a spot, then adding its description, signature and tracks. */
#include <algorithm>
#include <array>

#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {
namespace {

constexpr std::size_t max_title_size = 255;
constexpr std::int64_t categories = 4;
/** A title posted again within this time is accepted as a possible duplicate. */
constexpr std::int64_t duplicate_window_seconds = std::int64_t{14} * 24 * 3600;

/** The first character of the reply to a new posting. */
constexpr const char *rejected = "C";
constexpr const char *accepted = "1";
constexpr const char *possible_duplicate = "0";

struct FieldParameter {
  const char *parameter;
  PostingMember member;
};
constexpr std::array field_parameters{
    FieldParameter{"t", &Posting::title},         FieldParameter{"s", &Posting::status},
    FieldParameter{"g", &Posting::groups},        FieldParameter{"fstr", &Posting::file_name},
    FieldParameter{"ft", &Posting::file_type},    FieldParameter{"fn", &Posting::files},
    FieldParameter{"l", &Posting::link},          FieldParameter{"a", &Posting::announcement},
    FieldParameter{"fs", &Posting::file_start},   FieldParameter{"img", &Posting::image},
    FieldParameter{"pars", &Posting::pars},       FieldParameter{"bs", &Posting::block_size},
    FieldParameter{"pt", &Posting::par_type},     FieldParameter{"c", &Posting::category},
    FieldParameter{"sc", &Posting::sub_category}, FieldParameter{"tags", &Posting::tags},
    FieldParameter{"tag", &Posting::tag},
};

/** Clients send the tags without the one for the sub-category. */
void add_sub_category_tag(Posting &posting) {
  if (posting.sub_category >= 0)
    posting.tags = "a" + std::to_string(posting.sub_category) + "|" + posting.tags;
  posting.tags = join_list(split_list(posting.tags));
}

Posting posting_from(const Request &request, const Account &account) {
  Posting posting;
  for (const auto &[parameter, member] : field_parameters) {
    if (request.has(parameter))
      set_field(posting, member, request.value(parameter));
  }
  posting.groups = join_list(split_list(posting.groups));
  posting.poster = account.name;
  add_sub_category_tag(posting);
  return posting;
}

bool is_acceptable(const Posting &posting) {
  return !posting.title.empty() && posting.title.size() <= max_title_size &&
         !posting.groups.empty() && posting.category >= 0 && posting.category < categories &&
         posting.status >= state_spot && posting.status <= state_uploading;
}

Reply add(Service &service, const Request &request, const Account &account) {
  Posting posting = posting_from(request, account);
  if (!is_acceptable(posting))
    return text_reply(rejected);
  posting.stamp = service.change_stamp();
  posting.updated = posting.stamp;
  const bool repeated =
      service.postings.has_title_since(posting.title, posting.stamp - duplicate_window_seconds);
  const std::int64_t id = service.postings.add(posting);
  return text_reply((repeated ? possible_duplicate : accepted) + std::to_string(id));
}

/** Sets one field of the member's own posting. */
Reply set_own_field(Service &service, const Account &account, std::int64_t id,
                    std::string Posting::*field, const std::string &value) {
  std::optional<Posting> posting = service.postings.find(id);
  if (!posting || posting->poster != account.name)
    return text_reply(word::failed);
  (*posting).*field = value;
  service.postings.replace(*posting, false);
  return text_reply(word::done);
}

Reply update(Service &service, const Request &request, const Account &account) {
  const std::string section = request.value("section");
  const std::int64_t id = request.number("id");
  if (section == "1")
    return set_own_field(service, account, id, &Posting::description, request.value("d"));
  if (section == "2")
    return set_own_field(service, account, id, &Posting::signature, request.value("sig"));
  return text_reply(word::failed);
}

}  // namespace

Reply new_spot(Service &service, const Request &request, const Account &account) {
  const std::string mode = request.value("m");
  if (mode == "add")
    return add(service, request, account);
  if (mode == "upd")
    return update(service, request, account);
  if (mode == "mp3")
    return set_own_field(service, account, request.number("s"), &Posting::tracks,
                         request.value("str"));
  return text_reply(word::failed);
}

}  // namespace velkor::server::endpoints
