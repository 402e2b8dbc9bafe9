/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** English sentences for the results of the library, whose own are Dutch. */
#ifndef VELKORCTL_ENGLISH_H
#define VELKORCTL_ENGLISH_H

#include <string>

#include <velkor/zox_types.h>

namespace velkor::ctl {

/** What a result means for which the library has a Dutch sentence; empty for others. */
const char *english_of(ZoxErrorCode code) noexcept;

/**
 * The sentence for a result as sentence_of() has it, followed in square brackets by the English one
 * where that is added.
 */
std::string explained(ZoxErrorCode code, const char *server_text);

/** Whether the environment asks for messages in Dutch. */
bool session_is_dutch() noexcept;

/** Whether English sentences follow those of the library; off at first. */
void set_english_added(bool enabled) noexcept;

}  // namespace velkor::ctl

#endif
