/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The small operations that reading and writing are made of. */
#include <benchmark/benchmark.h>

#include <velkor/zox_events_xml.h>

#include "bench/posting_data.h"
#include "posting/event_record.h"
#include "posting/packed_event.h"
#include "store/event_reader.h"
#include "support/text.h"
#include "support/xml.h"

namespace {

using namespace velkor;

constexpr std::int32_t some = 1000;

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

}  // namespace
