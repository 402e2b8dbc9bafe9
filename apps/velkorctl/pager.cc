/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/pager.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <gio/gunixoutputstream.h>

#include "velkorctl/failure.h"

namespace velkor::ctl {

std::string pager_command() {
  if (const char *own = g_getenv("VELKORCTL_PAGER"))
    return own;
  if (const char *common = g_getenv("PAGER"); common != nullptr && *common != '\0')
    return common;
  return OwnedText(g_find_program_in_path("less")) ? "less -FRX" : "";
}

Pager::Pager(const std::string &command, int output) {
  const OwnedObject<GSubprocessLauncher> launcher(
      g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDIN_PIPE));
  g_subprocess_launcher_take_stdout_fd(launcher.get(), fcntl(output, F_DUPFD_CLOEXEC, 0));
  g_subprocess_launcher_setenv(launcher.get(), "LESS", "FRX", FALSE);
  const std::array<const char *, 4> words{"sh", "-c", command.c_str(), nullptr};
  GError *error = nullptr;
  process_.reset(g_subprocess_launcher_spawnv(launcher.get(), words.data(), &error));
  if (!process_)
    throw Failure(Exit::failed,
                  std::string("cannot start the pager: ") + OwnedError(error)->message);
}

/** Keys that interrupt are the pager's as long as it runs. */
Pager::~Pager() {
  const auto earlier = std::signal(SIGINT, SIG_IGN);
  g_output_stream_close(g_subprocess_get_stdin_pipe(process_.get()), nullptr, nullptr);
  g_subprocess_wait(process_.get(), nullptr, nullptr);
  std::signal(SIGINT, earlier);
}

OwnedFile Pager::input() const {
  GOutputStream *stream = g_subprocess_get_stdin_pipe(process_.get());
  const int pipe = g_unix_output_stream_get_fd(G_UNIX_OUTPUT_STREAM(stream));
  OwnedFile file(fdopen(fcntl(pipe, F_DUPFD_CLOEXEC, 0), "w"));
  if (!file)
    throw Failure(Exit::failed, "cannot write to the pager: " + system_error(errno));
  return file;
}

}  // namespace velkor::ctl
