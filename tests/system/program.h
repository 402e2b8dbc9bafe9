/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Runs an installed program to its end and tells what it printed where. */
#ifndef VELKOR_TESTS_SYSTEM_PROGRAM_H
#define VELKOR_TESTS_SYSTEM_PROGRAM_H

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "tests/support/sandbox.h"

namespace velkor::test {

struct Outcome {
  /** The exit status, or minus the signal that ended it. */
  int status = 0;
  std::string out;
  std::string err;
};

struct Surroundings {
  /** What standing input holds. */
  std::string input{};
  /** No file grows beyond so many bytes: a disk that is full. */
  std::optional<unsigned long> file_size_limit{};
  /** Standard output is this file instead of a collected one. */
  std::string output_file{};
};

/** A program under way, in this process's environment. */
class Program {
public:
  explicit Program(const std::vector<std::string> &command, const Surroundings &around = {});
  ~Program();
  Program(const Program &) = delete;
  Program &operator=(const Program &) = delete;

  void send_signal(int number) const;
  /** Waits for its end. */
  Outcome finish();

private:
  TemporaryDirectory directory_;
  pid_t pid_ = -1;
};

/** A program on a terminal of its own. */
class TerminalProgram {
public:
  TerminalProgram(const std::vector<std::string> &command, unsigned short columns);
  ~TerminalProgram();
  TerminalProgram(const TerminalProgram &) = delete;
  TerminalProgram &operator=(const TerminalProgram &) = delete;

  /** Types the text. */
  void type(const std::string &text) const;
  /** Waits until the terminal has shown the text. */
  void wait_for(const std::string &text);
  /** Waits for the program's end; `out` holds everything that the terminal was sent. */
  Outcome finish();

private:
  bool fill();

  int terminal_ = -1;
  pid_t pid_ = -1;
  std::string shown_;
};

inline Outcome run_program(const std::vector<std::string> &command,
                           const Surroundings &around = {}) {
  return Program(command, around).finish();
}

}  // namespace velkor::test

#endif
