/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/desktop_keyring.h"

#include <csignal>
#include <stdexcept>

namespace velkor::test {

DesktopKeyring::DesktopKeyring() {
  const std::string home = home_.path().string();
  daemon_.emplace(
      std::vector<std::string>{"gnome-keyring-daemon", "--foreground", "--unlock",
                               "--components=secrets"},
      ProcessOptions{
          .input = "sleutel",
          .environment = {{"HOME", home}, {"XDG_DATA_HOME", home}, {"XDG_RUNTIME_DIR", home}}});
  const ProcessResult ready =
      run_program({"gdbus", "wait", "--session", "--timeout", "60", "org.freedesktop.secrets"});
  if (ready.status != 0)
    throw std::runtime_error("the keyring does not become ready: " + ready.out);
}

void DesktopKeyring::stop() {
  daemon_->send_signal(SIGKILL);
  daemon_->wait();
}

}  // namespace velkor::test
