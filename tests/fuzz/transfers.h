/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Stands in for libcurl's transfers, so that a target's requests get the replies that it has
 * chosen without any connection, and for the authentication plug-in. CMakeLists.txt puts it into
 * the targets that use it.
 */
#ifndef VELKOR_TESTS_FUZZ_TRANSFERS_H
#define VELKOR_TESTS_FUZZ_TRANSFERS_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace velkor::fuzz {

/** The body of the reply to a request for that URL; nothing when there is no connection. */
using Answer = std::function<std::optional<std::string>(const std::string &url)>;

/** Answers every request from now on. The reply arrives in pieces of `piece_size` bytes. */
void answer_requests(Answer answer, std::size_t piece_size = 16384);

/** The requests since the last call of answer_requests(). */
std::size_t request_count();

}  // namespace velkor::fuzz

#endif
