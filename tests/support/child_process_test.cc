/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/child_process.h"

#include <csignal>
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velkor::test {
namespace {

using ::testing::HasSubstr;

TEST(ChildProcess, TalksOverStandardInputAndOutput) {
  ChildProcess cat({"cat"});
  cat.write_line("one");
  EXPECT_EQ(cat.read_line(), "one");
  cat.write("two\nthree");
  EXPECT_EQ(cat.read_line(), "two");
  cat.wait_for("three");
  cat.send_signal(SIGTERM);
  EXPECT_EQ(cat.read_rest(), "three");
  EXPECT_EQ(cat.read_line(), std::nullopt);
  EXPECT_EQ(cat.wait(), -SIGTERM);
}

TEST(ChildProcess, CapturesBothStreamsAndTheStatus) {
  const ProcessResult result =
      run_program({"sh", "-c", "cat; echo bad >&2; exit 3"}, {.input = "good\n"});
  EXPECT_EQ(result.status, 3);
  EXPECT_EQ(result.out, "good\n");
  EXPECT_EQ(result.err, "bad\n");
}

TEST(ChildProcess, CarriesMoreThanAPipeHolds) {
  const std::string text(1000000, 'x');
  EXPECT_EQ(run_program({"cat"}, {.input = text}).out, text);
  EXPECT_EQ(run_program({"sh", "-c", "cat >&2"}, {.input = text}).err, text);
}

TEST(ChildProcess, RunsInTheGivenEnvironmentAndDirectory) {
  const TemporaryDirectory directory;
  const ProcessResult result =
      run_program({"sh", "-c", "echo $VELKOR_WORD $VELKOR_OTHER; pwd -P"},
                  {.environment = {{"VELKOR_WORD", "hello"}}, .directory = directory.path()});
  EXPECT_EQ(result.out, "hello\n" + std::filesystem::canonical(directory.path()).string() + "\n");
  const EnvironmentVariable other("VELKOR_OTHER", "inherited");
  EXPECT_EQ(run_program({"sh", "-c", "echo $VELKOR_WORD$VELKOR_OTHER"}).out, "inherited\n");
}

TEST(ChildProcess, WritesIntoAFileUpToALimit) {
  const TemporaryDirectory directory;
  const std::filesystem::path file = directory.path() / "out";
  const ProcessResult result =
      run_program({"sh", "-c", "printf %01000d 0"}, {.output_file = file, .file_size_limit = 100});
  EXPECT_NE(result.status, 0);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(std::filesystem::file_size(file), 100U);
}

TEST(ChildProcess, GetsATerminal) {
  ChildProcess shell({"sh", "-c",
                      "test -t 0 && test -t 1 && test -t 2 && stty size </dev/tty; "
                      "read word; echo got $word"},
                     {.terminal_columns = 57});
  shell.wait_for("24 57");
  shell.write("milk\n");
  const ProcessResult result = shell.finish();
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, HasSubstr("got milk"));
}

TEST(ChildProcess, HandlesSigpipeAsUsual) {
  EXPECT_EQ(run_program({"bash", "-c", "yes | head -n 1; exit ${PIPESTATUS[0]}"}).status,
            128 + SIGPIPE);
}

TEST(ChildProcess, GivesUpAfterTheTimeout) {
  ChildProcess silent({"sleep", "1000"}, {.timeout = std::chrono::seconds(1)});
  EXPECT_THROW(silent.read_line(), std::runtime_error);
  EXPECT_THROW(silent.wait(), std::runtime_error);
  silent.send_signal(SIGKILL);
  EXPECT_EQ(silent.wait(), -SIGKILL);
}

TEST(ChildProcess, ThrowsWhenThereIsNoSuchProgram) {
  EXPECT_THROW(ChildProcess({"/nonexistent/program"}), std::runtime_error);
}

TEST(ChildProcess, SendsNoSignalAfterTheEnd) {
  ChildProcess ended({"true"});
  EXPECT_EQ(ended.wait(), 0);
  ended.send_signal(SIGKILL);
  EXPECT_EQ(ended.wait(), 0);
}

TEST(ChildProcess, EndsWithItsScope) {
  std::string pid;
  {
    ChildProcess shell({"sh", "-c", "echo $$; exec sleep 1000"});
    pid = shell.read_line().value_or("");
    ASSERT_TRUE(std::filesystem::exists("/proc/" + pid));
  }
  EXPECT_FALSE(std::filesystem::exists("/proc/" + pid));
}

}  // namespace
}  // namespace velkor::test
