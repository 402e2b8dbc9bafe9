/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl open and listen: sending requests over the session bus, and receiving them. */
#include <chrono>
#include <exception>
#include <memory>
#include <optional>
#include <string>

#include <glib-unix.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_dbus.h>
#include <velkor/zox_mail.h>

#include "velkorctl/bus_owner.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"

namespace velkor::ctl {
namespace {

Exit run_open(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  if (!hand_to_instance(id))
    throw Failure(Exit::not_found, "Velkor is not running");
  return Exit::ok;
}

struct Event {
  const char *name;
  gint32 id;
};

Fields<Event> event_fields() {
  return {{{.name = "event", .type = type::text()},
           [](const Event &event) -> Value { return event.name; }},
          {{.name = "id", .type = type::number()},
           [](const Event &event) { return unless_zero(event.id); }}};
}

/** A front end that prints the requests it gets until it is interrupted. */
class Listener {
public:
  explicit Listener(const Context &context);
  ~Listener();
  Listener(const Listener &) = delete;
  Listener &operator=(const Listener &) = delete;

  Exit run();

private:
  static void claim_name();
  void watch_mail();
  void listen();
  void print(const char *event, gint32 id = 0);
  void check_mail();

  static void on_bring_to_front(VelkorDBusObject *object, gpointer self) noexcept;
  static void on_open_posting(VelkorDBusObject *object, gint id, gpointer self) noexcept;
  static gboolean on_mail_time(gpointer self) noexcept;
  static gboolean on_signal(gpointer self) noexcept;
  /** No exception may cross the main loop: it ends the loop, and run() throws it again. */
  template <typename Action>
  void guarded(Action action) noexcept;

  const Context &context_;
  CoreSession session_;
  std::unique_ptr<GMainLoop, ReleaseWith<g_main_loop_unref>> loop_;
  std::exception_ptr failure_;
  /** Only where the options ask for records. */
  std::optional<RecordPrinter<Event>> records_;
  bool mail_waits_ = false;
};

Listener::Listener(const Context &context)
    : context_(context), session_(context.options, CoreSession::Access::read, Load::settings),
      loop_(g_main_loop_new(nullptr, FALSE)) {
  claim_name();
  VelkorDBusObject *object = zox_dbus_get_object();
  g_signal_connect(object, "bring_to_front", G_CALLBACK(on_bring_to_front), this);
  g_signal_connect(object, "open_posting", G_CALLBACK(on_open_posting), this);
  g_unix_signal_add(SIGINT, on_signal, this);
  g_unix_signal_add(SIGTERM, on_signal, this);
  if (Interruption::ends_on_hangup())
    g_unix_signal_add(SIGHUP, on_signal, this);
}

Listener::~Listener() {
  zox_dbus_cleanup();
}

/** Looks first whether another process owns the name, since that one would come to the front. */
void Listener::claim_name() {
  if (name_is_owned())
    throw Failure(Exit::busy, "Velkor is already running");
  char *place = nullptr;
  gint32 active = 0;
  const gint32 exported = zox_dbus_initialize(0, nullptr, &active, &place);
  const OwnedText message(place);
  if (exported == 0)
    throw Failure(Exit::failed, message ? message.get() : "Velkor is already running");
}

void Listener::watch_mail() {
  const auto minutes = context_.arguments.value("--mail");
  if (!minutes)
    return;
  session_.require_account();
  constexpr std::int64_t minutes_per_day = std::chrono::minutes(std::chrono::days(1)).count();
  const std::chrono::minutes pause(number_in_range(*minutes, 1, minutes_per_day, "--mail"));
  g_timeout_add_seconds(static_cast<guint>(std::chrono::seconds(pause).count()), on_mail_time,
                        this);
  check_mail();
}

void Listener::listen() {
  guarded([this] { print("listening"); });
  if (!failure_)
    g_main_loop_run(loop_.get());
  if (failure_)
    std::rethrow_exception(failure_);
}

Exit Listener::run() {
  if (wants_records(context_.arguments))
    records_.emplace(context_, event_fields());
  watch_mail();
  listen();
  if (records_)
    records_->finish();
  return Exit::ok;
}

void Listener::print(const char *event, gint32 id) {
  if (records_)
    records_->add({event, id});
  else
    context_.out.write(event + (id == 0 ? "" : " " + std::to_string(id)) + "\n");
  context_.out.flush();
}

/** Reports new mail once, until it has been fetched. */
void Listener::check_mail() {
  guint32 waiting = 0;
  const LibraryResult result = try_call("asking for new messages", zox_mail_check, &waiting);
  if (result.failed())
    return say(result.message());
  if (waiting != 0 && !mail_waits_)
    print("mail");
  mail_waits_ = waiting != 0;
}

template <typename Action>
void Listener::guarded(Action action) noexcept {
  try {
    action();
  } catch (...) {
    failure_ = std::current_exception();
    g_main_loop_quit(loop_.get());
  }
}

void Listener::on_bring_to_front(VelkorDBusObject * /*object*/, gpointer self) noexcept {
  auto *listener = static_cast<Listener *>(self);
  listener->guarded([listener] { listener->print("bring_to_front"); });
}

void Listener::on_open_posting(VelkorDBusObject * /*object*/, gint id, gpointer self) noexcept {
  auto *listener = static_cast<Listener *>(self);
  listener->guarded([listener, id] { listener->print("open_posting", id); });
}

gboolean Listener::on_mail_time(gpointer self) noexcept {
  auto *listener = static_cast<Listener *>(self);
  listener->guarded([listener] { listener->check_mail(); });
  return G_SOURCE_CONTINUE;
}

gboolean Listener::on_signal(gpointer self) noexcept {
  g_main_loop_quit(static_cast<Listener *>(self)->loop_.get());
  return G_SOURCE_CONTINUE;
}

Exit run_listen(const Context &context) {
  return Listener(context).run();
}

}  // namespace

Command open_command() {
  return {"open", "Show a posting in the running Velkor", {posting_argument()}, {}, run_open};
}

Command listen_command() {
  return {
      "listen",
      "Take the place of the desktop front end and print what it is asked to show",
      {},
      {{"--mail", "MINUTES", "Check for new messages every MINUTES minutes"},
       {"--format",
        "FORMAT",
        "Output format: json, one document that ends when listen does, or ndjson, an object per "
        "line",
        false,
        {"json", "ndjson"}}},
      run_listen,
      events_of(event_fields())};
}

}  // namespace velkor::ctl
