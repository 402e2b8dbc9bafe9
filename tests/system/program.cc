/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/system/program.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <pty.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velkor::test {
namespace {

std::vector<char *> argument_vector(const std::vector<std::string> &command) {
  std::vector<char *> arguments;
  for (const std::string &argument : command)
    arguments.push_back(const_cast<char *>(argument.c_str()));
  arguments.push_back(nullptr);
  return arguments;
}

void redirect(int descriptor, const std::string &file, int flags) {
  const int opened = open(file.c_str(), flags | O_CLOEXEC, 0600);
  if (opened < 0)
    _exit(126);
  dup2(opened, descriptor);
}

[[noreturn]] void become(char *const *arguments) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::signal(SIGPIPE, SIG_DFL);
  execvp(arguments[0], arguments);
  _exit(127);
}

int wait_for_end(pid_t &pid) {
  int status = 0;
  if (waitpid(std::exchange(pid, -1), &status, 0) < 0)
    throw std::runtime_error("the program is gone");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void end(pid_t pid) {
  if (pid <= 0)
    return;
  kill(pid, SIGKILL);
  waitpid(pid, nullptr, 0);
}

void limit_files(unsigned long bytes) {
  const rlimit limit{bytes, bytes};
  setrlimit(RLIMIT_FSIZE, &limit);
}

}  // namespace

Program::Program(const std::vector<std::string> &command, const Surroundings &around) {
  const std::vector<char *> arguments = argument_vector(command);
  const std::string folder = directory_.path().string();
  write_file(folder + "/in", around.input);
  const std::string out = around.output_file.empty() ? folder + "/out" : around.output_file;
  pid_ = fork();
  if (pid_ == 0) {
    redirect(STDIN_FILENO, folder + "/in", O_RDONLY);
    redirect(STDOUT_FILENO, out, O_WRONLY | O_CREAT);
    redirect(STDERR_FILENO, folder + "/err", O_WRONLY | O_CREAT);
    if (around.file_size_limit)
      limit_files(*around.file_size_limit);
    become(arguments.data());
  }
  if (pid_ < 0)
    throw std::runtime_error("cannot start " + command.front());
}

Program::~Program() {
  end(pid_);
}

void Program::send_signal(int number) const {
  // Without a process, -1 would mean every process there is.
  if (pid_ > 0)
    kill(pid_, number);
}

Outcome Program::finish() {
  Outcome outcome;
  outcome.status = wait_for_end(pid_);
  const std::filesystem::path out = directory_.path() / "out";
  outcome.out = std::filesystem::exists(out) ? read_file(out) : "";
  outcome.err = read_file(directory_.path() / "err");
  return outcome;
}

TerminalProgram::TerminalProgram(const std::vector<std::string> &command, unsigned short columns) {
  const std::vector<char *> arguments = argument_vector(command);
  const winsize size{24, columns, 0, 0};
  pid_ = forkpty(&terminal_, nullptr, nullptr, &size);
  if (pid_ == 0)
    become(arguments.data());
  if (pid_ < 0)
    throw std::runtime_error("cannot start " + command.front());
}

TerminalProgram::~TerminalProgram() {
  end(pid_);
  close(terminal_);
}

void TerminalProgram::type(const std::string &text) const {
  if (write(terminal_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
    throw std::runtime_error("cannot type");
}

bool TerminalProgram::fill() {
  std::array<char, 4096> block{};
  const ssize_t length = read(terminal_, block.data(), block.size());
  if (length <= 0)
    return false;
  shown_.append(block.data(), static_cast<std::size_t>(length));
  return true;
}

void TerminalProgram::wait_for(const std::string &text) {
  while (shown_.find(text) == std::string::npos)
    if (!fill())
      throw std::runtime_error("the program ended without showing " + text + ": " + shown_);
}

Outcome TerminalProgram::finish() {
  while (fill()) {
  }
  Outcome outcome;
  outcome.status = wait_for_end(pid_);
  outcome.out = shown_;
  return outcome;
}

}  // namespace velkor::test
