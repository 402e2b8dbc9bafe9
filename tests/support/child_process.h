/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Runs a program in a child process: either exchanges input and output with it while it runs, or
 * waits for its end and collects what it printed.
 *
 *     ChildProcess listener({VELKORCTL_PROGRAM, "listen"});
 *     EXPECT_EQ(listener.read_line(), "listening");
 *     listener.send_signal(SIGTERM);
 *     EXPECT_EQ(listener.wait(), 0);
 *
 *     const ProcessResult result = run_program({"sort"}, {.input = "b\na\n"});
 *     EXPECT_EQ(result.out, "a\nb\n");
 */
#ifndef VELKOR_TESTS_SUPPORT_CHILD_PROCESS_H
#define VELKOR_TESTS_SUPPORT_CHILD_PROCESS_H

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gio/gio.h>
#include <sys/resource.h>

#include "support/owned.h"
#include "tests/support/sandbox.h"

namespace velkor::test {

/** How a program runs; by default with this process's environment, directory and standard error. */
struct ProcessOptions {
  /** All of its standard input; without it, write() supplies the input. */
  std::optional<std::string> input{};
  /** Variables that are set in addition to this process's. */
  std::map<std::string, std::string> environment{};
  /** Its working directory; empty for this process's. */
  std::filesystem::path directory{};
  /** Its standard output is this file; empty to read it here. */
  std::filesystem::path output_file{};
  /** Standard error is part of the result instead of the test's own output. */
  bool capture_errors = false;
  /** No file may grow beyond this many bytes, as on a full disk. */
  std::optional<rlim_t> file_size_limit{};
  /** It runs on a terminal of this width, which takes the place of all three standard streams. */
  std::optional<unsigned short> terminal_columns{};
  /** How long one wait for its output or its end may take; beyond it, std::runtime_error. */
  std::chrono::seconds timeout{100};
};

struct ProcessResult {
  /** The exit status, or minus the signal that ended it. */
  int status = 0;
  std::string out;
  std::string err;
};

/** Never outlives the test: it is killed and reaped at the end of its scope. */
class ChildProcess {
public:
  /** Starts `command` (program and arguments, looked up in PATH); throws when it cannot. */
  explicit ChildProcess(const std::vector<std::string> &command, ProcessOptions options = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess &) = delete;
  ChildProcess &operator=(const ChildProcess &) = delete;

  /** Writes to its standard input or types on its terminal. */
  void write(const std::string &text) const;
  /** Writes the text and a line feed. */
  void write_line(const std::string &text) const;
  /** Waits for its next line of output, without the line feed; nullopt at the end. */
  std::optional<std::string> read_line();
  /** Everything that it still prints until it closes its standard output. */
  std::string read_rest();
  /** Waits until its output contains the text, and leaves all output to be read. */
  void wait_for(const std::string &text);
  /** Sends the signal; once the process has ended, nothing happens. */
  void send_signal(int number) const;
  /** Waits for its end: the exit status, or minus the signal that ended it. */
  int wait();
  /** Reads the rest of its output and waits for its end. */
  ProcessResult finish();

private:
  void start(const std::vector<std::string> &command);
  void open_terminal(GSubprocessLauncher *launcher);
  bool fill();

  std::string name_;
  ProcessOptions options_;
  TemporaryDirectory directory_;
  OwnedObject<GSubprocess> process_;
  OwnedObject<GOutputStream> input_;
  OwnedObject<GInputStream> output_;
  std::string pending_;
};

/** Runs the program to its end, by default without input. */
ProcessResult run_program(const std::vector<std::string> &command, ProcessOptions options = {});

}  // namespace velkor::test

#endif
