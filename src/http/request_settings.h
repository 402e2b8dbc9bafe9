/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The settings that a request goes by. */
#ifndef VELKOR_HTTP_REQUEST_SETTINGS_H
#define VELKOR_HTTP_REQUEST_SETTINGS_H

#include <velkor/zox_config.h>

namespace velkor {

/** Copies of the account and the proxy, so that they may be changed while a request runs. */
class RequestSettings {
public:
  /** Takes the settings as they are; asserts that there are any. */
  RequestSettings() noexcept;
  ~RequestSettings();
  RequestSettings(const RequestSettings &) = delete;
  RequestSettings &operator=(const RequestSettings &) = delete;

  /** The fields of the account and the proxy; the others are zero. */
  [[nodiscard]] const ZoxConfig &get() const noexcept { return config_; }

private:
  ZoxConfig config_{};
};

}  // namespace velkor

#endif
