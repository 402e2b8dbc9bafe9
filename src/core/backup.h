/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Cache files that could not be read, or that an empty one would replace, are not lost: the next
 * save of such a file first makes the old one its backup, beside it, as
 * "<file>.onleesbaar-YYYYmmdd-HHMMSS" or
 * "<file>.vorige-YYYYmmdd-HHMMSS", with a warning that names both.
 */
#ifndef VELKOR_CORE_BACKUP_H
#define VELKOR_CORE_BACKUP_H

#include <string>
#include <string_view>

namespace velkor {

/** A loader says that the file yields nothing usable. A missing or empty file needs no backup. */
void note_unreadable(const char *cache_name, bool compressed) noexcept;
/** What is about to be saved holds nothing, while the file may. */
void note_emptied(const char *cache_name, bool compressed) noexcept;
/** A loader says that the file is good (again). */
void note_readable(const char *cache_name, bool compressed) noexcept;

/** A name that no file has: "<path>.<mark>-YYYYmmdd-HHMMSS", with a number if need be. */
std::string backup_name(const std::string &path, std::string_view mark) noexcept;

/**
 * Makes a backup of the file if one is due; for AtomicFile.
 * @param path    the file as its users name it
 * @param target  where the path's symbolic links lead to
 * @param caller  the function of the interface that the warning names
 * @return false, with `errno`, when a backup is due and cannot be made
 */
bool make_noted_backup(const std::string &path, const std::string &target,
                       const char *caller) noexcept;

}  // namespace velkor

#endif
