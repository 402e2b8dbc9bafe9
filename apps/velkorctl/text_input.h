/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A text that the user supplies in a file. */
#ifndef VELKORCTL_TEXT_INPUT_H
#define VELKORCTL_TEXT_INPUT_H

#include <cstddef>
#include <string>

namespace velkor::ctl {

/**
 * The content of a file ("-" for standard input) without the white space at its end. Throws a
 * Failure when it cannot be read, is empty, is not UTF-8 or has more than `most` bytes.
 */
std::string read_text(const std::string &file, std::size_t most = 65536);

}  // namespace velkor::ctl

#endif
