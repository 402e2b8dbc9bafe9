/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/bus_owner.h"

#include <filesystem>
#include <string>
#include <system_error>

#include <gio/gio.h>
#include <unistd.h>

#include "support/owned.h"
#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

using OwnedVariant = std::unique_ptr<GVariant, ReleaseWith<g_variant_unref>>;

constexpr const char *name = "org.Velkor.Velkor";
constexpr int timeout_ms = 5000;

/** Without a bus, GIO would start one. */
bool bus_exists() noexcept {
  if (g_getenv("DBUS_SESSION_BUS_ADDRESS") != nullptr)
    return true;
  const char *session = g_getenv("XDG_RUNTIME_DIR");
  return session != nullptr && access((std::string(session) + "/bus").c_str(), F_OK) == 0;
}

OwnedObject<GDBusConnection> connect() noexcept {
  if (!bus_exists())
    return nullptr;
  const OwnedText address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
  if (!address)
    return nullptr;
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  return OwnedObject<GDBusConnection>(
      g_dbus_connection_new_for_address_sync(address.get(), flags, nullptr, nullptr, nullptr));
}

/** Calls a method of the bus itself; null when that fails. */
OwnedVariant ask_bus(GDBusConnection *bus, const char *method, const char *type) noexcept {
  return OwnedVariant(g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
      g_variant_new("(s)", name), G_VARIANT_TYPE(type), G_DBUS_CALL_FLAGS_NO_AUTO_START, timeout_ms,
      nullptr, nullptr));
}

bool is_owned(GDBusConnection *bus) noexcept {
  const OwnedVariant reply = ask_bus(bus, "NameHasOwner", "(b)");
  gboolean owned = FALSE;
  if (reply)
    g_variant_get(reply.get(), "(b)", &owned);
  return owned != FALSE;
}

/** Whether that process runs this program. */
bool is_velkorctl(guint32 process) {
  std::error_code error;
  const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
  const auto other =
      std::filesystem::read_symlink("/proc/" + std::to_string(process) + "/exe", error);
  return !error && own == other;
}

}  // namespace

BusState bus_state() noexcept {
  if (!bus_exists())
    return BusState::none;
  return connect() ? BusState::answering : BusState::silent;
}

bool name_is_owned() noexcept {
  const OwnedObject<GDBusConnection> bus = connect();
  return bus && is_owned(bus.get());
}

bool front_end_is_running() noexcept {
  const OwnedObject<GDBusConnection> bus = connect();
  if (!bus || !is_owned(bus.get()))
    return false;
  const OwnedVariant reply = ask_bus(bus.get(), "GetConnectionUnixProcessID", "(u)");
  guint32 process = 0;
  if (reply)
    g_variant_get(reply.get(), "(u)", &process);
  return process == 0 || !is_velkorctl(process);
}

bool hand_to_instance(std::int32_t posting) {
  const OwnedObject<GDBusConnection> bus = connect();
  if (!bus || !is_owned(bus.get()))
    return false;
  GError *place = nullptr;
  const OwnedVariant reply(
      g_dbus_connection_call_sync(bus.get(), name, "/org/Velkor/Velkor/object", name, "openPosting",
                                  g_variant_new("(i)", posting), nullptr,
                                  G_DBUS_CALL_FLAGS_NO_AUTO_START, timeout_ms, nullptr, &place));
  const OwnedError error(place);
  if (!reply)
    throw Failure(Exit::failed, std::string("Velkor does not answer: ") + error->message);
  return true;
}

}  // namespace velkor::ctl
