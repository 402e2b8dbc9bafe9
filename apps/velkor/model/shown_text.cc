/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/shown_text.h"

#include <glib.h>

#include "support/text.h"

namespace velkor::app {
namespace {

std::string valid_text(std::string_view text) {
  if (g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr) != FALSE)
    return std::string(text);
  return valid_utf8(text).get();
}

bool is_control(char byte) noexcept {
  return g_ascii_iscntrl(byte) != FALSE;
}

}  // namespace

std::string shown_line(std::string_view text) {
  std::string line = valid_text(text);
  for (char &byte : line)
    if (is_control(byte))
      byte = ' ';
  return line;
}

std::string shown_lines(std::string_view text) {
  std::string lines;
  for (const char byte : valid_text(text)) {
    if (byte == '\n' && lines.ends_with('\r'))
      lines.back() = '\n';
    else
      lines += byte;
  }
  for (char &byte : lines)
    if (is_control(byte) && byte != '\n' && byte != '\t')
      byte = ' ';
  return lines;
}

}  // namespace velkor::app
