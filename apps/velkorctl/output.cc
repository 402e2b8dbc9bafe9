/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/output.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "velkorctl/failure.h"
#include "velkorctl/interruption.h"
#include "velkorctl/terminal.h"

namespace velkor::ctl {
namespace {

OwnedFile private_copy_of_stdout() {
  const int copy = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  OwnedFile file(copy < 0 ? nullptr : fdopen(copy, "w"));
  if (!file)
    throw Failure(Exit::failed, "cannot use standard output: " + system_error(errno));
  return file;
}

[[noreturn]] void fail(int error) {
  if (error == EPIPE)
    throw Failure(Exit::broken_pipe, "");
  throw Failure(Exit::failed, "cannot write to standard output: " + system_error(error));
}

}  // namespace

Output::Output(bool show_traces)
    : file_(private_copy_of_stdout()), traces_(std::make_unique<Traces>(show_traces)) {}

Output::~Output() = default;

void Output::write(std::string_view text) {
  if (Interruption::requested())
    throw Failure(Exit::interrupted, "interrupted");
  if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size())
    fail(errno);
}

void Output::flush() {
  if (std::fflush(file_.get()) != 0)
    fail(errno);
}

int Output::width() const noexcept {
  return terminal_width(fileno(file_.get()));
}

}  // namespace velkor::ctl
