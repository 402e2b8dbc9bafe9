/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Names and numbers of categories, sub-categories, tags, newsgroups and states. Names are taken
 * regardless of ASCII letter case; what is unknown throws a usage Failure that says so.
 */
#ifndef VELKORCTL_VOCABULARY_H
#define VELKORCTL_VOCABULARY_H

#include <string>
#include <vector>

#include <glib.h>

namespace velkor::ctl {

/** 0 to 3 of "0" or "Beeld". */
gint32 category_number(const std::string &text);

/** The number of a sub-category of `category`, of "0" or "DivX". */
gint32 sub_category_number(gint32 category, const std::string &text);

/** The states of "0" or "Ready"; "Verwijderd" stands for two. */
std::vector<gint32> state_numbers(const std::string &text);

/** The id of a newsgroup, of "12", its full or its short name ("a.b.tv"). */
guint32 newsgroup_id(const std::string &text);

struct TagChoice {
  std::string code;
  gint32 category;
};

/**
 * The tag of "a0" or "DivX" in `category`. Without a category (-1) a code is taken as it stands
 * and a name must belong to one category only, which is then the choice's category.
 */
TagChoice tag_choice(gint32 category, const std::string &text);

/** The short name of a newsgroup, or its number when the name is not known. */
std::string newsgroup_name(guint32 id);

/** The name of a tag in `category`, or its code when it is not known. */
std::string tag_name(gint32 category, const GString *code);

/** Whether the texts are equal when ASCII letters count regardless of case. */
bool same_name(const std::string &left, const char *right) noexcept;

}  // namespace velkor::ctl

#endif
