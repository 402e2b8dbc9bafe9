/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A front end for the tests of start-up: it starts the library with defaults, says how that went
 * and what arrives on the bus, and shuts down when its standard input ends.
 */
#include <csignal>
#include <cstdio>

#include <velkor/zox_app_core.h>
#include <velkor/zox_dbus.h>

#include "support/owned.h"

namespace {

void say_front(VelkorDBusObject *, gpointer) {
  std::printf("signal bring_to_front\n");
}

void say_posting(VelkorDBusObject *, gint postId, gpointer) {
  std::printf("signal open_posting %d\n", postId);
}

void say_released(gpointer, GObject *) {
  std::printf("service stopped, settings %s\n", core->config == nullptr ? "gone" : "there");
}

void listen() {
  VelkorDBusObject *object = zox_dbus_get_object();
  if (object == nullptr)
    return;
  g_signal_connect(object, "bring_to_front", G_CALLBACK(say_front), nullptr);
  g_signal_connect(object, "open_posting", G_CALLBACK(say_posting), nullptr);
  g_object_weak_ref(&object->parent, say_released, nullptr);
}

const char *handling_of(int number) {
  struct sigaction action {};
  sigaction(number, nullptr, &action);
  return action.sa_handler == SIG_DFL ? "default" : "changed";
}

gboolean quit(GIOChannel *, GIOCondition, gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop *>(loop));
  return G_SOURCE_REMOVE;
}

void wait_for_end_of_input() {
  GMainLoop *loop = g_main_loop_new(nullptr, FALSE);
  GIOChannel *input = g_io_channel_unix_new(0);
  g_io_add_watch(input, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP), quit, loop);
  g_main_loop_run(loop);
  g_io_channel_unref(input);
  g_main_loop_unref(loop);
}

}  // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  char *message = nullptr;
  gint32 ok = -1;
  const gint32 result = zox_app_core_init(nullptr, nullptr, nullptr, "argument", 1, &message, &ok);
  const velkor::OwnedText held(message);
  std::printf("init %d bus %d message %s\n", result, ok, message == nullptr ? "-" : "given");
  std::printf("SIGPIPE %s SIGCHLD %s\n", handling_of(SIGPIPE), handling_of(SIGCHLD));
  listen();
  wait_for_end_of_input();
  zox_app_core_cleanup();
  std::printf("cleaned up\n");
  return 0;
}
