/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Objects of the whole process. */
#ifndef VELKOR_SUPPORT_IMMORTAL_H
#define VELKOR_SUPPORT_IMMORTAL_H

#include <array>
#include <cstddef>
#include <new>

namespace velkor {

/**
 * The one object of this type. It is made at its first use and never destroyed, since a worker
 * thread may still use it while the process ends.
 */
template <typename T>
T &immortal() noexcept {
  alignas(T) static std::array<std::byte, sizeof(T)> storage;
  static T &object = *::new (storage.data()) T;
  return object;
}

}  // namespace velkor

#endif
