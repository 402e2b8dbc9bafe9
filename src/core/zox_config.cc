/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_config.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include <velkor/zox_app_core.h>

#include "core/app_core.h"
#include "core/atomic_file.h"
#include "core/cache_directory.h"
#include "core/cache_reading.h"
#include "core/changes.h"
#include "core/core_lock.h"
#include "core/file_outcome.h"
#include "core/keyring.h"
#include "core/setting_line.h"
#include "core/settings.h"
#include "support/assertion.h"
#include "support/owned.h"
#include "support/text.h"

namespace velkor {
namespace {

constexpr const char *file_name = "velkor.conf";

constexpr const char *starter_text =
    "# Velkor configuratie file\n"
    "# Alle regels die met '#' beginnen worden als commentaar beschouwd\n"
    "# Let op: alle commentaar regels worden automatisch verwijderd indien er\n"
    "# voor de eerste keer succesvol geupdated is\n"
    "username=<ZOX username hier>\n"
    "password=<ZOX password hier>\n"
    "# proxyHost=\n"
    "# proxyPort=\n"
    "# proxyUser=\n"
    "# proxyPassword=\n"
    "\n";

/** Takes over one line, "key=value"; a line without "=" says nothing. */
void read_line(ZoxConfig &config, char *line) noexcept {
  char *equals = std::strchr(line, '=');
  if (equals == nullptr)
    return;
  *equals = '\0';
  if (const settings::Setting *setting = settings::find(line))
    settings::read(config, *setting, g_strstrip(equals + 1));
  else
    g_warning("zox_config_load(): unknown config option : %s\n", line);
}

/** Takes over all lines of the file; what was read before a failure stays. */
FileOutcome read_file(ZoxConfig &config) noexcept {
  const std::string path = cache_path(file_name, false);
  const OwnedFile file(std::fopen(path.c_str(), "re"));
  std::array<char, settings::line_buffer_size> line{};
  bool empty = true;
  for (; file && std::fgets(line.data(), line.size(), file.get()) != nullptr; empty = false)
    read_line(config, line.data());
  const int error = errno;
  settings::complete(config);
  if (file && std::ferror(file.get()) == 0)
    return {empty ? ZOX_FILE_EMPTY : ZOX_FILE_FINE, 0, path};
  return file ? failed_outcome(ZOX_FILE_UNREADABLE, path, error) : unopened_outcome(path, error);
}

/** Appends the lines of the file; the keyring may hold the password. */
void write_settings(const ZoxConfig &config, GString *text) noexcept {
  if (read_only() || !keyring::in_use())
    return settings::write(config, text);
  const OwnedString password = keyring::written_password(config);
  ZoxConfig written = config;
  written.password = password.get();
  settings::write(written, text);
}

/** The file to be written. It holds a password: only its owner may read it. */
AtomicFile new_file() noexcept {
  return {cache_path(file_name, false), AtomicFile::Form::plain, Z_DEFAULT_COMPRESSION, 0600};
}

void free_settings(ZoxConfig *config) noexcept {
  settings::release(*config);
  g_free(config);
}
using OwnedSettings = std::unique_ptr<ZoxConfig, ReleaseWith<free_settings>>;

OwnedSettings default_settings() noexcept {
  keyring::forget();
  OwnedSettings config(g_new0(ZoxConfig, 1));
  settings::set_defaults(*config);
  return config;
}

/** Puts `config` in the place of the settings, which it returns: no reader meets half of them. */
OwnedSettings exchange_settings(OwnedSettings config) noexcept {
  const CoreWriter guard;
  return OwnedSettings(std::exchange(core->config, config.release()));
}

}  // namespace

void load_settings() noexcept {
  OwnedSettings config = default_settings();
  set_file_outcome(read_file(*config));
  finish_reading(file_name, false, {});
  if (config->username != nullptr && config->password != nullptr)
    config->firstTime = 0;
  keyring::resolve(*config);
  exchange_settings(std::move(config));
  tell_change(ZOX_CHANGE_SETTINGS);
}

}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_config_init(void) {
  ZOX_ASSERT(core);
  static_cast<void>(exchange_settings(default_settings()).release());  // still the caller's, if any
}

void zox_config_load(void) {
  ZOX_ASSERT(core);
  load_settings();
  const FileOutcome &outcome = file_outcome();
  if (outcome.error != 0)
    g_warning("zox_config_load(): cannot load configfile %s: %s", outcome.path.c_str(),
              outcome.reason.c_str());
}

void zox_config_save(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  begin_file_operation();
  const OwnedString text(g_string_new(""));
  write_settings(*core->config, text.get());
  tell_change(ZOX_CHANGE_SETTINGS);
  AtomicFile file = new_file();
  const bool opened = file.ok();
  file.write(view_of(text.get()));
  if (file.commit(__func__) || read_only())
    return;
  if (opened)
    file.warn(__func__);
  else
    g_warning("zox_config_save(): cannot open save config : %s", g_strerror(file.error()));
}

void zox_config_free(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  exchange_settings(nullptr);
}

ZoxConfig *zox_config_get(void) {
  ZOX_ASSERT(core);
  return core->config;
}

void zox_config_create_dummy(void) {
  ZOX_ASSERT(core);
  begin_file_operation();
  AtomicFile file = new_file();
  replace_content(file, {starter_text, "\n"}, __func__);
}

}  // extern "C"
