/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Runs a program beside the test and talks to it over its standard input and output. */
#ifndef VELKOR_TESTS_SUPPORT_CHILD_PROCESS_H
#define VELKOR_TESTS_SUPPORT_CHILD_PROCESS_H

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace velkor::test {

/** Never outlives the test: it is killed and reaped at the end of its scope. */
class ChildProcess {
public:
  /** Starts `command` (program and arguments, looked up in PATH) in this process's environment. */
  explicit ChildProcess(const std::vector<std::string> &command);
  ~ChildProcess();
  ChildProcess(const ChildProcess &) = delete;
  ChildProcess &operator=(const ChildProcess &) = delete;

  /** Writes the text and a line feed to its standard input. */
  void write_line(const std::string &text) const;
  /** Waits for its next line of output, without the line feed; nullopt at the end. */
  std::optional<std::string> read_line();
  /** Everything that it still prints until it closes its standard output. */
  std::string read_rest();
  void send_signal(int number) const;
  /** Waits for its end: the exit status, or minus the signal that ended it. */
  int wait();

private:
  bool fill();

  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::string pending_;
};

}  // namespace velkor::test

#endif
