/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Texts from the service as widgets can take them: valid UTF-8 without control characters. */
#ifndef VELKOR_APP_MODEL_SHOWN_TEXT_H
#define VELKOR_APP_MODEL_SHOWN_TEXT_H

#include <string>
#include <string_view>

namespace velkor::app {

/** On one line: line feeds and other control characters become blanks. */
std::string shown_line(std::string_view text);

/** With its line feeds and tabs; "\r\n" becomes "\n", other control characters become blanks. */
std::string shown_lines(std::string_view text);

}  // namespace velkor::app

#endif
