/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The core record itself, what of it this layer can fill and release, and the modes of the process.
 * Start-up and shut-down add what the higher layers keep in it.
 */
#ifndef VELKOR_CORE_APP_CORE_H
#define VELKOR_CORE_APP_CORE_H

#include <velkor/zox_app_core.h>

namespace velkor {

/** Whether the library may change files while there is this core. */
enum class Access { read_write, read_only };

/** Makes the zero-filled record that `core` points to; there must be none. */
void make_core(Access access = Access::read_write) noexcept;

/** Releases the settings, if there are any. */
void release_settings() noexcept;

/** Drops the references on the filter list and the event list, as far as there are any. */
void release_lists() noexcept;

/** Frees the record, whose content is gone by now. `core` is null and files may be changed again.
 */
void free_core() noexcept;

/** Whether the core was opened for reading only: nothing in the cache may change. Any thread. */
bool read_only() noexcept;

/** Whether zox_set_tolerant has switched tolerance on; by default it is off. Any thread. */
bool tolerant() noexcept;

}  // namespace velkor

#endif
