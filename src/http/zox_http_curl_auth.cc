/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The credentials of a request, whose secret the authentication plug-in computes. */
#include <velkor/zox_http_curl.h>

#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include <gmodule.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>

#include "http/credentials.h"
#include "http/request_settings.h"
#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {
namespace {

/** Lets one thread at a time into the plug-in, which need not be prepared for more. */
std::mutex plugin_mutex;

using Module = std::unique_ptr<GModule, ReleaseWith<g_module_close>>;

OwnedText plugin_path() noexcept {
  return OwnedText(zox_file_parse_lib_dir("/libzox_http_plugin.so.2.0"));
}

Module open_plugin(const char *path) noexcept {
  constexpr auto flags = static_cast<GModuleFlags>(G_MODULE_BIND_LAZY | G_MODULE_BIND_LOCAL);
  return Module(g_module_open(path, flags));
}

ZoxPluginAuth entry_point(const Module &plugin) noexcept {
  gpointer symbol = nullptr;
  g_module_symbol(plugin.get(), "zox_plugin_auth", &symbol);
  return reinterpret_cast<ZoxPluginAuth>(symbol);
}

/** No credentials, since something is wrong with the plug-in at `path`. */
Credentials failed(ZoxErrorCode code, std::string_view path, std::string_view words) noexcept {
  // The dynamic linker names the path itself.
  const bool named = words.find(path) != std::string_view::npos;
  return {code, nullptr, named ? std::string(words) : std::string(path).append(": ").append(words)};
}

/** What GLib last said about a module. */
std::string_view module_error() noexcept {
  const char *words = g_module_error();
  return words == nullptr ? "unknown error" : words;
}

}  // namespace

Credentials make_credentials(const char *url, const ZoxConfig &config) noexcept {
  const OwnedText path = plugin_path();
  if (g_module_supported() == FALSE)
    return failed(ZOX_RESULT_NO_MODULES, path.get(), "modules cannot be loaded here");
  const std::lock_guard lock(plugin_mutex);
  const Module plugin = open_plugin(path.get());
  if (!plugin)
    return failed(ZOX_RESULT_PLUGIN_NOT_LOADED, path.get(), module_error());
  const ZoxPluginAuth authenticate = entry_point(plugin);
  if (authenticate == nullptr)
    return failed(ZOX_RESULT_PLUGIN_NOT_RUN, path.get(), module_error());
  if (config.password == nullptr)
    return {ZOX_RESULT_UNAUTHORIZED, nullptr, {}};
  ZOX_ASSERT_IN(zox_http_curl_add_auth, config.username, "core->config->username");
  const OwnedText secret(authenticate(url, config.password));
  if (!secret)
    return failed(ZOX_RESULT_PLUGIN_NOT_RUN, path.get(), "zox_plugin_auth gives no secret");
  return {ZOX_RESULT_SUCCESS,
          OwnedText(g_strconcat(config.username->str, ":", secret.get(), nullptr)),
          {}};
}

}  // namespace velkor

using namespace velkor;

extern "C" ZoxErrorCode zox_http_curl_add_auth(const char *url, char **userPassword) {
  ZOX_ASSERT(core);
  const RequestSettings settings;
  Credentials credentials = make_credentials(url, settings.get());
  if (credentials.code == ZOX_RESULT_SUCCESS)
    *userPassword = credentials.user_password.release();
  return credentials.code;
}
