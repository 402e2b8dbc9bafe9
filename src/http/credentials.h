/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The credentials of one request. */
#ifndef VELKOR_HTTP_CREDENTIALS_H
#define VELKOR_HTTP_CREDENTIALS_H

#include <string>

#include <velkor/zox_config.h>

#include "support/owned.h"

namespace velkor {

struct Credentials {
  /** As zox_http_curl_add_auth() gives it. */
  ZoxErrorCode code;
  /** User name and secret joined by a colon; null unless `code` is 0. */
  OwnedText user_password;
  /** What went wrong with the plug-in; empty unless `code` tells of it. */
  std::string reason;
};

/** The credentials of the account in `config`, for a request to `url`. */
Credentials make_credentials(const char *url, const ZoxConfig &config) noexcept;

}  // namespace velkor

#endif
