/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The small operations that reading and writing are made of. */
#include <benchmark/benchmark.h>

#include <filesystem>
#include <random>
#include <string>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_sort.h>
#include <velkor/zox_events_xml.h>
#include <velkor/zox_groups.h>

#include "bench/posting_data.h"
#include "filter/prepared_filter.h"
#include "filter/word_set.h"
#include "posting/event_record.h"
#include "posting/packed_event.h"
#include "store/event_reader.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"

namespace {

using namespace velkor;

constexpr std::int32_t some = 1000;

/** A core with default settings and filters and an empty event list, while it lives. */
class Core {
public:
  Core() {
    const std::string directory = std::filesystem::temp_directory_path().string();
    ZoxCoreOptions options{};
    options.cacheDir = directory.c_str();
    options.readOnly = 1;
    options.parts = ZOX_CORE_FILTERS | ZOX_CORE_TABLES;
    if (zox_app_core_open(&options, nullptr) != ZOX_CORE_OPENED)
      std::abort();
  }
  ~Core() { zox_app_core_close(); }
  Core(const Core &) = delete;
  Core &operator=(const Core &) = delete;
};

/** The global newsgroup id set of a filter that has newsgroups. */
class GroupIdSet {
public:
  explicit GroupIdSet(GSList *ids) {
    if (ids != nullptr)
      zox_group_set_group_id_list(ids);
  }
  ~GroupIdSet() {
    if (groupIds != nullptr)
      zox_group_unset_group_id_list();
  }
  GroupIdSet(const GroupIdSet &) = delete;
  GroupIdSet &operator=(const GroupIdSet &) = delete;
};

using TextList = ListBuilder<GString, free_string>;

void add_group(guint32 id) {
  ZoxGroup *group = zox_group_new();
  group->id = id;
  group->groupName = g_string_new(("alt.binaries.nieuwsgroep" + std::to_string(id)).c_str());
  core->groups = g_slist_prepend(core->groups, group);
}

/** Some postings, read from a document. */
std::vector<PackedEvent> some_postings() {
  EventReader reader;
  const std::string document = bench::document_of(some);
  if (reader.read(document) != EventReader::Outcome::Read)
    std::abort();
  return std::move(reader.postings);
}

void read_postings(benchmark::State &state) {
  const std::string document = bench::document_of(some);
  for ([[maybe_unused]] const auto &round : state) {
    EventReader reader;
    benchmark::DoNotOptimize(reader.read(document));
  }
  state.SetItemsProcessed(state.iterations() * some);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(document.size()));
}
BENCHMARK(read_postings);

void pack_postings(benchmark::State &state) {
  const auto postings = some_postings();
  for ([[maybe_unused]] const auto &round : state) {
    for (const PackedEvent &posting : postings)
      benchmark::DoNotOptimize(pack(*posting));
  }
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(pack_postings);

void duplicate_postings(benchmark::State &state) {
  const auto postings = some_postings();
  for ([[maybe_unused]] const auto &round : state) {
    for (const PackedEvent &posting : postings)
      benchmark::DoNotOptimize(OwnedEvent(zox_event_duplicate(posting.get())));
  }
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(duplicate_postings);

void build_elements(benchmark::State &state) {
  const auto postings = some_postings();
  const xml::Document document(xmlNewDoc(xml::chars("1.0")));
  for ([[maybe_unused]] const auto &round : state) {
    for (const PackedEvent &posting : postings)
      benchmark::DoNotOptimize(xml::Node(zox_events_xml_add_basic(posting.get(), document.get())));
  }
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(build_elements);

void search_titles(benchmark::State &state) {
  const auto postings = some_postings();
  for ([[maybe_unused]] const auto &round : state) {
    for (const PackedEvent &posting : postings)
      benchmark::DoNotOptimize(contains_ignoring_case(view_of(posting->title), bench::rare_word));
  }
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(search_titles);

/* Arguments of the cases below are sizes of lists; only the walk is measured, not preparing it. */

/** Adds so many search texts that begin like a piece of a title; none of them stands in one. */
void add_search_texts(TextList &texts, std::int64_t count) {
  const auto postings = some_postings();
  // NOLINTNEXTLINE(cert-msc32-c,cert-msc51-cpp): every run measures the same texts
  std::mt19937 random(7);
  for (std::int64_t number = 0; number < count; ++number) {
    const auto turn = static_cast<std::size_t>(number) % postings.size();
    const std::string_view title = view_of(postings[turn]->title);
    std::string text(title.substr(random() % (title.size() / 2 + 1), 3 + random() % 4));
    for (auto letters = 2 + random() % 5; letters > 0; --letters)
      text += static_cast<char>('a' + random() % 26);
    texts.append(g_string_new((text + "#").c_str()));
  }
}

void search_many_words(benchmark::State &state) {
  const auto postings = some_postings();
  TextList texts;
  add_search_texts(texts, state.range(0));
  const WordSet words(texts.list());
  for ([[maybe_unused]] const auto &round : state) {
    for (const PackedEvent &posting : postings)
      benchmark::DoNotOptimize(words.occurs_in(view_of(posting->title)));
  }
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(search_many_words)->Arg(1)->Arg(30)->Arg(300)->Arg(3000);

/** What takes the place of the list of words for one pass, made once for each. */
void prepare_many_words(benchmark::State &state) {
  TextList texts;
  add_search_texts(texts, state.range(0));
  for ([[maybe_unused]] const auto &round : state)
    benchmark::DoNotOptimize(WordSet(texts.list()));
}
BENCHMARK(prepare_many_words)->Arg(30)->Arg(300)->Arg(3000);

void filter_postings(benchmark::State &state, ZoxFilter &filter) {
  const Core in_use;
  const auto postings = some_postings();
  const GroupIdSet ids(filter.groupIdList);
  const PreparedFilter prepared(filter);
  for ([[maybe_unused]] const auto &round : state) {
    for (const PackedEvent &posting : postings)
      benchmark::DoNotOptimize(prepared.accepts(*posting));
  }
  state.SetItemsProcessed(state.iterations() * some);
}

void filter_by_title(benchmark::State &state) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->titleSearch = g_string_new(bench::rare_word);
  filter_postings(state, *filter);
}
BENCHMARK(filter_by_title);

void filter_by_tags(benchmark::State &state) {
  const OwnedFilter filter(zox_filter_new_filter());
  filter->tags = zox_splitted_list_split("|a0|a1|b3|c7|c8|");
  filter_postings(state, *filter);
}
BENCHMARK(filter_by_tags);

/** By so many newsgroups, none of which a posting names. */
void filter_by_newsgroups(benchmark::State &state) {
  const OwnedFilter filter(zox_filter_new_filter());
  TextList ids;
  for (std::int64_t number = 0; number < state.range(0); ++number)
    ids.append(g_string_new(std::to_string(1'000'000 + number).c_str()));
  filter->groupIdList = ids.release();
  filter_postings(state, *filter);
}
BENCHMARK(filter_by_newsgroups)->Arg(30)->Arg(300)->Arg(3000);

/** The display document, with so many newsgroups known and so many postings on the watchlist. */
void display_postings(benchmark::State &state) {
  const Core in_use;
  TextList watched;
  for (std::int64_t number = 0; number < state.range(0); ++number) {
    watched.append(g_string_new(std::to_string(5'000'000 + number).c_str()));
    add_group(static_cast<guint32>(number));
  }
  core->config->watchlist = watched.release();
  for (PackedEvent &posting : some_postings())
    zox_eventlist_add_or_replace_event(core->eventlist, posting.get());
  for ([[maybe_unused]] const auto &round : state)
    benchmark::DoNotOptimize(OwnedString(zox_events_sort_total(nullptr)));
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(display_postings)->Arg(300)->Arg(3000);

/** So many postings, all of them replacements, with a tenth as many watchers as watched ones. */
void merge_postings(benchmark::State &state) {
  const Core in_use;
  TextList watched;
  for (std::int64_t number = 0; number < state.range(0); ++number)
    watched.append(g_string_new(std::to_string(5'000'000 + number).c_str()));
  core->config->watchlist = watched.release();
  TextList watchers;
  add_search_texts(watchers, state.range(0) / 10);
  core->config->watcher = watchers.release();
  const auto postings = some_postings();
  for ([[maybe_unused]] const auto &round : state) {
    state.PauseTiming();
    CellBuilder<ZOXEventObject> objects;
    for (const PackedEvent &posting : postings)
      objects.append(new_object(pack(*posting)).release());
    const OwnedCells cells(objects.release());
    state.ResumeTiming();
    zox_eventlist_merge(core->eventlist, cells.get(), nullptr, nullptr);
  }
  state.SetItemsProcessed(state.iterations() * some);
}
BENCHMARK(merge_postings)->Arg(300)->Arg(3000);

}  // namespace
