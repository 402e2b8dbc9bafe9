/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "services/answers.h"

#include <algorithm>
#include <array>

#include "support/text.h"

namespace velkor {
namespace {

constexpr std::string_view accepted = "OK";

struct Refusal {
  std::string_view word;
  ZoxAnswer answer;
};

constexpr std::array refusals{
    Refusal{"DUPE", ZOX_ANSWER_DUPLICATE},
    Refusal{"LOCKED", ZOX_ANSWER_LOCKED},
    Refusal{"NOTFOUND", ZOX_ANSWER_NOT_FOUND},
    Refusal{"FAIL", ZOX_ANSWER_REFUSED},
};

}  // namespace

ZoxAnswer answer_of(std::string_view reply) noexcept {
  if (reply.starts_with(accepted))
    return ZOX_ANSWER_DONE;
  const auto *refusal = std::ranges::find(refusals, reply, &Refusal::word);
  return refusal == refusals.end() ? ZOX_ANSWER_UNKNOWN : refusal->answer;
}

gint32 number_behind_answer(const char *reply) noexcept {
  const bool has_number = std::string_view(reply).starts_with(accepted);
  return has_number ? leading_integer(reply + accepted.size()) : 0;
}

}  // namespace velkor
