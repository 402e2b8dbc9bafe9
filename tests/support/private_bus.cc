/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/private_bus.h"

#include <csignal>

namespace velkor::test {
namespace {

std::string write_configuration(const std::filesystem::path &directory, const std::string &policy) {
  const std::filesystem::path path = directory / "bus.conf";
  write_file(path, "<busconfig><type>session</type>"
                   "<listen>unix:path=" +
                       (directory / "bus").string() +
                       "</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                       "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                       "<allow eavesdrop=\"true\"/><allow own=\"*\"/>" +
                       policy + "</policy></busconfig>\n");
  return path.string();
}

}  // namespace

PrivateBus::PrivateBus(const std::string &policy)
    : daemon_({"dbus-daemon", "--nofork", "--print-address",
               "--config-file=" + write_configuration(directory_.path(), policy)}),
      address_("DBUS_SESSION_BUS_ADDRESS", daemon_.read_line().value_or("unavailable:")) {}

void PrivateBus::stop() {
  daemon_.send_signal(SIGTERM);
  daemon_.wait();
}

}  // namespace velkor::test
