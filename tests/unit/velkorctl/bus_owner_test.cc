/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/bus_owner.h"

#include <gtest/gtest.h>

#include "tests/support/bus_name_owner.h"
#include "tests/support/private_bus.h"

namespace velkor::ctl {
namespace {

using test::EnvironmentVariable;

TEST(BusOwner, WithoutABusNobodyRuns) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
  const EnvironmentVariable runtime("XDG_RUNTIME_DIR", "/nonexistent");
  EXPECT_FALSE(name_is_owned());
}

TEST(BusOwner, ABusThatIsGoneIsNoBus) {
  const EnvironmentVariable address("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
  EXPECT_FALSE(name_is_owned());
}

TEST(BusOwner, AsksTheBusForTheName) {
  const test::PrivateBus bus;
  EXPECT_FALSE(name_is_owned());
  const test::BusNameOwner owner;
  EXPECT_TRUE(name_is_owned());
  EXPECT_TRUE(owner.calls().empty());
}

}  // namespace
}  // namespace velkor::ctl
