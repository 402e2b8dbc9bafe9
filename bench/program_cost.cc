/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/program_cost.h"

#include <chrono>
#include <stdexcept>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velkor::bench {
namespace {

double seconds_of(const timeval &time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

pid_t start(const std::vector<std::string> &arguments, const std::string &output) {
  std::vector<char *> argv;
  argv.reserve(arguments.size() + 1);
  for (const std::string &argument : arguments)
    // posix_spawnp() changes nothing of its arguments.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    argv.push_back(const_cast<char *>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t child = 0;
  const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error != 0)
    throw std::runtime_error("cannot start " + arguments.front());
  return child;
}

}  // namespace

Cost cost_of_program(const std::vector<std::string> &arguments, const std::string &output) {
  const auto before = std::chrono::steady_clock::now();
  const pid_t child = start(arguments, output);
  int status = 0;
  rusage usage{};
  if (wait4(child, &status, 0, &usage) != child || status != 0)
    throw std::runtime_error("failed: " + arguments.front());
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - before;
  return {seconds_of(usage.ru_utime) + seconds_of(usage.ru_stime), wall.count(),
          // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): as the C library has it
          static_cast<double>(usage.ru_maxrss) * 1024};
}

}  // namespace velkor::bench
