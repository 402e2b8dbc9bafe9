/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Filter passes, and the same search in a database. */
#include <memory>
#include <string>

#include <sqlite3.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "bench/cases.h"
#include "bench/library.h"
#include "bench/measure.h"
#include "support/owned.h"

namespace velkor::bench {
namespace {

using OwnedFilter = std::unique_ptr<ZoxFilter, ReleaseWith<zox_filter_free_filter>>;
using Database = std::unique_ptr<sqlite3, ReleaseWith<sqlite3_close>>;
using Statement = std::unique_ptr<sqlite3_stmt, ReleaseWith<sqlite3_finalize>>;

void apply_once(const ZoxFilter &filter, const std::string &name) {
  const Meter pass(name);
  zox_eventlist_apply_filter(core->eventlist, &filter);
  pass.stop();
  const guint32 found = zox_eventlist_get_count(core->eventlist, 1);
  expect(found > 0 && found < count_postings() / 2, "the filter does not select");
}

/** The first pass over a list also makes GLib's part of every entry's lock. */
void apply_twice(const Place &place, const ZoxFilter &filter, const std::string &name) {
  load_list();
  expect(count_postings() == static_cast<unsigned>(place.timeline.postings),
         "postings are missing");
  apply_once(filter, name);
  apply_once(filter, name + "-again");
}

void execute(sqlite3 *database, const char *sql) {
  expect(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

void insert_postings(sqlite3 *database, const Timeline &timeline) {
  sqlite3_stmt *place = nullptr;
  sqlite3_prepare_v2(database, "INSERT INTO posting (title, tags) VALUES (?, ?)", -1, &place,
                     nullptr);
  const Statement statement(place);
  PostingData data(timeline);
  for (std::int32_t number = 0; number < timeline.postings; ++number) {
    data.element(number);
    sqlite3_bind_text(place, 1, data.title().c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(place, 2, data.tags().c_str(), -1, SQLITE_TRANSIENT);
    expect(sqlite3_step(place) == SQLITE_DONE, "cannot insert");
    sqlite3_reset(place);
  }
}

Database postings_in_a_database(const Timeline &timeline) {
  sqlite3 *handle = nullptr;
  expect(sqlite3_open(":memory:", &handle) == SQLITE_OK, "cannot open a database");
  Database database(handle);
  execute(handle, "CREATE TABLE posting (id INTEGER PRIMARY KEY, title TEXT, tags TEXT); BEGIN");
  insert_postings(handle, timeline);
  execute(handle, "COMMIT");
  return database;
}

void search(sqlite3 *database, const std::string &condition, const std::string &name) {
  const std::string sql = "SELECT count(*) FROM posting WHERE " + condition;
  const Meter meter(name);
  execute(database, sql.c_str());
  meter.stop();
}

}  // namespace

void measure_word_filter(const Place &place) {
  const Library library(place.stock());
  const OwnedFilter filter(zox_filter_new_filter());
  filter->titleSearch = zox_string_new(rare_word);
  apply_twice(place, *filter, "word");
}

void measure_tag_filter(const Place &place) {
  const Library library(place.stock());
  const OwnedFilter filter(zox_filter_new_filter());
  filter->tags = zox_splitted_list_split(some_tag);
  apply_twice(place, *filter, "tags");
}

void measure_like(const Place &place) {
  const Database database = postings_in_a_database(place.timeline);
  search(database.get(), std::string("title LIKE '%") + rare_word + "%'", "like-word");
  search(database.get(), std::string("tags LIKE '%|") + some_tag + "|%'", "like-tags");
}

}  // namespace velkor::bench
