/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The newsgroup table fetched from the service. */
#include <velkor/zox_groups.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>

#include "core/backup.h"
#include "services/service_steps.h"
#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {

ZoxErrorCode request_groups(OwnedString &reply) noexcept {
  ZoxString *text = nullptr;
  const ZoxErrorCode code =
      zox_http_curl_execute("/3.7.3/xml-groups.php", nullptr, 1, &text, 1, nullptr, 1);
  reply.reset(text);
  return code;
}

ZoxErrorCode take_groups(const ZoxString *reply) noexcept {
  const bool had_groups = core->groups != nullptr;
  zox_group_free_all();
  core->groups = zox_group_parse(reply);
  if (had_groups && core->groups == nullptr)
    note_emptied("velkor.groups", true);
  zox_group_save();
  return core->groups == nullptr ? ZOX_RESULT_NOT_PARSED : ZOX_RESULT_SUCCESS;
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxErrorCode zox_group_fetch(void) {
  ZOX_ASSERT(core);
  OwnedString text;
  if (const ZoxErrorCode code = request_groups(text); code != ZOX_RESULT_SUCCESS)
    return code;
  ZOX_ASSERT_AS(text, "uitvoer");
  return take_groups(text.get());
}

}  // extern "C"
