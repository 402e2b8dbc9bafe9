/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The one switch that every function looks at before it changes anything in the cache. */
#ifndef VELKOR_CORE_READ_ONLY_H
#define VELKOR_CORE_READ_ONLY_H

namespace velkor {

/** Whether the core was opened for reading only; any thread may ask. */
bool read_only() noexcept;

}  // namespace velkor

#endif
