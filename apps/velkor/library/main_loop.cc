/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/main_loop.h"

#include <memory>
#include <utility>

#include "support/owned.h"

namespace velkor::app {
namespace {

using Action = std::function<void()>;
using OwnedSource = std::unique_ptr<GSource, ReleaseWith<g_source_unref>>;

gboolean run(gpointer data) noexcept {
  (*static_cast<Action *>(data))();
  return G_SOURCE_REMOVE;
}

void release(gpointer data) noexcept {
  const std::unique_ptr<Action> action(static_cast<Action *>(data));
}

}  // namespace

void run_on_context(GMainContext *context, std::function<void()> action) {
  auto owned = std::make_unique<Action>(std::move(action));
  const OwnedSource source(g_idle_source_new());
  g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
  g_source_set_callback(source.get(), run, owned.release(), release);
  g_source_attach(source.get(), context);
}

void run_on_main_loop(std::function<void()> action) {
  run_on_context(nullptr, std::move(action));
}

}  // namespace velkor::app
