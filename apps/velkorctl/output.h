/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The command's own standard output. The library prints traces on standard output; while this
 * lives they go elsewhere, so that a script reads only what it asked for.
 */
#ifndef VELKORCTL_OUTPUT_H
#define VELKORCTL_OUTPUT_H

#include <memory>
#include <string_view>

#include "support/owned.h"
#include "velkorctl/traces.h"

namespace velkor::ctl {

class Output {
public:
  /** `show_traces`: the library's trace lines go to standard error instead of nowhere. */
  explicit Output(bool show_traces);
  ~Output();
  Output(const Output &) = delete;
  Output &operator=(const Output &) = delete;

  /** Throws a Failure when the text cannot be written. */
  void write(std::string_view text);
  /** Hands everything on; throws a Failure when that fails. */
  void flush();

  /** The cells of a line of the terminal, 0 when the output is none. */
  [[nodiscard]] int width() const noexcept;

private:
  OwnedFile file_;
  std::unique_ptr<Traces> traces_;
};

}  // namespace velkor::ctl

#endif
