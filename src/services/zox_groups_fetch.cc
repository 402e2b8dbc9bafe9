/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The newsgroup table fetched from the service. */
#include <velkor/zox_groups.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>

#include "core/backup.h"
#include "support/assertion.h"
#include "support/owned.h"

using namespace velkor;

extern "C" {

ZoxErrorCode zox_group_fetch(void) {
  ZOX_ASSERT(core);
  ZoxString *reply = nullptr;
  const ZoxErrorCode code =
      zox_http_curl_execute("/3.7.3/xml-groups.php", nullptr, 1, &reply, 1, nullptr, 1);
  const OwnedString text(reply);
  if (code != ZOX_RESULT_SUCCESS)
    return code;
  ZOX_ASSERT_AS(text, "uitvoer");
  const bool had_groups = core->groups != nullptr;
  zox_group_free_all();
  core->groups = zox_group_parse(text.get());
  if (had_groups && core->groups == nullptr)
    note_emptied("velkor.groups", true);
  zox_group_save();
  return core->groups == nullptr ? ZOX_RESULT_NOT_PARSED : ZOX_RESULT_SUCCESS;
}

}  // extern "C"
