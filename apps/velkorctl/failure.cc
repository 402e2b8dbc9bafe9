/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/failure.h"

#include <algorithm>
#include <array>
#include <system_error>
#include <utility>

#include <velkor/zox_app_core.h>

#include "velkorctl/english.h"
#include "velkorctl/interruption.h"

namespace velkor::ctl {
namespace {

/** Results for which the library has no sentence. */
constexpr std::array<std::pair<ZoxErrorCode, const char *>, 8> own_sentences{{
    {ZOX_RESULT_SIGNUP_REFUSED, "the server refused the sign-up"},
    {ZOX_RESULT_NO_TRANSFER_HANDLE, "the transfer could not be prepared"},
    {ZOX_RESULT_SPOT_REFUSED, "the server refused the posting"},
    {ZOX_RESULT_SPOT_RESERVED, "the server accepted the posting with a reservation"},
    {ZOX_RESULT_POSTING_WARNED, "you have already warned about this posting"},
    {ZOX_RESULT_REACTION_WARNED, "you have already warned about this reaction"},
    {ZOX_RESULT_NO_PROFILE, "the server knows no such user"},
    {static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN),
     "the server does not know the addressee"},
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
  if (code == ZOX_RESULT_NOT_PARSED && server_text != nullptr)
    sentence.append(": ").append(server_text);
  while (!sentence.empty() && sentence.back() == '\n')
    sentence.pop_back();
  return sentence;
}

Exit exit_of(ZoxErrorCode code) noexcept {
  switch (code) {
  case ZOX_RESULT_SUCCESS:
    return Exit::ok;
  case ZOX_RESULT_UNAUTHORIZED:
  case ZOX_RESULT_BANNED:
    return Exit::account;
  case ZOX_RESULT_POSTING_NOT_CACHED:
  case ZOX_RESULT_POSTING_GONE:
  case ZOX_RESULT_NO_PROFILE:
  case static_cast<ZoxErrorCode>(ZOX_RESULT_ADDRESSEE_UNKNOWN):
    return Exit::not_found;
  default:
    return Exit::failed;
  }
}

void throw_if_interrupted() {
  if (Interruption::requested())
    throw Failure(Exit::interrupted, "interrupted");
}

bool LibraryResult::failed() const noexcept {
  return code != ZOX_RESULT_SUCCESS || (request && request->refused());
}

std::string LibraryResult::message() const {
  const std::string sentence = code == ZOX_RESULT_SUCCESS ? "the server reports an error"
                                                          : explained(code, server_text.get());
  const std::string where = request ? request->words() : "";
  return sentence + " (" + operation + (where.empty() ? "" : ", ") + where + ")";
}

Failure LibraryResult::failure() const {
  return {code == ZOX_RESULT_SUCCESS ? Exit::failed : exit_of(code), message(),
          Failure::Cause{code, operation, request ? request->host : ""}};
}

void require_success(const LibraryResult &result) {
  if (!result.failed())
    return;
  throw_if_interrupted();
  throw result.failure();
}

}  // namespace velkor::ctl
