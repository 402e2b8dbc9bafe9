/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "posting/packed_event.h"

#include <cstring>
#include <new>

#include <velkor/zox_events_forum.h>

#include "posting/event_record.h"
#include "posting/forum_record.h"
#include "support/slist.h"

namespace velkor {
namespace {

/* Headers and cells follow the record without gaps. */
static_assert(sizeof(ZoxEvent) % alignof(GString) == 0);
static_assert(sizeof(GString) % alignof(GSList) == 0 && alignof(GString) == alignof(GSList));
static_assert(sizeof(GSList) % alignof(GString) == 0);

/** The size of a packed record: its fixed parts and, behind them, its characters. */
struct Extent {
  std::size_t fixed = sizeof(ZoxEvent);
  std::size_t characters = 0;

  explicit Extent(const ZoxEvent &event) noexcept {
    for (const auto member : text_members)
      add(event.*member);
    for (const auto member : list_members) {
      for (const GString *item : Items<const GString>(event.*member)) {
        fixed += sizeof(GSList);
        add(item);
      }
    }
  }

  void add(const GString *text) noexcept {
    if (text == nullptr)
      return;
    fixed += sizeof(GString);
    characters += text->len + 1;
  }
};

/** Fills a block from its two ends: fixed parts from the front, characters behind them. */
class Filler {
public:
  Filler(char *block, std::size_t fixed) noexcept : fixed_(block), characters_(block + fixed) {}

  template <typename T>
  T *place(const T &value) noexcept {
    // The analyser cannot see that the block was measured for all of its parts.
    auto *placed = ::new (fixed_) T(value);  // NOLINT(clang-analyzer-cplusplus.PlacementNew)
    fixed_ += sizeof(T);
    return placed;
  }

  GString *text(const GString *source) noexcept {
    if (source == nullptr)
      return nullptr;
    char *const characters = characters_;
    std::memcpy(characters, source->str, source->len);
    characters[source->len] = '\0';
    characters_ += source->len + 1;
    return place(GString{characters, source->len, source->len + 1});
  }

  GSList *list(const GSList *source) noexcept {
    GSList *head = nullptr;
    GSList **tail = &head;
    for (const GString *item : Items<const GString>(source)) {
      *tail = place(GSList{text(item), nullptr});
      tail = &(*tail)->next;
    }
    return head;
  }

private:
  char *fixed_;
  char *characters_;
};

}  // namespace

void free_packed(ZoxEvent *event) noexcept {
  if (event->forum != nullptr)
    zox_events_forum_free(event->forum);
  g_free(event);
}

PackedEvent pack(const ZoxEvent &source) noexcept {
  const Extent extent(source);
  auto *block = static_cast<char *>(g_malloc(extent.fixed + extent.characters));
  Filler filler(block, extent.fixed);
  PackedEvent packed(filler.place(source));
  for (const auto member : text_members)
    (*packed).*member = filler.text(source.*member);
  for (const auto member : list_members)
    (*packed).*member = filler.list(source.*member);
  packed->forum = copy_forum(source.forum);
  return packed;
}

}  // namespace velkor
