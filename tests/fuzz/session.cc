/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/fuzz/session.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <libxml/xmlerror.h>

#include <velkor/velkor.h>

#include "support/text.h"
#include "tests/support/sandbox.h"

namespace velkor::fuzz {
namespace {

void ignore_warnings(const gchar *, GLogLevelFlags level, const gchar *message, gpointer) {
  if ((level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL)) != 0)
    std::fprintf(stderr, "%s\n", message);
}

void ignore_error(void *, const char *, ...) {}

/** A home, and silence. */
struct Environment {
  Environment() {
    g_log_set_default_handler(ignore_warnings, nullptr);
    xmlSetGenericErrorFunc(nullptr, ignore_error);
    zox_set_tolerant(1);
  }
  test::Sandbox sandbox;
};

const Environment &environment() {
  static const Environment environment;
  return environment;
}

class Core {
public:
  Core() {
    const std::string cache = environment().sandbox.cache();
    ZoxCoreOptions options{};
    options.cacheDir = cache.c_str();
    options.parts = ZOX_CORE_FILTERS | ZOX_CORE_TABLES;
    if (zox_app_core_open(&options, nullptr) != ZOX_CORE_OPENED)
      std::abort();
  }
  ~Core() { zox_app_core_close(); }
  Core(const Core &) = delete;
  Core &operator=(const Core &) = delete;
};

}  // namespace

void start_session() {
  static const Core core;
}

void start_without_core() {
  std::filesystem::create_directories(cache_directory());
}

OwnedString text_of(const std::uint8_t *data, std::size_t size) {
  return OwnedString(
      g_string_new_len(reinterpret_cast<const char *>(data), static_cast<gssize>(size)));
}

std::filesystem::path cache_directory() {
  return environment().sandbox.cache();
}

void clear_cache() {
  for (const auto &entry : std::filesystem::directory_iterator(cache_directory()))
    std::filesystem::remove_all(entry.path());
}

void reset_settings() {
  if (core->config != nullptr)
    zox_config_free();
  zox_config_init();
  replace_string(core->config->username, zox_string_new("fuzz"));
  replace_string(core->config->password, zox_string_new("geheim"));
}

std::string write_cache_file(const char *name, std::string_view content) {
  const std::filesystem::path path = cache_directory() / name;
  test::write_file(path, content);
  return path;
}

void require(bool holds, const char *property) {
  if (holds)
    return;
  std::fprintf(stderr, "does not hold: %s\n", property);
  std::abort();
}

bool same_text(const GString *left, const GString *right) noexcept {
  return (left == nullptr) == (right == nullptr) && view_of(left) == view_of(right);
}

bool same_texts(const GSList *left, const GSList *right) noexcept {
  for (; left != nullptr && right != nullptr; left = left->next, right = right->next) {
    if (!same_text(static_cast<GString *>(left->data), static_cast<GString *>(right->data)))
      return false;
  }
  return left == right;
}

}  // namespace velkor::fuzz
