/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/core_session.h"

#include <cerrno>
#include <string>
#include <system_error>

#include <unistd.h>
#include <velkor/velkor.h>

#include "support/owned.h"
#include "velkorctl/bus_owner.h"
#include "velkorctl/cache_files.h"
#include "velkorctl/failure.h"
#include "velkorctl/file_stamp.h"
#include "velkorctl/messages.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

/** What the library says about the file of an empty list. */
constexpr const char *no_postings = "zox_events_parse(): no children of root-node!";

constexpr const char *plugin_name = "libzox_http_plugin.so.2.0";

const char *chars_of(const std::optional<std::string> &text) noexcept {
  return text ? text->c_str() : nullptr;
}

/** Whether the cache has a non-empty file of that name, plain or compressed. */
bool is_cached(const fs::path &cache, const std::string &name) {
  std::error_code error;
  for (const fs::path &path : {cache / name, cache / (name + ".gz")})
    if (const auto size = fs::file_size(path, error); !error && size > 0)
      return true;
  return false;
}

void require_directory(const fs::path &directory) {
  std::error_code error;
  const fs::file_status status = fs::status(directory, error);
  if (fs::exists(status) && !fs::is_directory(status))
    throw Failure(Exit::files, directory.string() + " is not a directory");
  if (fs::exists(status) && access(directory.c_str(), R_OK | X_OK) != 0)
    throw Failure(Exit::files, "cannot read " + directory.string() + ": " + system_error(errno));
}

void make_directory(const fs::path &directory) {
  if (mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST)
    throw Failure(Exit::files, "cannot create " + directory.string() + ": " + system_error(errno));
}

/** Settings that cannot be read just now must not be replaced by defaults. */
void load_settings(const fs::path &cache) {
  const fs::path file = cache / "velkor.conf";
  if (access(file.c_str(), F_OK) != 0) {
    zox_config_init();
    return;
  }
  const OwnedFile readable(std::fopen(file.c_str(), "r"));
  if (!readable || std::fgetc(readable.get()) == EOF) {
    const int error = errno;
    if (!readable || std::ferror(readable.get()) != 0)
      throw Failure(Exit::files, "cannot read velkor.conf: " + system_error(error));
  }
  zox_config_load();
}

void load_filters(const fs::path &cache) {
  core->filterlist = zox_filterlist_new();
  zox_filterlist_load(core->filterlist);
  if (core->filterlist->filters == nullptr && is_cached(cache, "velkor.filters"))
    say("warning: velkor.filters has no filter, so no posting is shown");
}

void set_directories(const GlobalOptions &options, const fs::path &cache) {
  zox_file_set_cache_dir(cache.c_str());
  zox_file_set_data_dir(chars_of(options.data_dir));
  const fs::path installed = fs::path(VELKOR_PLUGIN_DIR);
  const bool use_installed = !options.lib_dir && fs::exists(installed / plugin_name);
  zox_file_set_lib_dir(use_installed ? installed.c_str() : chars_of(options.lib_dir));
}

void set_hosts(const GlobalOptions &options) {
  if (options.server || options.static_server)
    zox_http_set_hosts(chars_of(options.server), chars_of(options.static_server));
}

gint stop_when_interrupted(gint64 /*received*/, gint64 /*total*/, gpointer /*unused*/) noexcept {
  return Interruption::requested() ? 1 : 0;
}

void free_core() noexcept {
  zox_http_set_transfer_callback(nullptr, nullptr);
  if (core->tags != nullptr)
    zox_tags_free();
  if (core->categories != nullptr)
    zox_categories_free();
  if (core->filterlist != nullptr)
    zox_filterlist_destroy(core->filterlist);
  if (core->eventlist != nullptr)
    zox_eventlist_destroy(core->eventlist);
  zox_group_free_all();
  zox_mail_free(core->mail);
  if (core->config != nullptr)
    zox_config_free();
  zox_file_free_cache_dir();
  zox_file_free_data_dir();
  zox_file_free_lib_dir();
  g_free(core);
  core = nullptr;
}

bool is_empty(const GString *text) noexcept {
  return text == nullptr || text->len == 0;
}

}  // namespace

fs::path cache_directory(const GlobalOptions &options) {
  return fs::absolute(options.cache_dir ? fs::path(*options.cache_dir)
                                        : fs::path(g_get_home_dir()) / ".velkor");
}

CoreSession::CoreSession(const GlobalOptions &options, Access access, Load load)
    : directory_(cache_directory(options)), access_(access) {
  require_directory(directory_);
  core = g_new0(ZoxAppCore, 1);
  try {
    if (access_ == Access::read)
      start_reading(options, load);
    else
      start_writing(options, load);
  } catch (...) {
    free_core();
    throw;
  }
}

CoreSession::~CoreSession() {
  free_core();
}

void CoreSession::start_reading(const GlobalOptions &options, Load load) {
  view_.emplace(directory_);
  start(options, view_->path(), load);
  view_->detach();
  if (load == Load::postings && !is_cached(directory_, "velkor.posts"))
    say("no postings are cached yet; see velkorctl update");
}

void CoreSession::start_writing(const GlobalOptions &options, Load load) {
  if (front_end_is_running())
    throw Failure(Exit::busy, "Velkor is running and would overwrite the change; "
                              "close it first, or make the change in its window");
  make_directory(directory_);
  lock_.emplace(directory_, options.wait);
  start(options, directory_, load);
}

void CoreSession::start(const GlobalOptions &options, const fs::path &cache, Load load) {
  set_directories(options, cache);
  set_hosts(options);
  zox_http_set_transfer_callback(stop_when_interrupted, nullptr);
  load_settings(cache);
  load_filters(cache);
  zox_categories_init();
  zox_tags_init();
  if (is_cached(cache, "velkor.groups"))
    zox_group_load();
  if (load == Load::mail && is_cached(cache, "velkor.mail"))
    load_mail();
  core->eventlist = zox_eventlist_new();
  if (load == Load::postings && is_cached(cache, "velkor.posts"))
    load_postings();
}

void CoreSession::load_postings() {
  char *place = nullptr;
  const ZoxErrorCode result = zox_eventlist_load(core->eventlist, &place);
  const OwnedText reason(place);
  if (result == 0 || g_strcmp0(reason.get(), no_postings) == 0)
    return;
  report_unreadable("the postings in " + directory_.string() + "/velkor.posts.gz" +
                    (reason ? std::string(": ") + reason.get() : ""));
}

void CoreSession::load_mail() {
  zox_mail_load();
  const Inspection found = inspect(directory_, {"velkor.mail", "Mail", "Event"});
  if (!found.problem.empty())
    report_unreadable("the messages in " + directory_.string() + "/velkor.mail: " + found.problem);
}

/** A command that writes goes on: the library keeps the unreadable file under another name. */
void CoreSession::report_unreadable(const std::string &what) const {
  const std::string message = "cannot read " + what + "; see velkorctl cache for what can be done";
  if (access_ == Access::read)
    throw Failure(Exit::files, message);
  say("warning: " + message);
}

void CoreSession::save_settings() {
  const fs::path file = directory_ / "velkor.conf";
  const FileStamp before(file);
  zox_config_save();
  if (FileStamp(file) == before)
    throw Failure(Exit::files, "the settings could not be saved in " + file.string());
}

void CoreSession::require_account() const {
  for (const auto &[name, value] : {std::pair("username", core->config->username),
                                    std::pair("password", core->config->password)})
    if (is_empty(value))
      throw Failure(Exit::account, std::string("no ") + name + " is set; see velkorctl config set");
}

}  // namespace velkor::ctl
