/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Whether another instance of Velkor runs, asked without disturbing it. */
#ifndef VELKORCTL_BUS_OWNER_H
#define VELKORCTL_BUS_OWNER_H

namespace velkor::ctl {

/**
 * Whether someone owns the name "org.Velkor.Velkor" on the session bus. No bus, or one that does
 * not answer, means that nobody does. The name is not claimed and the owner is not called.
 */
bool instance_is_running() noexcept;

}  // namespace velkor::ctl

#endif
