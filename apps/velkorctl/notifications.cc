/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/notifications.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include <libnotify/notify.h>

#include "support/text.h"
#include "velkorctl/bus_owner.h"
#include "velkorctl/messages.h"
#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

/** The name of the icon and of the desktop file of the front end. */
constexpr const char *front_end = "org.Velkor.Velkor";

/** What one watcher matched. */
using Group = std::span<const WatcherHit>;

/** libnotify, started. */
class Library {
public:
  Library() { notify_init("Velkor"); }
  ~Library() { notify_uninit(); }
  Library(const Library &) = delete;
  Library &operator=(const Library &) = delete;
};

/** Whether the service takes the body of a notification for markup. */
bool service_reads_markup() {
  GList *capabilities = notify_get_server_caps();
  bool found = false;
  for (const GList *each = capabilities; each != nullptr; each = each->next)
    found = found || std::string("body-markup") == static_cast<const char *>(each->data);
  g_list_free_full(capabilities, g_free);
  return found;
}

std::string summary_of(Group group) {
  const std::string text = safe_text(group.front().watcher);
  return text + ": " + std::to_string(group.size()) +
         (group.size() == 1 ? " posting" : " postings");
}

/** The first titles, a line each; those that remain are counted. */
std::string body_of(Group group, bool markup) {
  constexpr std::size_t most = 5;
  std::string body;
  for (const WatcherHit &hit : group.first(std::min(most, group.size()))) {
    const std::string title = safe_text(view_of(hit.posting->title));
    body +=
        (body.empty() ? "" : "\n") +
        (markup ? std::string(OwnedText(g_markup_escape_text(title.c_str(), -1)).get()) : title);
  }
  if (group.size() > most)
    body += "\nand " + std::to_string(group.size() - most) + " more";
  return body;
}

/** Null, or why the notification cannot be shown. */
OwnedError show(Group group, bool markup) {
  const OwnedObject<NotifyNotification> notification(notify_notification_new(
      summary_of(group).c_str(), body_of(group, markup).c_str(), front_end));
  notify_notification_set_hint(notification.get(), "desktop-entry",
                               g_variant_new_string(front_end));
  GError *error = nullptr;
  notify_notification_show(notification.get(), &error);
  return OwnedError(error);
}

void warn_of(const std::string &reason) {
  warn("the hits of the watchers are not shown: " + reason);
}

}  // namespace

void show_notifications(const std::vector<WatcherHit> &hits) {
  if (hits.empty())
    return;
  if (bus_state() != BusState::answering)  // libnotify would start one
    return warn_of("there is no session bus");
  const Library library;
  const bool markup = service_reads_markup();
  for (auto begin = hits.begin(); begin != hits.end();) {
    const auto end = std::find_if(begin, hits.end(), [&begin](const WatcherHit &hit) {
      return hit.watcher != begin->watcher;
    });
    if (const OwnedError error = show(Group(begin, end), markup))
      return warn_of(error->message);
    begin = end;
  }
}

}  // namespace velkor::ctl
