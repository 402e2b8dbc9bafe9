/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The session bus, which tells whether the desktop front end is running. */
#include "velkorctl/bus_owner.h"
#include "velkorctl/doctor/examination.h"

namespace velkor::ctl::doctor {

Findings check_bus() {
  switch (bus_state()) {
  case BusState::none:
    return {{"bus", "there is no session bus, so that a running Velkor would not be noticed"}};
  case BusState::silent:
    return {{"bus", "the session bus does not answer",
             "check DBUS_SESSION_BUS_ADDRESS, or log in anew"}};
  case BusState::answering:
    break;
  }
  if (front_end_is_running())
    return {{"bus", "Velkor is running; commands that write are refused until it is closed"}};
  return {{"bus", "the session bus answers, and Velkor is not running"}};
}

}  // namespace velkor::ctl::doctor
