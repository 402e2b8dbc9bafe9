/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/terminal.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "velkorctl/failure.h"
#include "velkorctl/interruption.h"
#include "velkorctl/safe_text.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

constexpr int default_width = 80;

/** Turns off the echo of a terminal while it lives. */
class WithoutEcho {
public:
  explicit WithoutEcho(int descriptor) noexcept : descriptor_(descriptor) {
    active_ = tcgetattr(descriptor_, &earlier_) == 0;
    termios quiet = earlier_;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (active_)
      tcsetattr(descriptor_, TCSAFLUSH, &quiet);
  }
  ~WithoutEcho() {
    if (active_)
      tcsetattr(descriptor_, TCSAFLUSH, &earlier_);
  }
  WithoutEcho(const WithoutEcho &) = delete;
  WithoutEcho &operator=(const WithoutEcho &) = delete;

private:
  int descriptor_;
  bool active_ = false;
  termios earlier_{};
};

void put(const std::string &text) {
  const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
  static_cast<void>(written);  // the answer is awaited all the same
}

/**
 * Waits for a line. Only here do signals get through, so that one that arrives before the wait has
 * begun ends it as well.
 */
void wait_for_line() {
  sigset_t signals;
  sigset_t earlier;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP})
    sigaddset(&signals, number);
  pthread_sigmask(SIG_BLOCK, &signals, &earlier);
  pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
  if (!Interruption::requested())
    ppoll(&input, 1, nullptr, &earlier);
  pthread_sigmask(SIG_SETMASK, &earlier, nullptr);
  throw_if_interrupted();
}

std::string read_line() {
  std::string line;
  if (!std::getline(std::cin, line))
    throw usage_error("there is nothing on standard input");
  if (!line.empty() && line.back() == '\r')
    line.pop_back();
  return line;
}

}  // namespace

int terminal_width(int descriptor) noexcept {
  if (isatty(descriptor) == 0)
    return 0;
  winsize size{};
  const bool known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : default_width;
}

bool terminal_is_capable() noexcept {
  const char *name = std::getenv("TERM");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  return name != nullptr && *name != '\0' && std::string_view(name) != "dumb";
}

std::string read_secret(const std::string &prompt) {
  if (isatty(STDIN_FILENO) == 0)
    return read_line();
  const Interruption interruption;  // the terminal gets its echo back first
  const WithoutEcho quiet(STDIN_FILENO);
  put(prompt);
  wait_for_line();
  try {
    std::string line = read_line();
    put("\n");
    return line;
  } catch (const Failure &) {
    throw_if_interrupted();
    throw;
  }
}

bool confirm(const std::string &question) {
  put(safe_text(question) + " [y/N] ");
  const std::string answer = read_line();
  return same_name(answer, "y") || same_name(answer, "yes");
}

}  // namespace velkor::ctl
