/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/measure.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <malloc.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velkor::bench {
namespace {

double seconds_of(const rusage &usage) {
  const auto seconds = [](const timeval &time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double own_seconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return seconds_of(usage);
}

/** A line of /proc/self/status such as "VmHWM:     1234 kB", in MiB. */
double status_mebibytes(const std::string &name) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(name + ":"))
      return std::strtod(line.c_str() + name.size() + 1, nullptr) / 1024;
  }
  throw std::runtime_error("no " + name + " in /proc/self/status");
}

/** From here on the peak is that of what follows. */
void forget_peak() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

}  // namespace

Meter::Meter() {
  malloc_trim(0);  // what was freed before is nobody's gain
  forget_peak();
  mebibytes_before_ = status_mebibytes("VmRSS");
  seconds_before_ = own_seconds();
}

Cost Meter::stop() const {
  const double seconds = own_seconds() - seconds_before_;
  return {seconds, status_mebibytes("VmHWM") - mebibytes_before_};
}

double run_program(const std::vector<std::string> &arguments, const std::string &output) {
  std::vector<char *> argv;
  for (const std::string &argument : arguments)
    argv.push_back(const_cast<char *>(argument.c_str()));
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                   O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t child = 0;
  const int error = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (error != 0 || wait4(child, &status, 0, &usage) != child || status != 0)
    throw std::runtime_error("failed: " + arguments.front());
  return seconds_of(usage);
}

}  // namespace velkor::bench
