/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The process-wide choice between the strict behaviour (the default) and the tolerant one. */
#ifndef VELKOR_CORE_TOLERANCE_H
#define VELKOR_CORE_TOLERANCE_H

namespace velkor {

/** Whether zox_set_tolerant has switched tolerance on; any thread may ask. */
bool tolerant() noexcept;

}  // namespace velkor

#endif
