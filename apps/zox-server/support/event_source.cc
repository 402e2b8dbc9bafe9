/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/support/event_source.h"

#include <glib-unix.h>

namespace velkor::server {
namespace {

gboolean call(gpointer action) {
  return (*static_cast<EventAction *>(action))() ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
}

gboolean call_for_socket(GSocket *, GIOCondition, gpointer action) {
  return call(action);
}

gboolean call_for_stream(GObject *, gpointer action) {
  return call(action);
}

}  // namespace

EventSource::EventSource(GSource *source, GSourceFunc trampoline, EventAction action)
    : action_(std::make_unique<EventAction>(std::move(action))), source_(source) {
  g_source_set_callback(source, trampoline, action_.get(), nullptr);
  g_source_attach(source, nullptr);
}

EventSource EventSource::timer(unsigned milliseconds, EventAction action) {
  return {g_timeout_source_new(milliseconds), call, std::move(action)};
}

EventSource EventSource::socket(GSocket *socket, GIOCondition condition, EventAction action) {
  return {g_socket_create_source(socket, condition, nullptr), G_SOURCE_FUNC(call_for_socket),
          std::move(action)};
}

EventSource EventSource::readable(GInputStream *stream, EventAction action) {
  return {g_pollable_input_stream_create_source(G_POLLABLE_INPUT_STREAM(stream), nullptr),
          G_SOURCE_FUNC(call_for_stream), std::move(action)};
}

EventSource EventSource::writable(GOutputStream *stream, EventAction action) {
  return {g_pollable_output_stream_create_source(G_POLLABLE_OUTPUT_STREAM(stream), nullptr),
          G_SOURCE_FUNC(call_for_stream), std::move(action)};
}

EventSource EventSource::signal(int number, EventAction action) {
  return {g_unix_signal_source_new(number), call, std::move(action)};
}

}  // namespace velkor::server
