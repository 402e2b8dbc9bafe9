/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <array>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include <glib.h>
#include <libintl.h>
#include <sys/resource.h>

#include "library/instance.h"
#include "library/session.h"
#include "model/own_files.h"
#include "model/servers.h"
#include "support/owned.h"
#include "support/program_files.h"
#include "widgets/heartbeat.h"
#include "window/application.h"

namespace velkor::app {
namespace {

namespace fs = std::filesystem;

using OwnedOptionContext = std::unique_ptr<GOptionContext, ReleaseWith<g_option_context_free>>;

constexpr int usage_error = 2;

/** The memory holds a password, which a core dump would show to whoever gets to read it. */
void prepare_process() {
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  std::setlocale(LC_ALL, "");  // NOLINT(concurrency-mt-unsafe): no thread has started yet
  if (const auto texts = directory_from_program(VELKOR_LOCALE_FROM_PROGRAMS))
    bindtextdomain("velkor", texts->c_str());
  bind_textdomain_codeset("velkor", "UTF-8");
  textdomain("velkor");
}

/** What the words of the command line say; the texts are as GLib allocates them. */
struct Words {
  char *cache_dir = nullptr;
  char *data_dir = nullptr;
  char *lib_dir = nullptr;
  char *server = nullptr;
  char *static_server = nullptr;
  char *ca_file = nullptr;
  gboolean heartbeat = FALSE;
  gboolean version = FALSE;
};

std::optional<std::string> take(char *text) {
  const OwnedText owned(text);
  return owned ? std::optional<std::string>(owned.get()) : std::nullopt;
}

struct Options {
  SessionOptions session;
  bool heartbeat = false;
  bool version = false;
};

/** Ends the program when it only is to tell about its options. */
Options parse(int count, char **arguments) {
  Words words;
  const auto path = [](const char *name, char **place, const char *meaning) {
    return GOptionEntry{name, 0, 0, G_OPTION_ARG_FILENAME, place, meaning, "PATH"};
  };
  const auto host = [](const char *name, char **place, const char *meaning) {
    return GOptionEntry{name, 0, 0, G_OPTION_ARG_STRING, place, meaning, "[https://]HOST[:PORT]"};
  };
  const auto flag = [](const char *name, gboolean *place, const char *meaning) {
    return GOptionEntry{name, 0, 0, G_OPTION_ARG_NONE, place, meaning, nullptr};
  };
  const std::array entries{
      path("cache-dir", &words.cache_dir, "Directory of settings and cache (default: ~/.velkor)"),
      path("data-dir", &words.data_dir, "Directory of the program's data"),
      path("lib-dir", &words.lib_dir, "Directory of the authentication plug-in"),
      host("server", &words.server, "The main server"),
      host("static-server", &words.static_server, "The server of the dumps"),
      path("ca-file", &words.ca_file, "PEM file with the certificate authorities to trust"),
      flag("heartbeat", &words.heartbeat, "At the end, print how long the window took to answer"),
      flag("version", &words.version, "Print the version"),
      GOptionEntry{}};
  const OwnedOptionContext context(g_option_context_new(nullptr));
  g_option_context_set_summary(context.get(), "The desktop client for the ZOX service.");
  g_option_context_add_main_entries(context.get(), entries.data(), nullptr);
  GError *place = nullptr;
  const bool parsed =
      g_option_context_parse(context.get(), &count, &arguments, &place) != FALSE && count == 1;
  if (!parsed) {
    const OwnedError error(place);
    std::fprintf(stderr, "velkor: %s\n", error ? error->message : "there are only options");
    std::exit(usage_error);  // NOLINT(concurrency-mt-unsafe): no thread has started yet
  }
  return {{take(words.cache_dir), take(words.data_dir), take(words.lib_dir), take(words.server),
           take(words.static_server), take(words.ca_file)},
          words.heartbeat != FALSE,
          words.version != FALSE};
}

/** The words of the command line come first, then the environment, then what the user chose. */
void choose_servers(SessionOptions &session, const Servers &chosen) {
  const auto choose = [](std::optional<std::string> &place, const char *variable,
                         const std::string &server) {
    if (!place && g_getenv(variable) == nullptr && !server.empty())
      place = server;
  };
  choose(session.server, "VELKOR_MAIN_HOST", chosen.main);
  choose(session.static_server, "VELKOR_STATIC_HOST", chosen.dumps);
}

int run(const Options &options, Heartbeat::Clock::time_point started) {
  Instance instance;
  if (instance.another_runs())
    return 0;
  SessionOptions session = options.session;
  if (!session.lib_dir)
    session.lib_dir = directory_from_program(VELKOR_PLUGINS_FROM_PROGRAMS);
  if (!session.data_dir)
    session.data_dir = directory_from_program(VELKOR_DATA_FROM_PROGRAMS);
  const OwnFiles files(fs::path(g_get_user_config_dir()) / "velkor");
  choose_servers(session, read_servers(files.servers));
  Heartbeat heartbeat(started);
  const auto application = Glib::make_refptr_for_instance(
      new Application(std::move(session), files, instance, heartbeat));
  const int status = application->run();
  if (options.heartbeat)
    heartbeat.print();
  return status;
}

}  // namespace
}  // namespace velkor::app

int main(int count, char **words) {
  const auto started = velkor::app::Heartbeat::Clock::now();
  velkor::app::prepare_process();
  const velkor::app::Options options = velkor::app::parse(count, words);
  if (options.version) {
    std::puts("velkor " VELKOR_VERSION);
    return 0;
  }
  return velkor::app::run(options, started);
}
