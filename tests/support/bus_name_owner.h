/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owns a name on the session bus, by default that of the desktop front end, and records the calls
 * that it gets. */
#ifndef VELKOR_TESTS_SUPPORT_BUS_NAME_OWNER_H
#define VELKOR_TESTS_SUPPORT_BUS_NAME_OWNER_H

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "support/owned.h"

namespace velkor::test {

class BusNameOwner {
public:
  /** What methods return, by their names: tuples in the text format of GVariant. */
  using Replies = std::map<std::string, std::string>;

  /** `name` is that of the interface as well. Throws when there is no bus or the name is taken. */
  explicit BusNameOwner(std::string name = "org.Velkor.Velkor", Replies replies = {});
  ~BusNameOwner();
  BusNameOwner(const BusNameOwner &) = delete;
  BusNameOwner &operator=(const BusNameOwner &) = delete;

  /** The methods of the interface called so far, such as "openPosting (42,)". */
  [[nodiscard]] std::vector<std::string> calls() const;

private:
  static GDBusMessage *take(GDBusConnection *bus, GDBusMessage *message, gboolean incoming,
                            gpointer self) noexcept;

  using OwnedVariant = std::unique_ptr<GVariant, ReleaseWith<g_variant_unref>>;
  [[nodiscard]] OwnedVariant reply_to(const char *method) const;

  std::string name_;
  Replies replies_;
  GDBusConnection *bus_;
  mutable std::mutex mutex_;
  std::vector<std::string> calls_;
};

}  // namespace velkor::test

#endif
