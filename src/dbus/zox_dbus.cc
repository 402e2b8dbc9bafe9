/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_dbus.h>

#include "dbus/dbus_glib.h"
#include "support/assertion.h"

namespace velkor {
namespace {

constexpr const char *service_name = "org.Velkor.Velkor";
constexpr const char *service_path = "/org/Velkor/Velkor/object";
constexpr const char *service_interface = "org.Velkor.Velkor";

/** What is kept from registration to clean-up. */
struct Registration {
  DBusGConnection *bus;
  DBusGProxy *busDaemon;
  VelkorDBusObject *object;
};

Registration registration{};

void report(char **errorMessage, const char *failure, const GError &error) noexcept {
  hand_over(errorMessage, OwnedText(g_strdup_printf("%s:\n%s\n", failure, error.message)));
}

OwnedBus connect(char **errorMessage) noexcept {
  GError *error = nullptr;
  OwnedBus bus(dbus_g_bus_get(DBUS_BUS_SESSION, &error));
  if (!bus) {
    report(errorMessage, "Maken van verbinding met DBus mislukt", *OwnedError(error));
    return nullptr;
  }
  // By default libdbus ends the process when the bus goes away; the program runs on without it.
  dbus_connection_set_exit_on_disconnect(dbus_g_connection_get_connection(bus.get()), FALSE);
  return bus;
}

OwnedProxy bus_daemon_proxy(DBusGConnection *bus) noexcept {
  return OwnedProxy(
      dbus_g_proxy_new_for_name(bus, DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS));
}

/** The connection that owns the service name; null when there is none. */
OwnedText name_owner(DBusGConnection *bus) noexcept {
  const OwnedProxy daemon = bus_daemon_proxy(bus);
  char *owner = nullptr;
  dbus_g_proxy_call(daemon.get(), "GetNameOwner", nullptr, G_TYPE_STRING, service_name,
                    G_TYPE_INVALID, G_TYPE_STRING, &owner, G_TYPE_INVALID);
  return OwnedText(owner);
}

/** Whether the service name is still this connection's, from a start that was cleaned up. */
bool name_is_own(DBusGConnection *bus) noexcept {
  return g_strcmp0(name_owner(bus).get(),
                   dbus_bus_get_unique_name(dbus_g_connection_get_connection(bus))) == 0;
}

/** Whether a call failed because no answer came, be it in time or at all. */
bool is_without_answer(const GError &error) noexcept {
  return error.domain == DBUS_GERROR &&
         (error.code == DBUS_GERROR_NO_REPLY || error.code == DBUS_GERROR_TIMEOUT ||
          error.code == DBUS_GERROR_TIMED_OUT);
}

/**
 * Asks the running instance, if there is one, to come to the front. One that is too busy to answer
 * is there all the same: a second instance beside it would write the same files. One that ended
 * before it could answer is not, and then nobody owns the name.
 */
bool another_instance_runs(DBusGConnection *bus) noexcept {
  // A call to this very process would wait for itself.
  if (name_is_own(bus))
    return false;
  const OwnedProxy proxy(
      dbus_g_proxy_new_for_name(bus, service_name, service_path, service_interface));
  ZOX_ASSERT_IN(zox_dbus_initialize, proxy, "proxy");
  GError *error = nullptr;
  if (dbus_g_proxy_call(proxy.get(), "bringToFront", &error, G_TYPE_INVALID, G_TYPE_INVALID))
    return true;
  return is_without_answer(*OwnedError(error)) && name_owner(bus) != nullptr;
}

void request_name(DBusGProxy *busDaemon, char **errorMessage) noexcept {
  GError *error = nullptr;
  guint32 reply = 0;
  if (!dbus_g_proxy_call(busDaemon, "RequestName", &error, G_TYPE_STRING, service_name, G_TYPE_UINT,
                         0U, G_TYPE_INVALID, G_TYPE_UINT, &reply, G_TYPE_INVALID))
    report(errorMessage, "Registreren van DBus path org.Velkor.Velkor mislukt", *OwnedError(error));
}

VelkorDBusObject *export_object(DBusGConnection *bus, gint32 isGui,
                                const char *dbusArgument) noexcept {
  auto *object =
      static_cast<VelkorDBusObject *>(g_object_new(velkor_dbus_object_get_type(), nullptr));
  object->isGui = isGui;
  object->dbusArgument = g_strdup(dbusArgument);
  dbus_g_connection_register_g_object(bus, service_path, &object->parent);
  return object;
}

/** Takes the object off the bus, also when the front end still holds a reference on it. */
void withdraw_object(DBusGConnection *bus, VelkorDBusObject *object) noexcept {
  dbus_g_connection_unregister_g_object(bus, &object->parent);
  g_clear_pointer(&object->dbusArgument, g_free);
  g_object_unref(object);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

gint32 zox_dbus_initialize(gint32 isGui, const char *dbusArgument, gint32 *alreadyActive,
                           char **errorMessage) {
  if (alreadyActive != nullptr)
    *alreadyActive = 0;
  OwnedBus bus = connect(errorMessage);
  if (!bus)
    return 0;
  if (another_instance_runs(bus.get())) {
    if (alreadyActive != nullptr)
      *alreadyActive = 1;
    return 0;
  }
  zox_dbus_cleanup();  // one path on the bus carries one object
  dbus_g_object_type_install_info(velkor_dbus_object_get_type(), &velkor_dbus_object_info);
  registration.busDaemon = bus_daemon_proxy(bus.get()).release();
  request_name(registration.busDaemon, errorMessage);
  registration.object = export_object(bus.get(), isGui, dbusArgument);
  registration.bus = bus.release();
  return 1;
}

VelkorDBusObject *zox_dbus_get_object(void) {
  return registration.object;
}

void zox_dbus_cleanup(void) {
  const Registration ended = std::exchange(registration, Registration{});
  const OwnedBus bus(ended.bus);
  const OwnedProxy busDaemon(ended.busDaemon);
  if (ended.object != nullptr)
    withdraw_object(ended.bus, ended.object);
}

}  // extern "C"
