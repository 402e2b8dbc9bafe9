/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The command's own standard output. The library prints trace lines to standard output; while
 * Output lives they go elsewhere, so that a script reads only what it asked for.
 */
#ifndef VELKORCTL_OUTPUT_H
#define VELKORCTL_OUTPUT_H

#include <cstdio>
#include <optional>
#include <string_view>
#include <thread>

#include "support/descriptor.h"
#include "support/owned.h"
#include "velkorctl/pager.h"

namespace velkor::ctl {

/**
 * Drops what the library prints to standard output and to the stream `stderr`, or prints it with
 * trace(). Messages of the command go to the descriptor of standard error, which stays as it is.
 */
class Traces {
public:
  explicit Traces(bool show);
  ~Traces();
  Traces(const Traces &) = delete;
  Traces &operator=(const Traces &) = delete;

private:
  void forward() noexcept;
  void redirect_streams(const Descriptor &target);

  OwnedFile errors_;
  FILE *earlier_errors_;
  Descriptor reading_end_;
  std::thread forwarder_;
};

class Output {
public:
  enum class Stream { open, closed };

  /**
   * `show_traces`: print the library's trace lines to standard error instead of dropping them.
   * `stream`: whether the program was started with a standard output.
   */
  Output(bool show_traces, Stream stream);

  /** Throws a Failure when the text cannot be written. */
  void write(std::string_view text);
  /** Writes a document unchanged; on a terminal, without the characters that could act on it. */
  void write_document(std::string_view text);
  /** Writes what is buffered; throws a Failure when that fails. */
  void flush();

  /**
   * From now on a pager shows what is written, if there is one for this terminal. Leaving it early
   * is no failure.
   */
  void page();
  /** Never starts a pager. */
  void forbid_paging() noexcept { may_page_ = false; }

  /** The columns of the terminal; 0 when standard output is no terminal. */
  [[nodiscard]] int width() const noexcept { return width_; }

private:
  [[noreturn]] void fail(int error) const;

  int width_;
  bool may_page_;
  std::optional<Pager> pager_;
  /** Closed before the pager is waited for. */
  OwnedFile file_;
  Stream stream_;
  Traces traces_;
};

}  // namespace velkor::ctl

#endif
