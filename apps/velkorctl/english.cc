/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/english.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>
#include <utility>

#include <glib.h>

#include <velkor/zox_codes.h>

#include "velkorctl/failure.h"

namespace velkor::ctl {
namespace {

using Sentence = std::pair<ZoxErrorCode, const char *>;

constexpr auto sentences = std::to_array<Sentence>({
    {ZOX_RESULT_UNKNOWN_ERROR, "an unknown error"},
    {ZOX_RESULT_UNAUTHORIZED, "the user name or the password is wrong"},
    {ZOX_RESULT_BANNED, "you are banned from the server"},
    {ZOX_RESULT_DATABASE_DOWN, "the database of the server has failed"},
    {ZOX_RESULT_NOTHING_NEW, "nothing new since the last update"},
    {ZOX_RESULT_NO_MODULES, "plug-ins do not work on this platform"},
    {ZOX_RESULT_PLUGIN_UNKNOWN, "the place of the authentication plug-in is not known"},
    {ZOX_RESULT_PLUGIN_NOT_LOADED, "the authentication plug-in cannot be loaded"},
    {ZOX_RESULT_PLUGIN_NOT_RUN, "the authentication plug-in cannot be run"},
    {ZOX_RESULT_UNKNOWN_REPLY, "the server has sent an unknown reply"},
    {ZOX_RESULT_NOT_PARSED, "the data received cannot be read"},
    {ZOX_RESULT_POSTING_NOT_CACHED, "the posting is not in the cache"},
    {ZOX_RESULT_NO_DATA, "the server has sent no data"},
    {ZOX_RESULT_HOST_NOT_RESOLVED, "the name of the server cannot be resolved"},
    {ZOX_RESULT_PROXY_NOT_RESOLVED, "the name of the proxy cannot be resolved"},
    {ZOX_RESULT_RECEIVE_FAILED, "receiving from the server has failed"},
    {ZOX_RESULT_SEND_FAILED, "sending to the server has failed"},
    {ZOX_RESULT_TIMED_OUT, "the server has not answered in time"},
    {ZOX_RESULT_USERNAME_TAKEN, "the user name is taken"},
    {ZOX_RESULT_ADDRESS_BANNED, "your IP address is banned from the server"},
    {ZOX_RESULT_ADDRESS_IN_USE,
     "another account was used from your IP address in the last 48 hours"},
    {ZOX_RESULT_UPDATE_REQUIRED, "the server wants a newer version of the program"},
    {ZOX_RESULT_UPDATED_RECENTLY, "there was an update in the last 10 minutes"},
    {ZOX_RESULT_SERVER_NOTICE, "a notice of the server"},
    {ZOX_RESULT_POSTING_GONE, "the server does not have the posting any more"},
});

std::atomic<bool> added = false;

}  // namespace

const char *english_of(ZoxErrorCode code) noexcept {
  const auto *found = std::ranges::find(sentences, code, &Sentence::first);
  return found == sentences.end() ? "" : found->second;
}

std::string explained(ZoxErrorCode code, const char *server_text) {
  const std::string sentence = sentence_of(code, server_text);
  const std::string english = added ? english_of(code) : "";
  return english.empty() ? sentence : sentence + " [" + english + "]";
}

bool session_is_dutch() noexcept {
  const std::string_view language = *g_get_language_names();
  return language.starts_with("nl") && (language.size() == 2 || !g_ascii_isalpha(language[2]));
}

void set_english_added(bool enabled) noexcept {
  added = enabled;
}

}  // namespace velkor::ctl
