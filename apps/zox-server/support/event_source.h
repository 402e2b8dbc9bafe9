/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An event source of the main loop, removed with this object. */
#ifndef ZOX_SERVER_SUPPORT_EVENT_SOURCE_H
#define ZOX_SERVER_SUPPORT_EVENT_SOURCE_H

#include <functional>
#include <memory>

#include <gio/gio.h>

namespace velkor::server {

/** Returns false to remove the source. */
using EventAction = std::function<bool()>;

class EventSource {
public:
  /** Called every `milliseconds`. */
  static EventSource timer(unsigned milliseconds, EventAction action);
  /** Called whenever the socket is ready for `condition`. */
  static EventSource socket(GSocket *socket, GIOCondition condition, EventAction action);
  /** Called whenever there is something to read from the stream, which is pollable. */
  static EventSource readable(GInputStream *stream, EventAction action);
  /** Called whenever the stream, which is pollable, takes output. */
  static EventSource writable(GOutputStream *stream, EventAction action);
  /** Called when the signal arrives. */
  static EventSource signal(int number, EventAction action);

private:
  struct Destroy {
    void operator()(GSource *source) const noexcept {
      g_source_destroy(source);
      g_source_unref(source);
    }
  };
  EventSource(GSource *source, GSourceFunc trampoline, EventAction action);

  std::unique_ptr<EventAction> action_;
  std::unique_ptr<GSource, Destroy> source_;
};

}  // namespace velkor::server

#endif
