/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/child_process.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velkor::test {
namespace {

/** A pipe whose ends no other program inherits. */
std::array<int, 2> make_pipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0)
    throw std::runtime_error("cannot make a pipe");
  return ends;
}

std::vector<char *> argument_vector(const std::vector<std::string> &command) {
  std::vector<char *> arguments;
  for (const std::string &argument : command)
    arguments.push_back(const_cast<char *>(argument.c_str()));
  arguments.push_back(nullptr);
  return arguments;
}

/** In the new process: become the program, ending with the test program at the latest. */
[[noreturn]] void become(char *const *arguments, int input, int output) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  dup2(input, STDIN_FILENO);
  dup2(output, STDOUT_FILENO);
  execvp(arguments[0], arguments);
  _exit(127);
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string> &command) {
  const std::vector<char *> arguments = argument_vector(command);
  const auto [childInput, input] = make_pipe();
  const auto [output, childOutput] = make_pipe();
  pid_ = fork();
  if (pid_ == 0)
    become(arguments.data(), childInput, childOutput);
  close(childInput);
  close(childOutput);
  input_ = input;
  output_ = output;
  if (pid_ < 0)
    throw std::runtime_error("cannot start " + command.front());
}

ChildProcess::~ChildProcess() {
  close(input_);
  close(output_);
  if (pid_ > 0) {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
  }
}

void ChildProcess::write_line(const std::string &text) const {
  const std::string line = text + '\n';
  if (write(input_, line.data(), line.size()) != static_cast<ssize_t>(line.size()))
    throw std::runtime_error("cannot write to the child process");
}

bool ChildProcess::fill() {
  std::array<char, 4096> block{};
  const ssize_t length = read(output_, block.data(), block.size());
  if (length <= 0)
    return false;
  pending_.append(block.data(), static_cast<std::size_t>(length));
  return true;
}

std::optional<std::string> ChildProcess::read_line() {
  std::size_t end = 0;
  while ((end = pending_.find('\n')) == std::string::npos) {
    if (!fill())
      return std::nullopt;
  }
  std::string line = pending_.substr(0, end);
  pending_.erase(0, end + 1);
  return line;
}

std::string ChildProcess::read_rest() {
  while (fill()) {
  }
  return std::exchange(pending_, {});
}

void ChildProcess::send_signal(int number) const {
  // Without a process, -1 would mean every process there is.
  if (pid_ > 0)
    kill(pid_, number);
}

int ChildProcess::wait() {
  int status = 0;
  if (waitpid(std::exchange(pid_, -1), &status, 0) < 0)
    throw std::runtime_error("the child process is gone");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace velkor::test
