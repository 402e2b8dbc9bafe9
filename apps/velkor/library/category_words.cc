/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/category_words.h"

#include <velkor/zox_category.h>
#include <velkor/zox_string.h>

namespace velkor::app {

std::string category_words(std::int32_t category, std::uint32_t sub_category) {
  const std::string words = zox_string_category(category);
  const std::string sub = zox_category_get_scat_name(category, sub_category);
  return sub.empty() ? words : words + "/" + sub;
}

}  // namespace velkor::app
