/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/bus_owner.h"

#include <string>

#include <gio/gio.h>
#include <unistd.h>

#include "support/owned.h"

namespace velkor::ctl {
namespace {

using OwnedVariant = std::unique_ptr<GVariant, ReleaseWith<g_variant_unref>>;

constexpr int patience_ms = 5000;

/** GIO would start a bus of its own where there is none. */
bool bus_exists() noexcept {
  if (g_getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr)
    return true;
  const char *session = g_getenv("XDG_RUNTIME_DIR");
  return session != nullptr && access((std::string(session) + "/bus").c_str(), F_OK) == 0;
}

OwnedObject<GDBusConnection> connect() noexcept {
  const OwnedText address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!address)
    return nullptr;
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  return OwnedObject<GDBusConnection>(
      g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, nullptr));
}

}  // namespace

bool instance_is_running() noexcept {
  const OwnedObject<GDBusConnection> bus = bus_exists() ? connect() : nullptr;
  if (!bus)
    return false;
  const OwnedVariant reply(g_dbus_connection_call_sync(
      bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "NameHasOwner", g_variant_new("(s)", "org.Velkor.Velkor"), G_VARIANT_TYPE("(b)"),
      G_DBUS_CALL_FLAGS_NO_AUTO_START, patience_ms, nullptr, nullptr));
  gboolean owned = FALSE;
  if (reply)
    g_variant_get(reply.get(), "(b)", &owned);
  return owned != FALSE;
}

}  // namespace velkor::ctl
