/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The names of categories. Threads: any. */
#ifndef VELKOR_APP_LIBRARY_CATEGORY_WORDS_H
#define VELKOR_APP_LIBRARY_CATEGORY_WORDS_H

#include <cstdint>
#include <string>

namespace velkor::app {

/** The main category with its sub-category, if that has a name. */
std::string category_words(std::int32_t category, std::uint32_t sub_category);

}  // namespace velkor::app

#endif
