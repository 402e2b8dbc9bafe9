/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/cases.h"

#include <map>
#include <memory>
#include <stdexcept>

#include <sqlite3.h>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_parse.h>
#include <velkor/zox_events_sort.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_string.h>

#include "bench/library.h"
#include "bench/posting_data.h"
#include "filter/filter_record.h"
#include "support/owned.h"

namespace velkor::bench {
namespace {

void expect(bool condition, const char *what) {
  if (!condition)
    throw std::runtime_error(what);
}

/** One posting in a hundred is new, as after an ordinary update. */
void set_previous_update(const Place &place) {
  core->config->prevCheck = stamp_of(place.postings - place.postings / 100);
}

Cost load(const Place &place) {
  const Library library(place.cache());
  set_previous_update(place);
  const Meter meter;
  load_list();
  const Cost cost = meter.stop();
  expect(zox_eventlist_get_count(core->eventlist, 0) == static_cast<guint32>(place.postings),
         "postings are missing");
  return cost;
}

Cost save(const Place &place) {
  const Library library(place.cache());
  load_list();
  const Meter meter;
  expect(zox_eventlist_save(core->eventlist) == 1, "cannot save the list");
  return meter.stop();
}

/** A tenth as many postings as there are: half of them new, half of them replacements. */
Cost merge(const Place &place) {
  const Library library(place.cache());
  load_list();
  const std::int32_t count = place.postings / 10;
  const std::string text = document_of(count, 1'000'000 + place.postings - count / 2);
  GString buffer{const_cast<char *>(text.data()), text.size(), text.size() + 1};
  GSList *list = nullptr;
  expect(zox_events_parse(&buffer, nullptr, &list, nullptr, 1) == 0, "cannot read the postings");
  const OwnedCells objects(list);
  const Meter meter;
  zox_eventlist_merge(core->eventlist, objects.get(), nullptr, nullptr);
  return meter.stop();
}

OwnedFilter word_filter() {
  OwnedFilter filter(zox_filter_new_filter());
  filter->titleSearch = zox_string_new(rare_word);
  return filter;
}

Cost apply(const ZoxFilter &filter) {
  const Meter meter;
  zox_eventlist_apply_filter(core->eventlist, &filter);
  const Cost cost = meter.stop();
  expect(zox_eventlist_get_count(core->eventlist, 1) > 0, "nothing was found");
  return cost;
}

/** The first pass over a list also makes GLib's part of every entry's lock. */
Cost filter(const Place &place) {
  const Library library(place.cache());
  load_list();
  return apply(*word_filter());
}

Cost filter_again(const Place &place) {
  const Library library(place.cache());
  load_list();
  apply(*word_filter());
  return apply(*word_filter());
}

using Database = std::unique_ptr<sqlite3, ReleaseWith<sqlite3_close>>;

void execute(sqlite3 *database, const char *sql) {
  expect(sqlite3_exec(database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
}

Database titles_in_a_database(const Place &place) {
  sqlite3 *handle = nullptr;
  expect(sqlite3_open(":memory:", &handle) == SQLITE_OK, "cannot open a database");
  Database database(handle);
  execute(handle, "CREATE TABLE posting (id INTEGER PRIMARY KEY, title TEXT); BEGIN");
  sqlite3_stmt *statement = nullptr;
  sqlite3_prepare_v2(handle, "INSERT INTO posting (title) VALUES (?)", -1, &statement, nullptr);
  PostingData data;
  for (std::int32_t number = 0; number < place.postings; ++number) {
    data.next_element();
    sqlite3_bind_text(statement, 1, data.title().c_str(), -1, SQLITE_TRANSIENT);
    expect(sqlite3_step(statement) == SQLITE_DONE, "cannot insert");
    sqlite3_reset(statement);
  }
  sqlite3_finalize(statement);
  execute(handle, "COMMIT");
  return database;
}

Cost like(const Place &place) {
  const Database database = titles_in_a_database(place);
  const std::string sql =
      std::string("SELECT count(*) FROM posting WHERE title LIKE '%") + rare_word + "%'";
  const Meter meter;
  execute(database.get(), sql.c_str());
  return meter.stop();
}

Cost display(const Place &place) {
  const Library library(place.cache());
  set_previous_update(place);
  load_list();
  const Meter meter;
  const OwnedString document(zox_events_sort_total(nullptr));
  const Cost cost = meter.stop();
  expect(document != nullptr, "there is no display document");
  return cost;
}

Cost copy(const Place &place) {
  const Library library(place.cache());
  set_previous_update(place);
  load_list();
  const OwnedString document(zox_events_sort_total(nullptr));
  const Meter meter;
  const OwnedString again(copy_string(document.get()));
  const Cost cost = meter.stop();
  expect(again->len == document->len, "the copy is not whole");
  return cost;
}

}  // namespace

Cost run_case(const std::string &name, const Place &place) {
  static const std::map<std::string, Cost (*)(const Place &)> cases{
      {"load", load},          {"save", save}, {"merge", merge},     {"filter", filter},
      {"again", filter_again}, {"like", like}, {"display", display}, {"copy", copy},
  };
  return cases.at(name)(place);
}

}  // namespace velkor::bench
