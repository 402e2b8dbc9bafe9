/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/failure.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include <velkor/zox_app_core.h>

#include "velkorctl/interruption.h"

namespace velkor::ctl {
namespace {

constexpr ZoxErrorCode account_refused = 2;
constexpr ZoxErrorCode account_banned = 3;
constexpr ZoxErrorCode unreadable_reply = 11;
constexpr ZoxErrorCode posting_not_cached = 12;
constexpr ZoxErrorCode posting_gone = 30;

/** Results for which the library has no sentence. */
constexpr std::array<std::pair<ZoxErrorCode, const char *>, 8> own_sentences{{
    {20, "the server refused the sign-up"},
    {24, "the transfer could not be prepared"},
    {25, "the server refused the posting"},
    {26, "the server accepted the posting with a reservation"},
    {31, "you have already warned about this posting"},
    {32, "you have already warned about this reaction"},
    {33, "the server knows no such user"},
    {static_cast<ZoxErrorCode>(-1), "the server does not know the addressee"},
}};

const char *own_sentence(ZoxErrorCode code) noexcept {
  const auto *found =
      std::ranges::find(own_sentences, code, &decltype(own_sentences)::value_type::first);
  return found == own_sentences.end() ? nullptr : found->second;
}

}  // namespace

std::string system_error(int number) {
  return std::generic_category().message(number);
}

std::string sentence_of(ZoxErrorCode code, const char *server_text) {
  if (const char *sentence = own_sentence(code))
    return sentence;
  std::string sentence = OwnedText(zox_error_msg(code, server_text)).get();
  if (code == unreadable_reply && server_text != nullptr)
    sentence.append(": ").append(server_text);
  while (!sentence.empty() && sentence.back() == '\n')
    sentence.pop_back();
  return sentence;
}

Exit exit_of(ZoxErrorCode code) noexcept {
  switch (code) {
  case 0:
    return Exit::ok;
  case account_refused:
  case account_banned:
    return Exit::account;
  case posting_not_cached:
  case posting_gone:
    return Exit::not_found;
  default:
    return Exit::failed;
  }
}

void throw_if_interrupted() {
  if (Interruption::requested())
    throw Failure(Exit::interrupted, "interrupted");
}

void require_success(ZoxErrorCode code, const char *server_text) {
  if (code == 0)
    return;
  throw_if_interrupted();
  throw Failure(exit_of(code), sentence_of(code, server_text));
}

}  // namespace velkor::ctl
