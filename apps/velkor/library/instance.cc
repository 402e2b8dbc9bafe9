/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/instance.h"

#include <utility>

#include <velkor/zox_dbus.h>

#include "support/owned.h"

namespace velkor::app {
namespace {

void on_bring_to_front(VelkorDBusObject * /*object*/, gpointer requests) noexcept {
  static_cast<Instance::Requests *>(requests)->bring_to_front();
}

void on_open_posting(VelkorDBusObject * /*object*/, gint id, gpointer requests) noexcept {
  static_cast<Instance::Requests *>(requests)->open_posting(id);
}

}  // namespace

Instance::Instance() {
  char *place = nullptr;
  gint32 active = 0;
  zox_dbus_initialize(1, nullptr, &active, &place);
  if (const OwnedText message(place); message)
    g_message("%s", message.get());
  another_runs_ = active != 0;
}

Instance::~Instance() {
  zox_dbus_cleanup();
}

void Instance::answer(Requests requests) {
  requests_ = std::move(requests);
  VelkorDBusObject *object = zox_dbus_get_object();
  if (object == nullptr)
    return;
  g_signal_connect(object, "bring_to_front", G_CALLBACK(on_bring_to_front), &requests_);
  g_signal_connect(object, "open_posting", G_CALLBACK(on_open_posting), &requests_);
}

}  // namespace velkor::app
