/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Tells the thread sanitizer of an order that GLib establishes: GLib itself is not instrumented,
 * so that its locks and its main loop are invisible to the sanitizer. Nothing in other builds.
 */
#ifndef VELKOR_SUPPORT_THREAD_ORDER_H
#define VELKOR_SUPPORT_THREAD_ORDER_H

#if defined(__SANITIZE_THREAD__)
#define VELKOR_TSAN 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define VELKOR_TSAN 1
#endif
#endif

#ifdef VELKOR_TSAN
extern "C" void __tsan_acquire(void *address);
extern "C" void __tsan_release(void *address);
#endif

namespace velkor {

/** What other threads did before order_before(address) is visible from here on. */
inline void order_after([[maybe_unused]] void *address) noexcept {
#ifdef VELKOR_TSAN
  __tsan_acquire(address);
#endif
}

/** What this thread did so far is visible after another thread's order_after(address). */
inline void order_before([[maybe_unused]] void *address) noexcept {
#ifdef VELKOR_TSAN
  __tsan_release(address);
#endif
}

}  // namespace velkor

#endif
