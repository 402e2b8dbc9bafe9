/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The authentication plug-in. */
#include <velkor/zox_file.h>
#include <velkor/zox_http_curl.h>

#include "support/owned.h"
#include "velkorctl/doctor/examination.h"
#include "velkorctl/english.h"

namespace velkor::ctl::doctor {

Findings check_plugin() {
  const OwnedText path(zox_file_parse_lib_dir("/libzox_http_plugin.so.2.0"));
  const std::string name = path.get();
  std::error_code error;
  if (!std::filesystem::exists(name, error))
    return {{"plug-in", name + " does not exist",
             "install the plug-in, or name its directory with --lib-dir"}};
  char *place = nullptr;
  const ZoxErrorCode code = zox_http_curl_add_auth("http://localhost/", &place);
  const OwnedText credentials(place);
  if (code == ZOX_RESULT_UNAUTHORIZED)
    return {{"plug-in", name + " exists; it is not tried without a password"}};
  if (code != ZOX_RESULT_SUCCESS)
    return {{"plug-in", name + ": " + explained(code, nullptr),
             "install a plug-in that is made for this computer and this version"}};
  return {{"plug-in", name + " works"}};
}

}  // namespace velkor::ctl::doctor
