/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/stock.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace velkor::bench {
namespace {

constexpr std::int32_t common_size = 100'000;

/** Writes a document of what `elements` puts into it. */
template <typename Elements>
void write_document(const std::string &name, Elements elements) {
  std::ofstream file(name, std::ios::binary);
  file << "<?xml version=\"1.0\"?>\n<Events>\n";
  elements(file);
  file << "</Events>\n" << std::flush;
  if (!file)
    throw std::runtime_error("cannot write " + name);
}

void write_stock(const Place &place) {
  write_document(place.document(), [&place](std::ofstream &file) {
    PostingData data(place.timeline);
    for (std::int32_t number = 0; number < place.timeline.postings; ++number)
      file << data.element(number);
  });
}

void write_changes(const Place &place) {
  write_document(place.changes(), [&place](std::ofstream &file) {
    const Timeline &timeline = place.timeline;
    const auto [added, changed, deleted] = changes_of(timeline.postings);
    PostingData data(timeline, 20081122);
    for (std::int32_t number = 0; number < added; ++number)
      file << data.element(timeline.postings + number);
    const std::int64_t young = timeline.postings - timeline.aged;
    const std::int32_t count = changed + deleted;
    for (std::int32_t change = 0; change < count; ++change) {
      const std::int64_t number = timeline.aged + (change + 1) * young / (count + 1);
      // There are two changed postings for each deleted one.
      file << (change % 3 == 2 ? data.deleted_element(number) : data.changed_element(number));
    }
  });
}

}  // namespace

Changes changes_of(std::int32_t postings) {
  const auto share = [postings](std::int32_t count) {
    const std::int64_t size = std::min(postings, common_size);
    return std::max(static_cast<std::int32_t>(count * size / common_size), 1);
  };
  const std::int32_t deleted = share(15);
  return {share(5000), 2 * deleted, deleted};
}

Place place_of(const std::string &directory, std::int32_t postings, std::int64_t now) {
  return {directory, {.now = now, .postings = postings, .aged = changes_of(postings).added}};
}

void write_documents(const Place &place) {
  write_stock(place);
  write_changes(place);
}

}  // namespace velkor::bench
