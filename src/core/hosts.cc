/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/hosts.h"

#include <cstdlib>
#include <mutex>

#include <velkor/zox_http_curl.h>

#include "support/immortal.h"

namespace velkor {
namespace {

/** One host: what was set at run time, and where its default comes from. */
class Host {
public:
  constexpr Host(const char *variable, const char *built_in) noexcept
      : variable_(variable), built_in_(built_in) {}

  [[nodiscard]] std::string name() const noexcept {
    const std::lock_guard lock(mutex_);
    return chosen_.empty() ? default_name() : chosen_;
  }

  void set(const char *name) noexcept {
    const std::lock_guard lock(mutex_);
    chosen_ = name == nullptr ? "" : name;
  }

private:
  [[nodiscard]] const char *default_name() const noexcept {
    const char *value = std::getenv(variable_);
    return value == nullptr || *value == '\0' ? built_in_ : value;
  }

  const char *variable_;
  const char *built_in_;
  mutable std::mutex mutex_;
  std::string chosen_;
};

struct Hosts {
  Host main{"VELKOR_MAIN_HOST", VELKOR_MAIN_HOST};
  Host dumps{"VELKOR_STATIC_HOST", VELKOR_STATIC_HOST};
};

}  // namespace

std::string main_host() noexcept {
  return immortal<Hosts>().main.name();
}

std::string static_host() noexcept {
  return immortal<Hosts>().dumps.name();
}

}  // namespace velkor

using namespace velkor;

extern "C" void zox_http_set_hosts(const char *mainHost, const char *staticHost) {
  immortal<Hosts>().main.set(mainHost);
  immortal<Hosts>().dumps.set(staticHost);
}
