/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The public profile of a user. */
#include <velkor/zox_profile.h>

#include <array>

#include "core/app_core.h"
#include "core/record_fields.h"
#include "core/reply_document.h"
#include "http/service_request.h"
#include "services/profile_document.h"
#include "support/assertion.h"

namespace velkor {
namespace {

constexpr DocumentRule profile_rule{
    .root = "UserInfo", .reader = "zox_profile_parse", .childless_logged = false};

constexpr auto profile_fields = std::to_array<Field<ZoxProfile>>({
    {"Name", &ZoxProfile::name},
    {"Stamp", &ZoxProfile::stamp},
    {"Posts", &ZoxProfile::posts},
    {"Spots", &ZoxProfile::spots},
    {"Kudos", &ZoxProfile::kudos},
    {"Given", &ZoxProfile::kudosGiven},
    {"Received", &ZoxProfile::kudosReceived},
    {"Rank", &ZoxProfile::rank},
    {"EMail", &ZoxProfile::email},
    {"Info", &ZoxProfile::info},
    {"Avatar", &ZoxProfile::avatar},
    {"Status", &ZoxProfile::status},
    {"Site", &ZoxProfile::site},
    {"IM", &ZoxProfile::im},
    {"ISP", &ZoxProfile::isp},
    {"NS", &ZoxProfile::newsServer},
    {"Hobby", &ZoxProfile::hobby},
    {"PStat", &ZoxProfile::profileStatus},
});

/** A text that is missing in its element makes the profile unusable; only a name may be missing. */
void judge_missing_text(const xmlNode *node) noexcept {
  if (xml::is_named(node, "Name"))
    return;
  ZOX_ASSERT_IN(zox_profile_get, tolerant(), "tmp");
  g_warning("zox_profile_get(): element %s zonder tekst\n", xml::chars(node->name));
}

}  // namespace

OwnedProfile parse_profile(const ZoxString *text) noexcept {
  const ReplyDocument document(text, profile_rule);
  if (document.fault() != DocumentFault::none)
    return nullptr;
  OwnedProfile profile(g_new0(ZoxProfile, 1));
  for (xmlNode *node : document.children()) {
    const auto *field = field_for<ZoxProfile>(node, profile_fields);
    if (field == nullptr || read_field(document.get(), node, *field, *profile))
      continue;
    judge_missing_text(node);
    return nullptr;
  }
  return profile;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_profile_get(const char *username, ZoxProfile **profile, char **errmsg) {
  ZOX_ASSERT(username);
  ZOX_ASSERT(profile);
  ZOX_ASSERT(errmsg);
  const ServiceReply reply =
      send_request("/3.7.3/xml-user.php", {{"user", username}}, {.require_data = false});
  if (reply.failed())
    return report_failure(reply, errmsg);
  *errmsg = nullptr;
  *profile = parse_profile(reply.text.get()).release();
  return *profile != nullptr ? ZOX_RESULT_SUCCESS : ZOX_RESULT_NO_PROFILE;
}

void zox_profile_free(ZoxProfile *profile) {
  release_fields<ZoxProfile>(profile_fields, *profile);
  g_free(profile);
}

}  // extern "C"
