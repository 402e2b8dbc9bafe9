/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/core_session.h"

#include <cerrno>
#include <string>

#include <sys/stat.h>
#include <velkor/velkor.h>

#include "support/owned.h"
#include "velkorctl/bus_owner.h"
#include "velkorctl/failure.h"
#include "velkorctl/installation.h"
#include "velkorctl/messages.h"
#include "velkorctl/request_watch.h"

namespace velkor::ctl {
namespace {

namespace fs = std::filesystem;

const char *chars_of(const std::optional<std::string> &text) noexcept {
  return text ? text->c_str() : nullptr;
}

void make_directory(const fs::path &directory) {
  if (mkdir(directory.c_str(), 0700) != 0 && errno != EEXIST)
    throw Failure(Exit::files, "cannot create " + directory.string() + ": " + system_error(errno));
}

guint32 parts_for(Load load) noexcept {
  constexpr guint32 always = ZOX_CORE_SETTINGS | ZOX_CORE_FILTERS | ZOX_CORE_TABLES;
  switch (load) {
  case Load::settings:
    break;
  case Load::mail:
    return always | ZOX_CORE_MAIL;
  case Load::postings:
  case Load::postings_if_readable:
    return always | ZOX_CORE_POSTINGS;
  }
  return always;
}

void set_hosts(const GlobalOptions &options) {
  if (options.server || options.static_server)
    zox_http_set_hosts(chars_of(options.server), chars_of(options.static_server));
  if (options.ca_file)
    zox_http_set_ca_file(chars_of(options.ca_file));
}

gint on_transfer(gint64 received, gint64 /*total*/, gpointer /*unused*/) noexcept {
  return note_transfer(received);
}

/** What helps when the file with that content cannot be read. */
std::string what_to_do(Load load) {
  if (load == Load::mail)
    return "; velkorctl cache restore brings back a backup";
  return "; velkorctl cache resync fetches the postings again, velkorctl cache restore brings back "
         "a backup";
}

bool is_empty(const GString *text) noexcept {
  return text == nullptr || text->len == 0;
}

}  // namespace

fs::path cache_directory(const GlobalOptions &options) {
  return fs::absolute(options.cache_dir ? fs::path(*options.cache_dir)
                                        : fs::path(g_get_home_dir()) / ".velkor");
}

CoreSession::Core::Core(const GlobalOptions &options, const fs::path &cache, Access access,
                        Load load) {
  const std::optional<std::string> lib_dir =
      options.lib_dir ? options.lib_dir : installed_plugin_directory();
  const std::optional<std::string> data_dir =
      options.data_dir ? options.data_dir : installed_data_directory();
  ZoxCoreOptions opening{};
  opening.dataDir = chars_of(data_dir);
  opening.cacheDir = cache.c_str();
  opening.libDir = chars_of(lib_dir);
  opening.parts = parts_for(load);
  opening.readOnly = access == Access::read ? 1 : 0;
  char *place = nullptr;
  const ZoxCoreResult result = zox_app_core_open(&opening, &place);
  const OwnedText message(place);
  if (result != ZOX_CORE_OPENED)
    throw Failure(Exit::files, message.get());
  set_hosts(options);
  zox_http_set_transfer_callback(on_transfer, nullptr);
  set_inactivity_limit(options.timeout);
}

CoreSession::Core::~Core() {
  zox_http_set_transfer_callback(nullptr, nullptr);
  zox_app_core_close();
}

CoreSession::CoreSession(const GlobalOptions &options, Access access, Load load)
    : directory_(cache_directory(options)), access_(access) {
  if (access_ == Access::write)
    prepare_writing(options);
  core_.emplace(options, directory_, access_, load);
  // The library tells about the file that it loaded last.
  if (load != Load::settings)
    report_loading(*zox_file_last_error(), load);
  if (core->filterlist->filters == nullptr)
    warn("velkor.filters has no filter, so no posting is shown");
}

void CoreSession::prepare_writing(const GlobalOptions &options) {
  if (front_end_is_running())
    throw Failure(Exit::busy, "Velkor is running and would overwrite the change; "
                              "close it first, or make the change in its window");
  make_directory(directory_);
  lock_.emplace(directory_, options.wait);
}

/** Whoever goes on without the content of the file may replace it; the library makes a backup. */
void CoreSession::report_loading(const ZoxFileError &outcome, Load load) const {
  if (outcome.status == ZOX_FILE_DAMAGED || outcome.status == ZOX_FILE_UNREADABLE) {
    const std::string message = std::string(outcome.message) + what_to_do(load);
    if (load == Load::postings || access_ == Access::read)
      throw Failure(Exit::files, message);
    warn(message);
  }
  const bool none = outcome.status == ZOX_FILE_MISSING || outcome.status == ZOX_FILE_EMPTY;
  if (none && load == Load::postings && access_ == Access::read)
    say("no postings are cached yet; see velkorctl update");
}

// Both work on the core, which is open as long as there is a session.
// NOLINTBEGIN(readability-convert-member-functions-to-static)
void CoreSession::save_settings() {
  zox_config_save();
  if (const ZoxFileError *outcome = zox_file_last_error(); outcome->status != ZOX_FILE_FINE)
    throw Failure(Exit::files, std::string("the settings could not be saved: ") + outcome->message);
}

void CoreSession::require_account() const {
  if (const char *fault = zox_keyring_fault())
    throw Failure(Exit::account, std::string("the keyring does not give the password: ") + fault);
  for (const auto &[name, value] : {std::pair("username", core->config->username),
                                    std::pair("password", core->config->password)})
    if (is_empty(value))
      throw Failure(Exit::account, std::string("no ") + name + " is set; see velkorctl config set");
}
// NOLINTEND(readability-convert-member-functions-to-static)

}  // namespace velkor::ctl
