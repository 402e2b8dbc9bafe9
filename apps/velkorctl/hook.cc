/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/hook.h"

#include <memory>

#include <fcntl.h>
#include <gio/gio.h>
#include <unistd.h>

#include "support/owned.h"
#include "velkorctl/failure.h"
#include "velkorctl/interruption.h"

namespace velkor::ctl {
namespace {

using OwnedWords = std::unique_ptr<char *, ReleaseWith<g_strfreev>>;

std::vector<std::string> words_in(const std::string &line) {
  char **place = nullptr;
  GError *error = nullptr;
  if (g_shell_parse_argv(line.c_str(), nullptr, &place, &error) == FALSE)
    throw usage_error(std::string("--exec: ") + OwnedError(error)->message);
  const OwnedWords owned(place);
  std::vector<std::string> words;
  for (char **word = place; *word != nullptr; ++word)
    words.emplace_back(*word);
  return words;
}

/** Standard output has only what velkorctl was asked for. */
OwnedObject<GSubprocess> start(const std::vector<std::string> &words) {
  const OwnedObject<GSubprocessLauncher> launcher(
      g_subprocess_launcher_new(G_SUBPROCESS_FLAGS_STDIN_PIPE));
  g_subprocess_launcher_take_stdout_fd(launcher.get(), fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0));
  std::vector<const char *> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string &word : words)
    arguments.push_back(word.c_str());
  arguments.push_back(nullptr);
  GError *error = nullptr;
  OwnedObject<GSubprocess> process(
      g_subprocess_launcher_spawnv(launcher.get(), arguments.data(), &error));
  if (!process)
    throw Failure(Exit::command_failed,
                  std::string("cannot start the command of --exec: ") + OwnedError(error)->message);
  return process;
}

/** A command need not read all of it, or any. */
void feed(GSubprocess *process, const std::string &input) noexcept {
  GOutputStream *pipe = g_subprocess_get_stdin_pipe(process);
  g_output_stream_write_all(pipe, input.data(), input.size(), nullptr, nullptr, nullptr);
  g_output_stream_close(pipe, nullptr, nullptr);
}

void require_success_of(GSubprocess *process) {
  const std::string command = "the command of --exec ";
  if (g_subprocess_get_if_signaled(process) != FALSE)
    throw Failure(Exit::command_failed, command + "was ended by signal " +
                                            std::to_string(g_subprocess_get_term_sig(process)));
  if (const int status = g_subprocess_get_exit_status(process); status != 0)
    throw Failure(Exit::command_failed,
                  command + "has failed with exit status " + std::to_string(status));
}

}  // namespace

Hook::Hook(const std::string &line) : words_(words_in(line)) {
  if (!OwnedText(g_find_program_in_path(words_.front().c_str())))
    throw usage_error("--exec: there is no program " + words_.front());
}

void Hook::run(const std::string &input) const {
  const Interruption interruption;
  const OwnedObject<GSubprocess> process = start(words_);
  feed(process.get(), input);
  g_subprocess_wait(process.get(), nullptr, nullptr);
  throw_if_interrupted();
  require_success_of(process.get());
}

}  // namespace velkor::ctl
