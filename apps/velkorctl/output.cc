/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/output.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "velkorctl/failure.h"
#include "velkorctl/messages.h"
#include "velkorctl/safe_text.h"
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

/** Makes `target` the standard output. */
void redirect_stdout(const Descriptor &target) noexcept {
  std::fflush(stdout);
  dup2(target.get(), STDOUT_FILENO);
}

Descriptor nowhere() noexcept {
  return Descriptor(open("/dev/null", O_WRONLY | O_CLOEXEC));
}

/** Prints the complete lines of `text` and leaves the rest in it. */
void pass_lines(std::string &text) {
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
    trace(text.substr(0, end));
    text.erase(0, end + 1);
  }
}

}  // namespace

Traces::Traces(bool show) : earlier_errors_(stderr) {
  if (!show) {
    redirect_streams(nowhere());
    return;
  }
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0)
    throw Failure(Exit::failed, "cannot create a pipe: " + system_error(errno));
  reading_end_ = Descriptor(ends[0]);
  redirect_streams(Descriptor(ends[1]));
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  forwarder_ = std::thread([this] { forward(); });
}

void Traces::redirect_streams(const Descriptor &target) {
  redirect_stdout(target);
  errors_.reset(fdopen(fcntl(target.get(), F_DUPFD_CLOEXEC, 0), "w"));
  if (!errors_)
    throw Failure(Exit::failed, "cannot use standard error: " + system_error(errno));
  std::setvbuf(errors_.get(), nullptr, _IOLBF, BUFSIZ);
  stderr = errors_.get();
}

Traces::~Traces() {
  redirect_stdout(nowhere());
  stderr = earlier_errors_;
  errors_.reset();  // the end for forward()
  if (forwarder_.joinable())
    forwarder_.join();
}

void Traces::forward() noexcept {
  std::array<char, 4096> block{};
  std::string pending;
  for (;;) {
    const ssize_t count = read(reading_end_.get(), block.data(), block.size());
    if (count < 0 && errno == EINTR)
      continue;
    if (count <= 0)
      break;
    pending.append(block.data(), static_cast<std::size_t>(count));
    pass_lines(pending);
  }
  if (!pending.empty())
    trace(pending);
}

Output::Output(bool show_traces, Stream stream)
    : width_(terminal_width(STDOUT_FILENO)), may_page_(width_ > 0 && terminal_is_capable()),
      file_(private_copy_of_stdout()), stream_(stream), traces_(show_traces) {}

void Output::page() {
  if (!std::exchange(may_page_, false))
    return;
  const std::string command = pager_command();
  if (command.empty())
    return;
  flush();
  pager_.emplace(command, fileno(file_.get()));
  file_ = pager_->input();
}

void Output::fail(int error) const {
  if (error == EPIPE)
    throw Failure(pager_ ? Exit::ok : Exit::broken_pipe, "");
  throw Failure(Exit::failed, "cannot write to standard output: " + system_error(error));
}

void Output::write(std::string_view text) {
  throw_if_interrupted();
  if (stream_ == Stream::closed && !text.empty())
    fail(EBADF);
  if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size())
    fail(errno);
}

void Output::write_document(std::string_view text) {
  if (width() > 0)
    write(safe_text(text, Lines::keep));
  else
    write(text);
}

void Output::flush() {
  if (std::fflush(file_.get()) != 0)
    fail(errno);
}

}  // namespace velkor::ctl
