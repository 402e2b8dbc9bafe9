/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A system that makes no more threads: the program is linked to ask here for GLib's threads. */
#ifndef VELKOR_TESTS_UNIT_SERVICES_THREAD_REFUSAL_H
#define VELKOR_TESTS_UNIT_SERVICES_THREAD_REFUSAL_H

namespace velkor::test {

/** While it lives, every thread asked of GLib fails with the text "geen thread". */
class ThreadRefusal {
public:
  ThreadRefusal();
  ~ThreadRefusal();
  ThreadRefusal(const ThreadRefusal &) = delete;
  ThreadRefusal &operator=(const ThreadRefusal &) = delete;
};

}  // namespace velkor::test

#endif
