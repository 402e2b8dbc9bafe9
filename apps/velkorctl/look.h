/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** How text looks on standard output: plain for pipes and simple terminals, richer elsewhere. */
#ifndef VELKORCTL_LOOK_H
#define VELKORCTL_LOOK_H

#include <string>

namespace velkor::ctl {

struct GlobalOptions;
class Output;

enum class Style { plain, strong, faint, good, bad };

struct Look {
  /** The columns of the terminal; 0 when there is none. */
  int width = 0;
  bool colour = false;
  bool links = false;

  [[nodiscard]] bool on_terminal() const noexcept { return width > 0; }
};

/** The look that the options, the environment and the terminal ask for. */
Look look_of(const GlobalOptions &options, const Output &out) noexcept;

/** The text in that style when there are colours. */
std::string styled(const std::string &text, Style style, const Look &look);

/** The text as a link to a web address, when there are links; any other address is left out. */
std::string linked(const std::string &text, const std::string &address, const Look &look);

}  // namespace velkor::ctl

#endif
