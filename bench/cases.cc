/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Loading, saving, merging and displaying. */
#include "bench/cases.h"

#include <cstdint>
#include <filesystem>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_sort.h>

#include "bench/library.h"
#include "bench/measure.h"
#include "support/owned.h"

namespace velkor::bench {
namespace {

namespace fs = std::filesystem;

/** The library with the whole stock in a cache that may be changed. */
class LoadedCopy {
public:
  explicit LoadedCopy(const Place &place) : library_(copy(place)) { load_list(); }

private:
  static std::string copy(const Place &place) {
    fs::remove_all(place.cache());
    fs::copy(place.stock(), place.cache(), fs::copy_options::recursive);
    return place.cache();
  }

  Library library_;
};

/** One posting in a hundred is new, as after an ordinary update. */
void set_previous_update(const Timeline &timeline) {
  core->config->prevCheck = timeline.stamp_of(timeline.postings - timeline.postings / 100);
}

/** The number of bytes of all files in the cache. */
std::uintmax_t size_of(const std::string &directory) {
  std::uintmax_t size = 0;
  for (const fs::directory_entry &entry : fs::directory_iterator(directory))
    size += entry.file_size();
  return size;
}

/** The postings of the document of changes. */
OwnedCells read_changes(const Place &place) {
  char *place_of_text = nullptr;
  gsize length = 0;
  expect(g_file_get_contents(place.changes().c_str(), &place_of_text, &length, nullptr) != FALSE,
         "cannot read the changes");
  const OwnedText text(place_of_text);
  const GString buffer{text.get(), length, length + 1};
  GSList *list = nullptr;
  expect(zox_events_parse(&buffer, nullptr, &list, nullptr, 1) == 0, "cannot parse the changes");
  return OwnedCells(list);
}

}  // namespace

void prepare_stock(const Place &place) {
  const Library library(place.stock());
  load_list();
  expect(count_postings() == static_cast<unsigned>(place.timeline.postings),
         "postings are missing");
  save_list();
}

void measure_load(const Place &place) {
  const Library library(place.stock());
  set_previous_update(place.timeline);
  const Meter load("load");
  load_list();
  load.stop();
  expect(count_postings() == static_cast<unsigned>(place.timeline.postings),
         "postings are missing");
}

void measure_unchanged(const Place &place) {
  const LoadedCopy copy(place);
  const Meter save("save-unchanged");
  save_list();
  save.stop();
  expect(size_of(place.cache()) >= size_of(place.stock()) / 2, "the file is not whole");
}

void measure_save(const Place &place) {
  const LoadedCopy copy(place);
  for (const fs::directory_entry &entry : fs::directory_iterator(place.cache()))
    fs::remove_all(entry);
  const Meter save("save");
  save_list();
  save.stop();
  expect(size_of(place.cache()) >= size_of(place.stock()) / 2, "the file is not whole");
}

void measure_changes(const Place &place) {
  const LoadedCopy copy(place);
  const Changes changes = changes_of(place.timeline.postings);
  const OwnedCells objects = read_changes(place);
  const Meter merge("merge");
  zox_eventlist_merge(core->eventlist, objects.get(), nullptr, nullptr);
  merge.stop();
  const Meter save("save-changes");
  save_list();
  save.stop();
  load_list();
  expect(count_postings() + static_cast<unsigned>(changes.deleted) >=
             static_cast<unsigned>(place.timeline.postings + changes.added),
         "postings were not saved");
}

void measure_display(const Place &place) {
  const Library library(place.stock());
  set_previous_update(place.timeline);
  load_list();
  const Meter display("display");
  const OwnedString document(zox_events_sort_total(nullptr));
  display.stop();
  expect(document && document->len > gsize{100} * static_cast<unsigned>(place.timeline.postings),
         "the display document is not whole");
  const Meter copying("copy");
  const OwnedString copy(copy_string(document.get()));
  copying.stop();
  expect(copy->len == document->len, "the copy is not whole");
}

}  // namespace velkor::bench
