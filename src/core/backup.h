/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Cache files that could not be read, or that an empty one would replace, are not lost: the next
 * save of such a file first keeps the old one beside it, as "<file>.onleesbaar-YYYYmmdd-HHMMSS" or
 * "<file>.vorige-YYYYmmdd-HHMMSS", with a warning that names both.
 */
#ifndef VELKOR_CORE_BACKUP_H
#define VELKOR_CORE_BACKUP_H

#include <string>

namespace velkor {

/** A loader says that the file yields nothing usable. A missing or empty file is nothing to keep.
 */
void note_unreadable(const char *cache_name, bool compressed) noexcept;
/** What is about to be saved holds nothing, while the file may. */
void note_emptied(const char *cache_name, bool compressed) noexcept;
/** A loader says that the file is good (again). */
void note_readable(const char *cache_name, bool compressed) noexcept;

/**
 * Keeps the file aside if it was noted; for AtomicFile.
 * @param path    the file as its users name it
 * @param target  where the path's symbolic links lead to
 * @return false, with `errno`, when the file should have been kept and could not be
 */
bool set_aside_if_noted(const std::string &path, const std::string &target) noexcept;

}  // namespace velkor

#endif
