/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The elements of a posting of the user's own overview, as read and as printed. */
#ifndef VELKOR_SERVICES_MYZOX_FIELDS_H
#define VELKOR_SERVICES_MYZOX_FIELDS_H

#include <array>

#include <velkor/zox_myzox.h>

#include "core/record_fields.h"

namespace velkor {

/** "Edit" holds a word instead of the number that is kept and printed. */
inline constexpr std::string_view myzox_permission = "Edit";

/** In the order of printing. The post id is read from an attribute, not from an element. */
inline constexpr auto myzox_fields = std::to_array<Field<ZoxMyzoxPost>>({
    {"", &ZoxMyzoxPost::postId, "PostID"},
    {"Stamp", &ZoxMyzoxPost::stamp, "Datum"},
    {myzox_permission, &ZoxMyzoxPost::canEdit, "CanEdit"},
    {"Title", &ZoxMyzoxPost::title, "Title"},
    {"Groups", &ZoxMyzoxPost::groups, "Groups"},
    {"FName", &ZoxMyzoxPost::fName, "FName"},
    {"Status", &ZoxMyzoxPost::status, "Status"},
    {"Poster", &ZoxMyzoxPost::poster, "Poster"},
    {"Link", &ZoxMyzoxPost::link, "Link"},
    {"Cat", &ZoxMyzoxPost::cat, "Cat"},
    {"SCat", &ZoxMyzoxPost::sCat, "SCat"},
    {"Updated", &ZoxMyzoxPost::updated, "Updated"},
    {"Kudos", &ZoxMyzoxPost::kudos, "Kudos"},
    {"Forum", &ZoxMyzoxPost::forum, "Forum"},
    {"Reps", &ZoxMyzoxPost::reps, "Reps"},
    {"Reqs", &ZoxMyzoxPost::reqs, "Reqs"},
    {"Rating", &ZoxMyzoxPost::rating, "Rating"},
    {"Mod", &ZoxMyzoxPost::mod, "Mod"},
});

/** Frees a posting of the overview and all that it holds. */
inline void free_myzox_post(ZoxMyzoxPost *post) noexcept {
  release_fields<ZoxMyzoxPost>(myzox_fields, *post);
  g_free(post);
}

}  // namespace velkor

#endif
