/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What start-up puts in order in the cache directory when it may write there. */
#ifndef VELKOR_CORE_CACHE_CARE_H
#define VELKOR_CORE_CACHE_CARE_H

namespace velkor {

/**
 * Removes the temporary files that killed processes left beside the library's files, wherever
 * symbolic links lead to. Never in a core for reading only.
 */
void remove_leftovers() noexcept;

/**
 * Takes from everyone but the owner what permissions they have on the library's files, their
 * backups and the cache directory, with one warning of function `caller`. Never in a core for
 * reading only.
 */
void narrow_permissions(const char *caller) noexcept;

}  // namespace velkor

#endif
