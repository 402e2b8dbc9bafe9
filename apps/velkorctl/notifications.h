/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Notifications on the user's desktop. */
#ifndef VELKORCTL_NOTIFICATIONS_H
#define VELKORCTL_NOTIFICATIONS_H

#include <vector>

#include "velkorctl/watcher_hits.h"

namespace velkor::ctl {

/**
 * Shows a notification for each watcher with the titles that it matched. `hits`: sorted by watcher.
 * Warns when no service on the session bus shows them.
 */
void show_notifications(const std::vector<WatcherHit> &hits);

}  // namespace velkor::ctl

#endif
