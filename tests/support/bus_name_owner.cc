/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/bus_name_owner.h"

#include <stdexcept>
#include <utility>

#include "support/thread_order.h"

namespace velkor::test {
namespace {

GDBusConnection *connect_to_bus() {
  char *address = g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GDBusConnection *bus =
      g_dbus_connection_new_for_address_sync(address, flags, nullptr, nullptr, nullptr);
  g_free(address);
  if (bus == nullptr)
    throw std::runtime_error("there is no session bus");
  return bus;
}

void request_name(GDBusConnection *bus, const std::string &name) {
  GVariant *reply = g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
      g_variant_new("(su)", name.c_str(), 0U), G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, -1,
      nullptr, nullptr);
  if (reply == nullptr)
    throw std::runtime_error("the bus does not give the name");
  g_variant_unref(reply);
}

std::string arguments_of(GDBusMessage *message) {
  GVariant *body = g_dbus_message_get_body(message);
  if (body == nullptr)
    return "";
  char *text = g_variant_print(body, FALSE);
  std::string result = std::string(" ") + text;
  g_free(text);
  return result;
}

}  // namespace

BusNameOwner::BusNameOwner(std::string name, Replies replies)
    : name_(std::move(name)), replies_(std::move(replies)), bus_(connect_to_bus()) {
  order_before(this);
  g_dbus_connection_add_filter(bus_, take, this, nullptr);
  request_name(bus_, name_);
}

BusNameOwner::~BusNameOwner() {
  g_dbus_connection_close_sync(bus_, nullptr, nullptr);
  g_object_unref(bus_);
}

/** Runs on the connection's own thread; every call succeeds. */
GDBusMessage *BusNameOwner::take(GDBusConnection *bus, GDBusMessage *message, gboolean incoming,
                                 gpointer self) noexcept {
  auto *owner = static_cast<BusNameOwner *>(self);
  order_after(self);
  const bool call = incoming != FALSE &&
                    g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL &&
                    g_strcmp0(g_dbus_message_get_interface(message), owner->name_.c_str()) == 0;
  if (!call)
    return message;
  {
    const std::lock_guard lock(owner->mutex_);
    owner->calls_.push_back(g_dbus_message_get_member(message) + arguments_of(message));
  }
  GDBusMessage *reply = g_dbus_message_new_method_reply(message);
  if (const OwnedVariant body = owner->reply_to(g_dbus_message_get_member(message)))
    g_dbus_message_set_body(reply, body.get());
  g_dbus_connection_send_message(bus, reply, G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
  g_object_unref(reply);
  g_object_unref(message);
  return nullptr;
}

BusNameOwner::OwnedVariant BusNameOwner::reply_to(const char *method) const {
  const auto found = replies_.find(method);
  return OwnedVariant(found == replies_.end() ? nullptr
                                              : g_variant_parse(nullptr, found->second.c_str(),
                                                                nullptr, nullptr, nullptr));
}

std::vector<std::string> BusNameOwner::calls() const {
  const std::lock_guard lock(mutex_);
  return calls_;
}

}  // namespace velkor::test
