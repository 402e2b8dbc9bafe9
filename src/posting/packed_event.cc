/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "posting/packed_event.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <variant>

#include <velkor/zox_events_forum.h>

#include "posting/event_fields.h"
#include "posting/event_record.h"
#include "support/slist.h"

namespace velkor {
namespace {

/* Headers and cells follow the record without gaps. */
static_assert(sizeof(ZoxEvent) % alignof(GString) == 0);
static_assert(sizeof(GString) % alignof(GSList) == 0 && alignof(GString) == alignof(GSList));
static_assert(sizeof(GSList) % alignof(GString) == 0);

/** What stands before every packed record. */
struct Header {
  SharedMemory *memory;  // null when the record shares nothing
};
static_assert(sizeof(Header) % alignof(ZoxEvent) == 0);

Header *header_of(ZoxEvent *event) noexcept {
  return reinterpret_cast<Header *>(event) - 1;
}

const Header *header_of(const ZoxEvent *event) noexcept {
  return reinterpret_cast<const Header *>(event) - 1;
}

/** The members that a record has for itself, with shared parts and without. */
class OwnMembers {
public:
  explicit OwnMembers(bool shares) noexcept : shares_(shares) {}

  [[nodiscard]] bool contain(GString *ZoxEvent::*member) const noexcept {
    return !shares_ || std::ranges::find(shared_text_members, member) == shared_text_members.end();
  }
  [[nodiscard]] bool contain(GSList *ZoxEvent::*member) const noexcept {
    return !shares_ || std::ranges::find(shared_list_members, member) == shared_list_members.end();
  }

private:
  bool shares_;
};

/** The size of a packed record: its fixed parts and, behind them, its characters. */
struct Extent {
  std::size_t fixed = sizeof(Header) + sizeof(ZoxEvent);
  std::size_t characters = 0;

  Extent(const ZoxEvent &event, const OwnMembers &own) noexcept {
    for (const auto member : text_members) {
      if (own.contain(member))
        add(event.*member);
    }
    for (const auto member : list_members) {
      if (own.contain(member))
        add(event.*member);
    }
  }

  void add(const GSList *list) noexcept {
    for (const GString *item : Items<const GString>(list)) {
      fixed += sizeof(GSList);
      add(item);
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

PackedEvent pack_into_block(const ZoxEvent &source, SharedMemory *memory) noexcept {
  const OwnMembers own(memory != nullptr);
  const Extent extent(source, own);
  auto *block = static_cast<char *>(g_malloc(extent.fixed + extent.characters));
  Filler filler(block, extent.fixed);
  filler.place(Header{memory});
  if (memory != nullptr)
    memory->add_reference();
  PackedEvent packed(filler.place(source));
  for (const auto member : text_members) {
    if (own.contain(member))
      (*packed).*member = filler.text(source.*member);
  }
  for (const auto member : list_members) {
    if (own.contain(member))
      (*packed).*member = filler.list(source.*member);
  }
  packed->forum = copy_forum(source.forum);
  return packed;
}

/** Whether the record holds a text, a list or a forum that is not kept in the cache file. */
bool has_details(const ZoxEvent &event) noexcept {
  return event.ann != nullptr || event.des != nullptr || event.sig != nullptr ||
         event.img != nullptr || event.reason != nullptr || event.mp3Tracks != nullptr ||
         event.forum != nullptr;
}

/** Every number that is not kept in the cache file, and some that are. */
constexpr std::array number_members{&ZoxEvent::fType,
                                    &ZoxEvent::files,
                                    &ZoxEvent::fStart,
                                    &ZoxEvent::parType,
                                    &ZoxEvent::pars,
                                    &ZoxEvent::blockSize,
                                    &ZoxEvent::view,
                                    &ZoxEvent::kudos,
                                    &ZoxEvent::locked,
                                    &ZoxEvent::rating,
                                    &ZoxEvent::watchlistUpdated,
                                    &ZoxEvent::watcherHit};

/** The record with its own texts and lists, but without what is not kept in the cache file. */
ZoxEvent bare(const ZoxEvent &event) noexcept {
  ZoxEvent copy = fresh_event;
  for (const EventField &field : basic_fields)
    std::visit([&](auto kind) { copy.*kind.member = event.*kind.member; }, field.kind);
  return copy;
}

}  // namespace

void free_packed(ZoxEvent *event) noexcept {
  if (event->forum != nullptr)
    zox_events_forum_free(event->forum);
  Header *header = header_of(event);
  if (header->memory != nullptr)
    header->memory->drop_reference();
  g_free(header);
}

PackedEvent pack(const ZoxEvent &source) noexcept {
  return pack_into_block(source, nullptr);
}

PackedEvent pack(const ZoxEvent &source, SharedMemory &memory) noexcept {
  return pack_into_block(source, &memory);
}

PackedEvent without_details(const ZoxEvent &packed) noexcept {
  return pack_into_block(bare(packed), header_of(&packed)->memory);
}

bool is_without_details(const ZoxEvent &event) noexcept {
  const ZoxEvent copy = bare(event);
  return !has_details(event) && std::ranges::all_of(number_members, [&](auto member) {
    return event.*member == copy.*member;
  });
}

}  // namespace velkor
