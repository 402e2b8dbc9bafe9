/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the server answers, in one word, to what it was given. */
#ifndef VELKOR_SERVICES_ANSWERS_H
#define VELKOR_SERVICES_ANSWERS_H

#include <string_view>

#include <velkor/zox_codes.h>

namespace velkor {

/** The answer that a reply begins with; behind "OK" there may be a number. */
ZoxAnswer answer_of(std::string_view reply) noexcept;

/** The number behind "OK" at the beginning of a zero-terminated reply; 0 without one. */
gint32 number_behind_answer(const char *reply) noexcept;

}  // namespace velkor

#endif
