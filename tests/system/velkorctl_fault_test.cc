/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* Every system call on a file of the cache fails once: nothing is lost, and the user is told. */
#include <cerrno>
#include <ostream>
#include <string>

#include "tests/system/velkorctl_fixture.h"

namespace velkor::test {
namespace {

namespace fs = std::filesystem;

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::MatchesRegex;

struct Fault {
  const char *call;
  int error;
};

void PrintTo(const Fault &fault, std::ostream *stream) {
  *stream << fault.call;
}

class VelkorctlFault : public ServerVelkorctlTest, public ::testing::WithParamInterface<Fault> {
protected:
  /** Runs the command while call number `number` fails. */
  [[nodiscard]] ProcessResult run_with_fault(const Words &words, int number) const {
    fs::remove(report);
    return run(words, {.environment = {{"LD_PRELOAD", VELKOR_FAULTS_LIBRARY},
                                       {"VELKOR_FAULT_CALL", GetParam().call},
                                       {"VELKOR_FAULT_DIRECTORY", fs::canonical(sandbox.cache())},
                                       {"VELKOR_FAULT_NUMBER", std::to_string(number)},
                                       {"VELKOR_FAULT_ERROR", std::to_string(GetParam().error)},
                                       {"VELKOR_FAULT_REPORT", report}}});
  }

  /**
   * Lets each call of the command fail in turn, from the same cache each time, until none is left
   * that could fail. After each run, the cache is verified, `check` looks at it, and the command is
   * repeated without a fault.
   */
  template <typename Check>
  void fail_each_call(const Words &words, Check check) const {
    const fs::path original = sandbox.home() / "original";
    fs::copy(sandbox.cache(), original);
    int number = 0;
    do {
      ASSERT_LT(++number, 1000);
      SCOPED_TRACE(std::string(GetParam().call) + " number " + std::to_string(number));
      fs::remove_all(sandbox.cache());
      fs::copy(original, sandbox.cache());
      const ProcessResult outcome = run_with_fault(words, number);
      EXPECT_TRUE(outcome.status == 0 || outcome.err.starts_with("velkorctl: ")) << outcome.err;
      EXPECT_EQ(run({"cache", "verify"}).status, 0) << outcome.err;
      check(outcome);
      EXPECT_EQ(run(words).status, 0);
      EXPECT_THAT(cached_names(), Each(AnyOf("velkorctl.lock", MatchesRegex(known_files))));
    } while (fs::exists(report));
    EXPECT_GT(number, 1) << "no call has failed";
  }

  /** The files of the cache, and the backups of those that could not be read. */
  static constexpr const char *known_files =
      "velkor\\.(conf|filters|mail|groups\\.gz|posts\\.gz)(\\.(onleesbaar|vorige)-[-0-9]+)?";

  fs::path report = sandbox.home() / "report";
};

INSTANTIATE_TEST_SUITE_P(Each, VelkorctlFault,
                         ::testing::Values(Fault{"open", EMFILE}, Fault{"write", ENOSPC},
                                           Fault{"pwrite", ENOSPC}, Fault{"fsync", EIO},
                                           Fault{"rename", EIO}, Fault{"close", EIO},
                                           Fault{"fstat", EIO}, Fault{"fchmod", EPERM},
                                           Fault{"flock", ENOLCK}, Fault{"unlink", EACCES}),
                         ::testing::PrintToStringParamName());

TEST_P(VelkorctlFault, LeavesTheOldSettingsOrTheNew) {
  const Words command{"config", "set", "badword", "een", "twee"};
  ASSERT_EQ(run({"config", "set", "badword", "drie"}).status, 0);
  const std::string before = read_file(cached("velkor.conf"));
  ASSERT_EQ(run(command).status, 0);
  const std::string after = read_file(cached("velkor.conf"));
  ASSERT_NE(before, after);
  write_file(cached("velkor.conf"), before);
  fail_each_call(command, [&](const ProcessResult &outcome) {
    const std::string found = read_file(cached("velkor.conf"));
    EXPECT_TRUE(found == after || (found == before && outcome.status != 0)) << outcome.err;
  });
}

TEST_P(VelkorctlFault, LeavesTheOldPostingsOrTheNew) {
  const auto listed = [this] { return count_objects(run({"list", "--format", "json"}).out); };
  const auto last_check = [this] { return run({"config", "get", "lastCheck"}).out; };
  ASSERT_EQ(run({"update"}).status, 0);
  const std::size_t before = listed();
  const std::string time_before = last_check();
  server.advance({.added = 3, .seconds = 60});
  fail_each_call({"update"}, [&](const ProcessResult &outcome) {
    const std::size_t found = listed();
    EXPECT_TRUE(found == before + 3 || (found == before && outcome.status != 0)) << outcome.err;
    EXPECT_TRUE(found == before + 3 || last_check() == time_before) << outcome.err;
    EXPECT_TRUE(outcome.status != 0 || last_check() != time_before) << outcome.err;
  });
  EXPECT_EQ(listed(), before + 3);
}

}  // namespace
}  // namespace velkor::test
