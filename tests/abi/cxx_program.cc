/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* A front end in C++: the same headers and shared library, with C linkage. */
#include <cstdio>
#include <memory>
#include <string_view>

#include <velkor/velkor.h>

namespace {

struct Release {
  void operator()(ZoxString *text) const { g_string_free(text, TRUE); }
  void operator()(ZoxEvent *event) const { zox_event_free(event); }
  void operator()(char *text) const { g_free(text); }
};

template <typename T>
using Owned = std::unique_ptr<T, Release>;

bool texts_arrive() {
  const Owned<ZoxString> source(zox_string_new("Foo foo FOO"));
  const Owned<ZoxString> replaced(zox_string_replace(source.get(), "foo", "bar"));
  const Owned<char> upper(zox_string_upcase("abc"));
  return std::string_view(replaced->str) == "bar bar bar" && std::string_view(upper.get()) == "ABC";
}

bool records_are_copied() {
  const Owned<ZoxEvent> event(zox_event_new());
  event->tags = zox_splitted_list_split("|a0|d23|");
  const Owned<ZoxEvent> copy(zox_event_duplicate(event.get()));
  return copy->tags != event->tags && g_slist_length(copy->tags) == 2 && copy->status == -5;
}

}  // namespace

int main() {
  const bool good = texts_arrive() && records_are_copied();
  std::puts(good ? "good" : "bad");
  return good ? 0 : 1;
}
