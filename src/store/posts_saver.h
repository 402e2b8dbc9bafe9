/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Saving the postings to the cache file: what has not changed is copied from the old file. */
#ifndef VELKOR_STORE_POSTS_SAVER_H
#define VELKOR_STORE_POSTS_SAVER_H

#include <string>

#include "store/known_posts.h"
#include "store/save_plan.h"

namespace velkor {

/**
 * Saves the entries, with warnings for postings that cannot be written.
 * @param caller  the function of the interface that warnings name
 * @return whether the file holds them, which is this thread's file outcome as well
 */
bool save_posts(PostsFile &posts, const std::string &path, ListSnapshot &snapshot,
                const char *caller) noexcept;

}  // namespace velkor

#endif
