/* SPDX-License-Identifier: LGPL-2.1-or-later */
/*
 * Updates in one process, one for each line of standard input, which holds the time that it is;
 * prints the postings in the list, the resident memory in KiB and the open descriptors after each.
 * tools/soak.py drives it.
 */
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

#include <unistd.h>
#include <velkor/velkor.h>

#include "support/clock.h"
#include "support/opened_core.h"
#include "support/owned.h"
#include "support/owned_records.h"

namespace velkor::bench {
namespace {

gint64 now = 0;

void require(ZoxErrorCode code, const char *server_text) {
  if (code == ZOX_RESULT_SUCCESS || code == ZOX_RESULT_NOTHING_NEW)
    return;
  const OwnedText sentence(zox_error_msg(code, server_text));
  throw std::runtime_error(sentence.get());
}

void update() {
  char *text = nullptr;
  const ZoxErrorCode code = zox_events_fetch(nullptr, nullptr, nullptr, &text, nullptr);
  require(code, OwnedText(text).get());
}

void note_first(const ZoxEvent *posting, gpointer id) noexcept {
  *static_cast<gint32 *>(id) = posting->postId;
}

/** What a user does between two updates: looks at a list, then at one of its postings. */
void look_around() {
  const OwnedFilter filter(zox_filter_new_filter());
  zox_eventlist_apply_filter(core->eventlist, filter.get());
  const OwnedString page(zox_events_sort_total(nullptr));
  gint32 id = 0;
  zox_eventlist_visit(core->eventlist, 0, note_first, &id);
  char *text = nullptr;
  require(zox_eventinfo_fetch(id, &text), nullptr);
  const OwnedText details_text(text);
  text = nullptr;
  require(zox_events_forum_fetch(id, 0, &text), nullptr);
  const OwnedText forum_text(text);
}

long resident_kib() {
  long all_pages = 0;
  long resident_pages = 0;
  std::ifstream("/proc/self/statm") >> all_pages >> resident_pages;
  constexpr long bytes_per_kib = 1024;
  return resident_pages * (sysconf(_SC_PAGESIZE) / bytes_per_kib);
}

long open_descriptors() {
  namespace fs = std::filesystem;
  return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

void run(const char *host, const char *cache, const char *plugins) {
  const ReplacedClock clock([] { return now; });
  zox_http_set_hosts(host, host);
  const OpenedCore core_of_run(options_without_bus(cache, plugins));
  while (std::cin >> now) {
    update();
    look_around();
    std::cout << zox_eventlist_get_count(core->eventlist, 0) << ' ' << resident_kib() << ' '
              << open_descriptors() << std::endl;
  }
}

}  // namespace
}  // namespace velkor::bench

int main(int count, char **words) {
  if (count != 4) {
    std::cerr << "usage: velkor-soak HOST CACHE-DIRECTORY PLUG-IN-DIRECTORY\n";
    return EXIT_FAILURE;
  }
  try {
    velkor::bench::run(words[1], words[2], words[3]);
  } catch (const std::exception &error) {
    std::cerr << "velkor-soak: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
  return EXIT_SUCCESS;
}
