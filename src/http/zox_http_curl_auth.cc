/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The credentials of a request, whose secret the authentication plug-in computes. */
#include <velkor/zox_http_curl.h>

#include <memory>
#include <mutex>

#include <gmodule.h>
#include <velkor/zox_app_core.h>
#include <velkor/zox_file.h>

#include "support/assertion.h"
#include "support/owned.h"

namespace velkor {
namespace {

/** Lets one thread at a time into the plug-in, which need not be prepared for more. */
std::mutex plugin_mutex;

using Module = std::unique_ptr<GModule, ReleaseWith<g_module_close>>;

Module open_plugin() noexcept {
  constexpr auto flags = static_cast<GModuleFlags>(G_MODULE_BIND_LAZY | G_MODULE_BIND_LOCAL);
  const OwnedText path(zox_file_parse_lib_dir("/libzox_http_plugin.so.2.0"));
  return Module(g_module_open(path.get(), flags));
}

ZoxPluginAuth entry_point(const Module &plugin) noexcept {
  gpointer symbol = nullptr;
  g_module_symbol(plugin.get(), "zox_plugin_auth", &symbol);
  return reinterpret_cast<ZoxPluginAuth>(symbol);
}

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" ZoxErrorCode zox_http_curl_add_auth(const char *url, char **userPassword) {
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  if (g_module_supported() == FALSE)
    return ZOX_RESULT_NO_MODULES;
  const std::lock_guard lock(plugin_mutex);
  const Module plugin = open_plugin();
  if (!plugin)
    return ZOX_RESULT_PLUGIN_NOT_LOADED;
  const ZoxPluginAuth authenticate = entry_point(plugin);
  if (authenticate == nullptr)
    return ZOX_RESULT_PLUGIN_NOT_RUN;
  const ZoxConfig &config = *core->config;
  if (config.password == nullptr)
    return ZOX_RESULT_UNAUTHORIZED;
  ZOX_ASSERT(core->config->username);
  const OwnedText secret(authenticate(url, config.password));
  if (!secret)
    return ZOX_RESULT_PLUGIN_NOT_RUN;
  *userPassword = g_strconcat(config.username->str, ":", secret.get(), nullptr);
  return ZOX_RESULT_SUCCESS;
}
