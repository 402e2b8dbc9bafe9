/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/hosts.h"

#include <cstdlib>
#include <mutex>
#include <string_view>

#include <velkor/zox_http_curl.h>

#include "support/immortal.h"

namespace velkor {
namespace {

constexpr std::string_view https = "https://";

/** One text: what was set at run time, and where its default comes from. */
class Choice {
public:
  constexpr Choice(const char *variable, const char *built_in) noexcept
      : variable_(variable), built_in_(built_in) {}

  [[nodiscard]] std::string text() const noexcept {
    const std::lock_guard lock(mutex_);
    return chosen_.empty() ? default_text() : chosen_;
  }

  void set(const char *text) noexcept {
    const std::lock_guard lock(mutex_);
    chosen_ = text == nullptr ? "" : text;
  }

private:
  [[nodiscard]] const char *default_text() const noexcept {
    const char *value = std::getenv(variable_);
    return value == nullptr || *value == '\0' ? built_in_ : value;
  }

  const char *variable_;
  const char *built_in_;
  mutable std::mutex mutex_;
  std::string chosen_;
};

struct Hosts {
  Choice main{"VELKOR_MAIN_HOST", VELKOR_MAIN_HOST};
  Choice dumps{"VELKOR_STATIC_HOST", VELKOR_STATIC_HOST};
  Choice authorities{"VELKOR_CA_FILE", ""};
};

/** A scheme in capitals counts as well; what asks for encryption must never go out without it. */
bool is_secure(const std::string &setting) noexcept {
  return g_ascii_strncasecmp(setting.c_str(), https.data(), https.size()) == 0;
}

/** The host in a setting; what names a scheme may end as a copied address does. */
std::string host_in(const std::string &setting) noexcept {
  if (!is_secure(setting))
    return setting;
  std::string host = setting.substr(https.size());
  if (host.ends_with('/'))
    host.pop_back();
  return host;
}

std::string address_of(const Choice &choice) noexcept {
  const std::string setting = choice.text();
  return (is_secure(setting) ? "https://" : "http://") + host_in(setting);
}

}  // namespace

std::string main_host() noexcept {
  return host_in(immortal<Hosts>().main.text());
}

std::string main_address() noexcept {
  return address_of(immortal<Hosts>().main);
}

std::string static_address() noexcept {
  return address_of(immortal<Hosts>().dumps);
}

std::string ca_file() noexcept {
  return immortal<Hosts>().authorities.text();
}

}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_http_set_hosts(const char *mainHost, const char *staticHost) {
  immortal<Hosts>().main.set(mainHost);
  immortal<Hosts>().dumps.set(staticHost);
}

void zox_http_set_ca_file(const char *file) {
  immortal<Hosts>().authorities.set(file);
}

}  // extern "C"
