/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "store/save_plan.h"

#include <algorithm>
#include <utility>

#include "posting/event_record.h"
#include "store/event_digest.h"
#include "store/event_text.h"
#include "support/object_type.h"
#include "support/parallel.h"
#include "support/rw_lock.h"

namespace velkor {
namespace {

/* Larger sections compress better, smaller ones confine a change. */
constexpr std::uint64_t usual_size = std::uint64_t{96} * 1024;
constexpr std::uint64_t min_size = usual_size / 2;

/** Finds out about the entries of a piece: their size, and whether its section can be kept. */
void examine(SavePiece &piece, std::uint64_t seed, gint64 now) noexcept {
  EventDigest digest(seed);
  std::uint64_t size = 0;
  for_each_entry(piece.entries, [&](const OrderedEntry &entry) {
    size += read_briefly(entry.object->lock, [&]() -> std::uint64_t {
      const ZoxEvent &event = *entry.object->event;
      if (is_long_deleted(event, now))
        return 0;
      if (piece.known != nullptr)
        digest.add(event);
      return element_size(event);
    });
  });
  const bool kept = piece.known != nullptr && piece.known->section.digest == digest.finish();
  if (!kept)
    piece.known = nullptr;
  piece.size = kept ? piece.known->section.text_size : size;
}

void examine(std::vector<SavePiece> &pieces, std::uint64_t seed, gint64 now) noexcept {
  share_out(pieces.size(), [&] {
    return [&](std::size_t number) {
      examine(pieces[number], seed, now);
      return true;
    };
  });
}

/** One piece for every section known; a single one without any. */
std::vector<SavePiece> first_pieces(std::span<OrderedEntry> entries,
                                    const KnownPosts *known) noexcept {
  if (known == nullptr)
    return {{entries}};
  std::vector<SavePiece> pieces;
  const auto ranges = entries_of_sections(entries, known->sections);
  for (std::size_t number = 0; number < ranges.size(); ++number)
    pieces.push_back({ranges[number], 0, &known->sections[number]});
  return pieces;
}

/** Adds the piece that follows to a piece, for both to be written anew. */
void join(SavePiece &piece, const SavePiece &next) noexcept {
  piece.entries = {piece.entries.data(), piece.entries.size() + next.entries.size()};
  piece.size += next.size;
  piece.known = nullptr;
}

/** Joins new pieces with each other, and what is too small for a section with its neighbour. */
std::vector<SavePiece> join_neighbours(const std::vector<SavePiece> &pieces) noexcept {
  std::vector<SavePiece> joined;
  for (const SavePiece &piece : pieces) {
    const bool joins = !joined.empty() && joined.back().known == nullptr &&
                       (piece.known == nullptr || joined.back().size < min_size);
    if (joins && (joined.back().size > 0 || piece.known == nullptr))
      join(joined.back(), piece);
    else
      joined.push_back(piece);
  }
  if (joined.size() > 1 && joined.back().known == nullptr && joined.back().size < min_size) {
    const SavePiece last = joined.back();
    joined.pop_back();
    join(joined.back(), last);
  }
  return joined;
}

/** The size of the entry's element. */
std::uint64_t size_of(const OrderedEntry &entry) noexcept {
  return read_briefly(entry.object->lock, [&] { return element_size(*entry.object->event); });
}

/** Cuts a piece into parts of about the same size, near the one wanted. */
void cut(const SavePiece &piece, std::uint64_t wanted, std::vector<SavePiece> &parts) noexcept {
  const std::uint64_t count = std::max<std::uint64_t>(1, (piece.size + wanted / 2) / wanted);
  const std::uint64_t part_size = (piece.size + count - 1) / count;
  std::span<OrderedEntry> rest = piece.entries;
  while (!rest.empty()) {
    std::size_t entries = 0;
    std::uint64_t size = 0;
    while (entries < rest.size() && size < part_size)
      size += size_of(rest[entries++]);
    parts.push_back({rest.first(entries), size});
    rest = rest.subspan(entries);
  }
}

/** Cuts what is new; kept pieces stay as they are. */
std::vector<SavePiece> cut_new(const std::vector<SavePiece> &pieces,
                               std::uint64_t wanted) noexcept {
  std::vector<SavePiece> parts;
  for (const SavePiece &piece : pieces) {
    if (piece.known != nullptr)
      parts.push_back(piece);
    else if (piece.size > 0)
      cut(piece, wanted, parts);
  }
  return parts;
}

}  // namespace

ListSnapshot::ListSnapshot(ZOXEventlist *list) noexcept {
  take(list);
  std::ranges::sort(entries_, {}, &OrderedEntry::id);
}

/** Holds the list only as long as it takes to hold its entries. */
void ListSnapshot::take(ZOXEventlist *list) noexcept {
  const ReadLock lock(list->lock);
  if (list->tree == nullptr)
    return;
  has_table_ = true;
  entries_ = entries_of(list->tree);
  for_each_entry(entries_, [](const OrderedEntry &entry) { g_object_ref(entry.object); });
}

ListSnapshot::~ListSnapshot() {
  for (const OrderedEntry &entry : entries_)
    unref_object(entry.object);
}

std::vector<SavePiece> plan_save(std::span<OrderedEntry> entries, const KnownPosts *known,
                                 gint64 now) noexcept {
  std::vector<SavePiece> pieces = first_pieces(entries, known);
  examine(pieces, known == nullptr ? 0 : known->layout.seed, now);
  std::uint64_t total = 0;
  for (const SavePiece &piece : pieces)
    total += piece.size;
  // The sections of a very large file grow, so that the header has room for all of them.
  const std::uint64_t wanted = std::max(usual_size, total / (max_sections / 2));
  std::vector<SavePiece> parts = cut_new(join_neighbours(pieces), wanted);
  if (parts.size() > max_sections)
    parts = cut_new({{entries, total}}, wanted);
  return parts;
}

}  // namespace velkor
