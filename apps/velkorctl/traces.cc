/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/traces.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "velkorctl/failure.h"
#include "velkorctl/messages.h"

namespace velkor::ctl {
namespace {

/** From now on standard output is `target`. */
void redirect_stdout(const Descriptor &target) noexcept {
  std::fflush(stdout);
  dup2(target.get(), STDOUT_FILENO);
}

Descriptor nowhere() noexcept {
  return Descriptor(open("/dev/null", O_WRONLY | O_CLOEXEC));
}

/** Passes the whole lines of `text` on and keeps the rest. */
void pass_lines(std::string &text) {
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
    say("trace: " + text.substr(0, end));
    text.erase(0, end + 1);
  }
}

}  // namespace

Traces::Traces(bool show) {
  if (!show) {
    redirect_stdout(nowhere());
    return;
  }
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0)
    throw Failure(Exit::failed, "cannot make a pipe: " + system_error(errno));
  reading_end_ = Descriptor(ends[0]);
  redirect_stdout(Descriptor(ends[1]));
  std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
  forwarder_ = std::thread([this] { forward(); });
}

Traces::~Traces() {
  redirect_stdout(nowhere());
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
    say("trace: " + pending);
}

}  // namespace velkor::ctl
