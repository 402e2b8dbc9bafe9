/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A posting while its elements come in: a record whose texts and lists point into buffers that
 * serve one posting after the other, so that only the packed result costs an allocation.
 */
#ifndef VELKOR_STORE_EVENT_DRAFT_H
#define VELKOR_STORE_EVENT_DRAFT_H

#include <array>
#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "posting/event_fields.h"
#include "posting/event_record.h"
#include "posting/packed_event.h"
#include "posting/shared_parts.h"

namespace velkor {

/** What can be odd about an element in split-list form. */
enum class ListOddity { AlreadyFilled, WithoutText };

class EventDraft {
public:
  /** @param parts  where postings share what they have in common; outlives the draft */
  explicit EventDraft(SharedParts &parts) noexcept : parts_(parts) {}
  EventDraft(const EventDraft &) = delete;
  EventDraft &operator=(const EventDraft &) = delete;

  /** Begins a posting. */
  void start() noexcept { event_ = fresh_event; }

  /** Begins the element that fills `field`; its text is empty and not present yet. */
  void open(const EventField &field) noexcept;
  /** Adds a piece of the open element's text; an empty piece makes it present. */
  void append(std::string_view piece) noexcept;
  /** Ends the open element. */
  std::optional<ListOddity> close() noexcept;

  /** The same for a "Track" within the open element. */
  void open_track() noexcept { track_.clear(); }
  void append_track(std::string_view piece) noexcept;
  void close_track() noexcept;

  /** The posting as a record of its own. */
  [[nodiscard]] PackedEvent finish() noexcept;

private:
  /** A text of the draft that may be absent. */
  struct Buffer {
    std::string characters;
    bool present = false;

    void clear() noexcept;
    void append(std::string_view piece) noexcept;
  };

  /** List cells with their texts, used over and over; they never move. */
  class Cells {
  public:
    void clear() noexcept { used_ = 0; }
    /** `text` is zero-terminated and stays the caller's. */
    void append(char *text, std::size_t length) noexcept;
    [[nodiscard]] GSList *list() noexcept { return used_ == 0 ? nullptr : &cells_.front().cell; }

  private:
    struct Cell {
      GSList cell;
      GString text;
    };
    std::deque<Cell> cells_;
    std::size_t used_ = 0;
  };

  /** What the element of one field held. */
  struct Content {
    Buffer buffer;
    GString text{};
    Cells items;
  };

  std::optional<ListOddity> fill(NumberField field) noexcept;
  std::optional<ListOddity> fill(TimeField field) noexcept;
  std::optional<ListOddity> fill(TextField field) noexcept;
  std::optional<ListOddity> fill(ListField field) noexcept;
  std::optional<ListOddity> fill(TracksField field) noexcept;
  [[nodiscard]] gint32 number() const noexcept;
  /** The open element's text for a member of the posting. */
  [[nodiscard]] GString *text_for(GString *ZoxEvent::*member) noexcept;

  SharedParts &parts_;
  ZoxEvent event_ = fresh_event;
  std::array<Content, event_fields.size()> contents_;
  const EventField *field_ = nullptr;
  Content *content_ = nullptr;
  Buffer track_;
  std::deque<std::string> tracks_;
};

}  // namespace velkor

#endif
