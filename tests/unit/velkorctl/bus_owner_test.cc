/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/bus_owner.h"

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "support/owned.h"
#include "tests/support/private_bus.h"

namespace velkor::ctl {
namespace {

using test::EnvironmentVariable;

/** A connection to the session bus of the environment that has asked for the name. */
OwnedObject<GDBusConnection> owner_of_the_name() {
  const OwnedText address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  OwnedObject<GDBusConnection> bus(
      g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, nullptr));
  GVariant *reply = g_dbus_connection_call_sync(
      bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "RequestName", g_variant_new("(su)", "org.Velkor.Velkor", 0U), G_VARIANT_TYPE("(u)"),
      G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
  g_variant_unref(reply);
  return bus;
}

TEST(BusOwner, WithoutABusNobodyRuns) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
  const EnvironmentVariable runtime("XDG_RUNTIME_DIR", "/nonexistent");
  EXPECT_FALSE(instance_is_running());
}

TEST(BusOwner, ABusThatIsGoneIsNoBus) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  EXPECT_FALSE(instance_is_running());
}

TEST(BusOwner, AsksTheBusForTheName) {
  const test::PrivateBus bus;
  EXPECT_FALSE(instance_is_running());
  const OwnedObject<GDBusConnection> owner = owner_of_the_name();
  EXPECT_TRUE(instance_is_running());
}

}  // namespace
}  // namespace velkor::ctl
