/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owns the name of the desktop front end on the session bus and records the calls it gets. */
#ifndef VELKOR_TESTS_SUPPORT_BUS_NAME_OWNER_H
#define VELKOR_TESTS_SUPPORT_BUS_NAME_OWNER_H

#include <mutex>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace velkor::test {

class BusNameOwner {
public:
  /** Throws when there is no bus or the name is taken. */
  BusNameOwner();
  ~BusNameOwner();
  BusNameOwner(const BusNameOwner &) = delete;
  BusNameOwner &operator=(const BusNameOwner &) = delete;

  /** The methods of "org.Velkor.Velkor" called so far, such as "openPosting (42,)". */
  [[nodiscard]] std::vector<std::string> calls() const;

private:
  static GDBusMessage *take(GDBusConnection *bus, GDBusMessage *message, gboolean incoming,
                            gpointer self) noexcept;

  GDBusConnection *bus_;
  mutable std::mutex mutex_;
  std::vector<std::string> calls_;
};

}  // namespace velkor::test

#endif
