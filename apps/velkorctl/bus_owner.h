/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Who owns the name "org.Velkor.Velkor" on the session bus. Without a bus, or one that answers,
 * nobody does. None of this claims the name.
 */
#ifndef VELKORCTL_BUS_OWNER_H
#define VELKORCTL_BUS_OWNER_H

#include <cstdint>

namespace velkor::ctl {

/** Whether anyone owns the name. The owner is not disturbed. */
bool name_is_owned() noexcept;

/**
 * Whether the desktop front end runs, which writes its settings when it ends. A velkorctl that
 * listens owns the name as well but never writes.
 */
bool front_end_is_running() noexcept;

/**
 * Asks the owner to show a posting; false when there is none. Throws a Failure when it does not
 * answer as it should.
 */
bool hand_to_instance(std::int32_t posting);

}  // namespace velkor::ctl

#endif
