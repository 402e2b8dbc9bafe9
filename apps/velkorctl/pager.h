/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The program that shows long output on a terminal page by page. */
#ifndef VELKORCTL_PAGER_H
#define VELKORCTL_PAGER_H

#include <string>

#include <gio/gio.h>

#include "support/owned.h"

namespace velkor::ctl {

/**
 * The command of the pager: VELKORCTL_PAGER, else PAGER, else less when it is installed; empty
 * for none, as VELKORCTL_PAGER may be.
 */
std::string pager_command();

class Pager {
public:
  /** Starts the command, which prints to `output`; throws a Failure when it cannot be started. */
  Pager(const std::string &command, int output);
  /** Waits until the user leaves the pager. */
  ~Pager();
  Pager(const Pager &) = delete;
  Pager &operator=(const Pager &) = delete;

  /** Where to write; it must be closed before the pager is destroyed. */
  [[nodiscard]] OwnedFile input() const;

private:
  OwnedObject<GSubprocess> process_;
};

}  // namespace velkor::ctl

#endif
