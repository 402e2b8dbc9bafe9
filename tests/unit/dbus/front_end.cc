/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A front end with nothing but the service, for the tests: it starts the service, runs the main
 * loop, says which signals arrive and obeys the commands that come in on its standard input.
 */
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include <dbus/dbus.h>
#include <dlfcn.h>
#include <velkor/zox_dbus.h>

#include "support/owned.h"

/**
 * Stands before libdbus's own function: with ANSWER_TIME set, a running instance gets that many
 * milliseconds to answer, provided that the caller leaves the time to libdbus.
 */
extern "C" dbus_bool_t dbus_connection_send_with_reply(DBusConnection *bus, DBusMessage *message,
                                                       DBusPendingCall **answer, int timeout) {
  using Function = decltype(&dbus_connection_send_with_reply);
  static const auto original =
      reinterpret_cast<Function>(dlsym(RTLD_NEXT, "dbus_connection_send_with_reply"));
  const char *time = std::getenv("ANSWER_TIME");
  if (time == nullptr || !dbus_message_has_member(message, "bringToFront"))
    return original(bus, message, answer, timeout);
  if (timeout != DBUS_TIMEOUT_USE_DEFAULT)
    std::printf("waits for %d milliseconds\n", timeout);
  return original(bus, message, answer, std::atoi(time));
}

namespace {

using velkor::OwnedText;

struct FrontEnd {
  GMainLoop *loop = g_main_loop_new(nullptr, FALSE);
  gint32 isGui = 0;
  const char *argument = nullptr;
};

void say_front(VelkorDBusObject *object, gpointer) {
  std::printf("signal bring_to_front\n");
  if (std::string_view(object->dbusArgument) == "leave without an answer")
    std::_Exit(0);
}

void say_posting(VelkorDBusObject *, gint postId, gpointer) {
  std::printf("signal open_posting %d\n", postId);
}

DBusHandlerResult say_end_of_bus(DBusConnection *, DBusMessage *message, void *) {
  if (dbus_message_is_signal(message, DBUS_INTERFACE_LOCAL, "Disconnected"))
    std::printf("the bus is gone\n");
  return DBUS_HANDLER_RESULT_NOT_YET_HANDLED;
}

void watch_bus() {
  DBusConnection *bus = dbus_bus_get(DBUS_BUS_SESSION, nullptr);
  dbus_connection_add_filter(bus, say_end_of_bus, nullptr, nullptr);
  dbus_connection_unref(bus);
}

void start(FrontEnd &self) {
  gint32 active = -1;
  char *message = nullptr;
  const gint32 result = zox_dbus_initialize(self.isGui, self.argument, &active, &message);
  const OwnedText held(message);
  std::printf("initialize %d active %d message %s\n", result, active, message ? message : "-");
  if (result == 0)
    return;
  VelkorDBusObject *object = zox_dbus_get_object();
  watch_bus();
  g_signal_connect(object, "bring_to_front", G_CALLBACK(say_front), nullptr);
  g_signal_connect(object, "open_posting", G_CALLBACK(say_posting), nullptr);
}

void clean_up(FrontEnd &) {
  zox_dbus_cleanup();
  std::printf("cleaned up, object %s\n", zox_dbus_get_object() == nullptr ? "gone" : "there");
}

void describe(FrontEnd &) {
  const VelkorDBusObject *object = zox_dbus_get_object();
  std::printf("argument %s gui %d\n", object->dbusArgument, object->isGui);
}

void quit(FrontEnd &self) {
  g_main_loop_quit(self.loop);
}

gboolean obey(GIOChannel *channel, GIOCondition, gpointer data) {
  static const std::map<std::string, void (*)(FrontEnd &)> commands{
      {"start", start}, {"clean up", clean_up}, {"describe", describe}, {"quit", quit}};
  auto &self = *static_cast<FrontEnd *>(data);
  char *line = nullptr;
  gsize end = 0;
  if (g_io_channel_read_line(channel, &line, nullptr, &end, nullptr) != G_IO_STATUS_NORMAL) {
    quit(self);
    return G_SOURCE_REMOVE;
  }
  const OwnedText held(line);
  commands.at(std::string(line, end))(self);
  return G_SOURCE_CONTINUE;
}

}  // namespace

int main(int count, char **arguments) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  FrontEnd self;
  self.argument = count > 1 ? arguments[1] : "argument";
  self.isGui = count > 2 ? std::atoi(arguments[2]) : 0;
  start(self);
  GIOChannel *input = g_io_channel_unix_new(0);
  g_io_add_watch(input, G_IO_IN, obey, &self);
  g_main_loop_run(self.loop);
  g_io_channel_unref(input);
  g_main_loop_unref(self.loop);
  return 0;
}
