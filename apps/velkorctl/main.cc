/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <clocale>
#include <csignal>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <velkor/zox_app_core.h>

#include "velkorctl/command_line.h"
#include "velkorctl/commands.h"
#include "velkorctl/english.h"
#include "velkorctl/formats.h"
#include "velkorctl/messages.h"
#include "velkorctl/safe_text.h"

namespace velkor::ctl {
namespace {

Output::Stream state_of_stdout() noexcept {
  return fcntl(STDOUT_FILENO, F_GETFD) < 0 ? Output::Stream::closed : Output::Stream::open;
}

/** Keeps a file opened later from becoming a standard stream that was closed. */
void ensure_standard_streams() noexcept {
  int descriptor = 0;
  do
    descriptor = open("/dev/null", O_RDWR);
  while (descriptor >= 0 && descriptor <= STDERR_FILENO);
  if (descriptor > STDERR_FILENO)
    close(descriptor);
}

/** The memory holds a password, which a core dump would show to whoever gets to read it. */
void forbid_core_dumps() noexcept {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

/** A closed pipe and a full disk are reported as errors instead of killing the process. */
void prepare_process() noexcept {
  ensure_standard_streams();
  forbid_core_dumps();
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  std::setlocale(LC_CTYPE, "");    // NOLINT(concurrency-mt-unsafe): no thread has started yet
  std::setlocale(LC_COLLATE, "");  // NOLINT(concurrency-mt-unsafe): no thread has started yet
  install_log_handlers();
  zox_set_tolerant(1);
}

Exit run(const std::vector<std::string> &words, Output::Stream stream) {
  const std::vector<CommandGroup> commands = all_commands();
  const ParsedCommandLine parsed = parse_command_line(commands, words);
  set_tracing(parsed.options.trace);
  Output out(parsed.options.trace, stream);
  if (!parsed.options.pager)
    out.forbid_paging();
  set_ascii_only(out.width() > 0 && g_get_charset(nullptr) == FALSE);
  out.write(parsed.help_text);
  Exit exit = Exit::ok;
  if (parsed.command != nullptr) {
    check_output_options(*parsed.command, parsed.arguments);
    exit =
        parsed.command->run({parsed.options, parsed.arguments, out, *parsed.command, parsed.name});
  }
  out.flush();
  return exit;
}

/** Looked for before the words are understood, since they may be wrong. */
bool asks_for_json(const std::vector<std::string> &words) {
  const auto is_json = [](const std::string &format) {
    return format == "json" || format == "ndjson";
  };
  constexpr std::string_view option = "--format";
  for (std::size_t place = 0; place < words.size(); ++place) {
    const std::string &word = words[place];
    if (word == option && place + 1 < words.size() && is_json(words[place + 1]))
      return true;
    if (word.starts_with(option) && word.size() > option.size() && word[option.size()] == '=' &&
        is_json(word.substr(option.size() + 1)))
      return true;
  }
  return false;
}

Exit run_and_report(const std::vector<std::string> &words, Output::Stream stream) {
  const bool json = asks_for_json(words);
  set_json_messages(json);
  set_english_added(!json && !session_is_dutch());
  try {
    return run(words, stream);
  } catch (const Failure &failure) {
    report(failure);
    return failure.exit();
  } catch (const std::exception &error) {
    report(Failure(Exit::failed, error.what()));
    return Exit::failed;
  }
}

}  // namespace
}  // namespace velkor::ctl

int main(int count, char **words) {
  const velkor::ctl::Output::Stream stream = velkor::ctl::state_of_stdout();
  velkor::ctl::prepare_process();
  return static_cast<int>(
      velkor::ctl::run_and_report(std::vector<std::string>(words + 1, words + count), stream));
}
