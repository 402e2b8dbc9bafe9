/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "tests/unit/services/thread_refusal.h"

#include <atomic>

#include <glib.h>

namespace velkor::test {
namespace {

std::atomic<bool> refused = false;

}  // namespace

ThreadRefusal::ThreadRefusal() {
  refused = true;
}
ThreadRefusal::~ThreadRefusal() {
  refused = false;
}

}  // namespace velkor::test

extern "C" {

// The linker's names for a function that is wrapped and for the original.
GThread *__wrap_g_thread_try_new(const char *name, GThreadFunc run, gpointer data, GError **error);
GThread *__real_g_thread_try_new(const char *name, GThreadFunc run, gpointer data, GError **error);

GThread *__wrap_g_thread_try_new(const char *name, GThreadFunc run, gpointer data, GError **error) {
  if (!velkor::test::refused)
    return __real_g_thread_try_new(name, run, data, error);
  g_set_error_literal(error, G_THREAD_ERROR, G_THREAD_ERROR_AGAIN, "geen thread");
  return nullptr;
}

}  // extern "C"
