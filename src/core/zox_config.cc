/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_config.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>

#include "core/settings.h"
#include "support/assertion.h"
#include "support/owned.h"

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
  if (!settings::read(config, line, g_strstrip(equals + 1)))
    g_warning("zox_config_load(): unknown config option : %s\n", line);
}

void read_lines(ZoxConfig &config, std::FILE *file) noexcept {
  std::array<char, 1024> line;
  while (std::fgets(line.data(), line.size(), file) != nullptr)
    read_line(config, line.data());
  settings::complete(config);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

void zox_config_init(void) {
  ZOX_ASSERT(core);
  core->config = g_new0(ZoxConfig, 1);
  settings::set_defaults(*core->config);
}

void zox_config_load(void) {
  ZOX_ASSERT(core);
  if (core->config != nullptr)
    zox_config_free();
  zox_config_init();
  ZOX_ASSERT(core->config);
  const OwnedText path(zox_file_parse_cache_filename(file_name, 0));
  const OwnedFile file(std::fopen(path.get(), "re"));
  if (!file) {
    g_warning("zox_config_load(): cannot load configfile %s: %s", path.get(), g_strerror(errno));
    return;
  }
  read_lines(*core->config, file.get());
  if (core->config->username != nullptr && core->config->password != nullptr)
    core->config->firstTime = 0;
}

void zox_config_save(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  const OwnedString text(g_string_new(""));
  settings::write(*core->config, text.get());
  const OwnedText path(zox_file_parse_cache_filename(file_name, 0));
  const OwnedFile file(std::fopen(path.get(), "we"));
  if (!file) {
    g_warning("zox_config_save(): cannot open save config : %s", g_strerror(errno));
    return;
  }
  std::fputs(text->str, file.get());
}

void zox_config_free(void) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  settings::release(*core->config);
  g_free(std::exchange(core->config, nullptr));
}

ZoxConfig *zox_config_get(void) {
  ZOX_ASSERT(core);
  return core->config;
}

void zox_config_create_dummy(void) {
  ZOX_ASSERT(core);
  const OwnedString text(g_string_new(starter_text));
  zox_file_save(file_name, text.get(), 0);
}

}  // extern "C"
