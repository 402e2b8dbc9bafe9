/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/support/child_process.h"

#include <array>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <gio/gunixinputstream.h>
#include <gio/gunixoutputstream.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace velkor::test {
namespace {

gboolean cancel(gpointer cancellable) {
  g_cancellable_cancel(static_cast<GCancellable *>(cancellable));
  return G_SOURCE_REMOVE;
}

/** Waits for one asynchronous call of GIO, which is cancelled after the timeout. */
class TimedCall {
public:
  explicit TimedCall(std::chrono::seconds timeout)
      : context_(g_main_context_new()), cancellable_(g_cancellable_new()),
        timer_(g_timeout_source_new_seconds(static_cast<guint>(timeout.count()))) {
    g_source_set_callback(timer_.get(), cancel, cancellable_.get(), nullptr);
    g_source_attach(timer_.get(), context_.get());
    g_main_context_push_thread_default(context_.get());
  }
  ~TimedCall() {
    g_source_destroy(timer_.get());
    g_main_context_pop_thread_default(context_.get());
  }
  TimedCall(const TimedCall &) = delete;
  TimedCall &operator=(const TimedCall &) = delete;

  /** What the call is given: this, its cancellable, and as its callback's data the object. */
  static void finished(GObject *, GAsyncResult *result, gpointer call) {
    static_cast<TimedCall *>(call)->result_.reset(G_ASYNC_RESULT(g_object_ref(result)));
  }
  [[nodiscard]] GCancellable *cancellable() const { return cancellable_.get(); }

  GAsyncResult *result() {
    while (!result_)
      g_main_context_iteration(context_.get(), TRUE);
    return result_.get();
  }
  [[nodiscard]] bool timed_out() const {
    return g_cancellable_is_cancelled(cancellable_.get()) != FALSE;
  }

private:
  std::unique_ptr<GMainContext, ReleaseWith<g_main_context_unref>> context_;
  OwnedObject<GCancellable> cancellable_;
  std::unique_ptr<GSource, ReleaseWith<g_source_unref>> timer_;
  OwnedObject<GAsyncResult> result_;
};

/** Runs in the new process: it ends with the test program at the latest, and on a hangup. */
void prepare_child(gpointer data) {
  const auto &options = *static_cast<const ProcessOptions *>(data);
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  std::signal(SIGHUP, SIG_DFL);  // ignored where the tests run under nohup
  if (options.file_size_limit) {
    const rlimit limit{*options.file_size_limit, *options.file_size_limit};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  if (options.terminal_columns) {
    setsid();
    ioctl(STDIN_FILENO, TIOCSCTTY, 0);
  }
}

GSubprocessFlags flags_of(const ProcessOptions &options) {
  int flags = G_SUBPROCESS_FLAGS_NONE;
  if (!options.terminal_columns && !options.input)
    flags |= G_SUBPROCESS_FLAGS_STDIN_PIPE;
  if (!options.terminal_columns && options.output_file.empty())
    flags |= G_SUBPROCESS_FLAGS_STDOUT_PIPE;
  return static_cast<GSubprocessFlags>(flags);
}

std::vector<const char *> argument_vector(const std::vector<std::string> &command) {
  std::vector<const char *> arguments;
  for (const std::string &argument : command)
    arguments.push_back(argument.c_str());
  arguments.push_back(nullptr);
  return arguments;
}

template <typename Stream>
OwnedObject<Stream> reference(Stream *stream) {
  return OwnedObject<Stream>(stream == nullptr ? nullptr
                                               : static_cast<Stream *>(g_object_ref(stream)));
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string> &command, ProcessOptions options)
    : name_(command.front()), options_(std::move(options)) {
  start(command);
}

void ChildProcess::start(const std::vector<std::string> &command) {
  const OwnedObject<GSubprocessLauncher> launcher(g_subprocess_launcher_new(flags_of(options_)));
  g_subprocess_launcher_set_child_setup(launcher.get(), prepare_child, &options_, nullptr);
  for (const auto &[name, value] : options_.environment)
    g_subprocess_launcher_setenv(launcher.get(), name.c_str(), value.c_str(), TRUE);
  if (!options_.directory.empty())
    g_subprocess_launcher_set_cwd(launcher.get(), options_.directory.c_str());
  if (options_.input) {
    write_file(directory_.path() / "in", *options_.input);
    g_subprocess_launcher_set_stdin_file_path(launcher.get(), (directory_.path() / "in").c_str());
  }
  if (!options_.output_file.empty())
    g_subprocess_launcher_set_stdout_file_path(launcher.get(), options_.output_file.c_str());
  if (options_.capture_errors)
    g_subprocess_launcher_set_stderr_file_path(launcher.get(), (directory_.path() / "err").c_str());
  if (options_.terminal_columns)
    open_terminal(launcher.get());
  GError *error = nullptr;
  process_.reset(
      g_subprocess_launcher_spawnv(launcher.get(), argument_vector(command).data(), &error));
  if (const OwnedError failure{error})
    throw std::runtime_error("cannot start " + name_ + ": " + failure->message);
  if (!options_.terminal_columns) {
    input_ = reference(g_subprocess_get_stdin_pipe(process_.get()));
    output_ = reference(g_subprocess_get_stdout_pipe(process_.get()));
  }
}

/** The launcher owns the program's end; the test reads and writes the other. */
void ChildProcess::open_terminal(GSubprocessLauncher *launcher) {
  const winsize size{24, *options_.terminal_columns, 0, 0};
  int ours = -1;
  int theirs = -1;
  if (openpty(&ours, &theirs, nullptr, nullptr, &size) != 0)
    throw std::runtime_error("cannot open a terminal");
  fcntl(ours, F_SETFD, FD_CLOEXEC);
  output_.reset(g_unix_input_stream_new(ours, TRUE));
  input_.reset(g_unix_output_stream_new(ours, FALSE));
  g_subprocess_launcher_take_stdin_fd(launcher, fcntl(theirs, F_DUPFD_CLOEXEC, 0));
  g_subprocess_launcher_take_stdout_fd(launcher, fcntl(theirs, F_DUPFD_CLOEXEC, 0));
  g_subprocess_launcher_take_stderr_fd(launcher, theirs);
}

ChildProcess::~ChildProcess() {
  if (!process_)
    return;
  g_subprocess_force_exit(process_.get());
  g_subprocess_wait(process_.get(), nullptr, nullptr);
}

void ChildProcess::write(const std::string &text) const {
  if (g_output_stream_write_all(input_.get(), text.data(), text.size(), nullptr, nullptr,
                                nullptr) == FALSE)
    throw std::runtime_error("cannot write to " + name_);
}

void ChildProcess::write_line(const std::string &text) const {
  write(text + '\n');
}

bool ChildProcess::fill() {
  if (!output_)
    return false;
  std::array<char, 4096> block{};
  TimedCall call(options_.timeout);
  g_input_stream_read_async(output_.get(), block.data(), block.size(), G_PRIORITY_DEFAULT,
                            call.cancellable(), TimedCall::finished, &call);
  const gssize length = g_input_stream_read_finish(output_.get(), call.result(), nullptr);
  if (length <= 0 && call.timed_out())
    throw std::runtime_error(name_ + " prints nothing more and does not end: " + pending_);
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

void ChildProcess::wait_for(const std::string &text) {
  while (pending_.find(text) == std::string::npos)
    if (!fill())
      throw std::runtime_error(name_ + " ended without printing " + text + ": " + pending_);
}

void ChildProcess::send_signal(int number) const {
  g_subprocess_send_signal(process_.get(), number);
}

int ChildProcess::wait() {
  TimedCall call(options_.timeout);
  g_subprocess_wait_async(process_.get(), call.cancellable(), TimedCall::finished, &call);
  if (g_subprocess_wait_finish(process_.get(), call.result(), nullptr) == FALSE)
    throw std::runtime_error(name_ + " does not end");
  return g_subprocess_get_if_exited(process_.get()) != FALSE
             ? g_subprocess_get_exit_status(process_.get())
             : -g_subprocess_get_term_sig(process_.get());
}

ProcessResult ChildProcess::finish() {
  ProcessResult result;
  result.out = read_rest();
  result.status = wait();
  if (options_.capture_errors)
    result.err = read_file(directory_.path() / "err");
  return result;
}

ProcessResult run_program(const std::vector<std::string> &command, ProcessOptions options) {
  options.input = options.input.value_or("");
  options.capture_errors = true;
  return ChildProcess(command, std::move(options)).finish();
}

}  // namespace velkor::test
