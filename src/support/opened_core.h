/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The core of the library while an object lives, for programs and tests. */
#ifndef VELKOR_SUPPORT_OPENED_CORE_H
#define VELKOR_SUPPORT_OPENED_CORE_H

#include <stdexcept>

#include <velkor/zox_app_core.h>

#include "support/owned.h"

namespace velkor {

/** All parts but the bus, in these directories, whose texts stay the caller's. */
inline ZoxCoreOptions options_without_bus(const char *cache, const char *plugins) {
  ZoxCoreOptions options{};
  options.cacheDir = cache;
  options.libDir = plugins;
  options.parts = ZOX_CORE_ALL & ~ZOX_CORE_BUS;
  return options;
}

class OpenedCore {
public:
  /** @throws std::runtime_error that says why the core cannot be opened */
  explicit OpenedCore(const ZoxCoreOptions &options) {
    char *text = nullptr;
    const ZoxCoreResult result = zox_app_core_open(&options, &text);
    const OwnedText message(text);
    if (result != ZOX_CORE_OPENED)
      throw std::runtime_error(message ? message.get() : "the core cannot be opened");
  }
  ~OpenedCore() { zox_app_core_close(); }
  OpenedCore(const OpenedCore &) = delete;
  OpenedCore &operator=(const OpenedCore &) = delete;
};

}  // namespace velkor

#endif
