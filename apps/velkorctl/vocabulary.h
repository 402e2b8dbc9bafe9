/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Names and numbers of categories, sub-categories, tags, newsgroups and states. The case of ASCII
 * letters in a name does not matter; an unknown name throws a usage Failure.
 */
#ifndef VELKORCTL_VOCABULARY_H
#define VELKORCTL_VOCABULARY_H

#include <string>
#include <string_view>
#include <vector>

#include <glib.h>

#include "support/owned.h"
#include "support/slist.h"

namespace velkor::ctl {

/** A list of texts under construction, as filters and postings hold them. */
using TextList = ListBuilder<GString, free_string>;

/** The words with `separator` between them. */
template <typename Words>
std::string joined(const Words &words, std::string_view separator = ", ") {
  std::string text;
  for (const auto &word : words) {
    if (!text.empty())
      text += separator;
    text += word;
  }
  return text;
}

/** The main categories in the order of their numbers. */
std::vector<std::string> category_names();

/** The number of a main category, given as "0" or "Beeld". */
gint32 category_number(const std::string &text);

/** The number of a sub-category of `category`, given as "0" or "DivX". */
gint32 sub_category_number(gint32 category, const std::string &text);

/** The numbers of a state, given as "0" or "Ready"; "Verwijderd" is the name of two. */
std::vector<gint32> state_numbers(const std::string &text);

/** The ID of a newsgroup, given as "12" or by its full or its short name ("a.b.tv"). */
guint32 newsgroup_id(const std::string &text);

struct TagChoice {
  std::string code;
  gint32 category;
};

/**
 * The tag in `category` given as "a0" or "DivX". Without a category (-1) a code is not checked,
 * and a name must belong to a single category, which the result then names.
 */
TagChoice tag_choice(gint32 category, const std::string &text);

/** The short name of a newsgroup, or its number when the name is not known. */
std::string newsgroup_name(guint32 id);

/** The names of newsgroups whose numbers a list of texts holds. */
std::vector<std::string> newsgroup_names(const GSList *ids);

/** The name of a tag in `category`, or its code when it is not known. */
std::string tag_name(gint32 category, const GString *code);

/** The names of tags whose codes a list holds. */
std::vector<std::string> tag_names(gint32 category, const GSList *codes);

/** Whether the texts are equal when the case of ASCII letters is ignored. */
bool same_name(const std::string &left, const char *right) noexcept;

}  // namespace velkor::ctl

#endif
