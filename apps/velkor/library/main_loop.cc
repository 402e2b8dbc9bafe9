/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/main_loop.h"

#include <memory>
#include <utility>

#include <glib.h>

namespace velkor::app {
namespace {

using Action = std::function<void()>;

gboolean run(gpointer data) noexcept {
  (*static_cast<Action *>(data))();
  return G_SOURCE_REMOVE;
}

void release(gpointer data) noexcept {
  const std::unique_ptr<Action> action(static_cast<Action *>(data));
}

}  // namespace

void run_on_main_loop(std::function<void()> action) {
  auto owned = std::make_unique<Action>(std::move(action));
  g_idle_add_full(G_PRIORITY_DEFAULT, run, owned.release(), release);
}

}  // namespace velkor::app
