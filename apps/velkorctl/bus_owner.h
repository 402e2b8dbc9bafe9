/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Who owns the name "org.Velkor.Velkor" on the session bus. When there is no bus or it does not
 * answer, nobody does. None of these functions claims the name.
 */
#ifndef VELKORCTL_BUS_OWNER_H
#define VELKORCTL_BUS_OWNER_H

#include <cstdint>

namespace velkor::ctl {

enum class BusState { none, silent, answering };

BusState bus_state() noexcept;

/** Whether any process owns the name. Sends nothing to the owner. */
bool name_is_owned() noexcept;

/**
 * Whether the desktop front end is running, which writes its settings when it ends. A velkorctl
 * that listens owns the name too, but never writes and does not count.
 */
bool front_end_is_running() noexcept;

/**
 * Asks the owner to show a posting; false when nobody owns the name. Throws a Failure when the
 * owner fails to answer.
 */
bool hand_to_instance(std::int32_t posting);

}  // namespace velkor::ctl

#endif
