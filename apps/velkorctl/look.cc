/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/look.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "velkorctl/command.h"
#include "velkorctl/terminal.h"

namespace velkor::ctl {
namespace {

bool wants_colour(const GlobalOptions &options, bool capable) noexcept {
  if (options.color != "auto")
    return options.color == "always";
  const char *none = std::getenv("NO_COLOR");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  return capable && (none == nullptr || *none == '\0');
}

const char *code_of(Style style) noexcept {
  switch (style) {
  case Style::plain:
    break;
  case Style::strong:
    return "1";
  case Style::faint:
    return "2";
  case Style::good:
    return "32";
  case Style::bad:
    return "1;31";
  }
  return nullptr;
}

/** Only printable ASCII, so that nothing in it ends the escape sequence. */
bool is_web_address(std::string_view text) noexcept {
  return (text.starts_with("http://") || text.starts_with("https://")) &&
         std::ranges::all_of(text, [](char letter) { return letter > ' ' && letter < '\x7f'; });
}

}  // namespace

Look look_of(const GlobalOptions &options, const Output &out) noexcept {
  const int width = out.width();
  const bool capable = width > 0 && terminal_is_capable();
  return {.width = width, .colour = wants_colour(options, capable), .links = capable};
}

std::string styled(const std::string &text, Style style, const Look &look) {
  const char *code = code_of(style);
  if (!look.colour || code == nullptr || text.empty())
    return text;
  return std::string("\033[") + code + "m" + text + "\033[0m";
}

std::string linked(const std::string &text, const std::string &address, const Look &look) {
  if (!look.links || text.empty() || !is_web_address(address))
    return text;
  return "\033]8;;" + address + "\033\\" + text + "\033]8;;\033\\";
}

}  // namespace velkor::ctl
