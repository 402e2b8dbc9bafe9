/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "http/request_settings.h"

#include <array>

#include <velkor/zox_app_core.h>
#include <velkor/zox_http_curl.h>

#include "core/core_lock.h"
#include "support/assertion.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr std::array fields{&ZoxConfig::username,  &ZoxConfig::password,
                            &ZoxConfig::proxyHost, &ZoxConfig::proxyPort,
                            &ZoxConfig::proxyUser, &ZoxConfig::proxyPassword};

}  // namespace

RequestSettings::RequestSettings() noexcept {
  const CoreReader guard;
  ZOX_ASSERT_IN(zox_http_curl_execute, core->config, "core->config");
  for (ZoxString *ZoxConfig::*field : fields)
    config_.*field = copy_string(core->config->*field);
}

RequestSettings::~RequestSettings() {
  for (ZoxString *ZoxConfig::*field : fields)
    replace_string(config_.*field, nullptr);
}

}  // namespace velkor
