/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "core/app_core.h"

#include <atomic>
#include <utility>

#include <glib-object.h>

namespace velkor {
namespace {

std::atomic<bool> is_read_only{false};

}  // namespace

bool read_only() noexcept {
  return is_read_only;
}

void make_core(Access access) noexcept {
  core = g_new0(ZoxAppCore, 1);
  is_read_only = access == Access::read_only;
}

void release_settings() noexcept {
  if (core->config != nullptr)
    zox_config_free();
}

void release_lists() noexcept {
  g_clear_object(&core->filterlist);
  g_clear_object(&core->eventlist);
}

void free_core() noexcept {
  g_free(std::exchange(core, nullptr));
  is_read_only = false;
}

}  // namespace velkor
