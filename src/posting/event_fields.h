/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * The one table of a posting's elements and the members that they fill: it serves both readers
 * and the writer.
 */
#ifndef VELKOR_POSTING_EVENT_FIELDS_H
#define VELKOR_POSTING_EVENT_FIELDS_H

#include <array>
#include <cstddef>
#include <span>
#include <variant>

#include <velkor/zox_event.h>

namespace velkor {

struct NumberField {
  gint32 ZoxEvent::*member;
};
/** A time: 64 bits in the record, 32 in a document. */
struct TimeField {
  gint64 ZoxEvent::*member;
};
struct TextField {
  GString *ZoxEvent::*member;
};
/** Whether an element is written for the text even when there is none. */
constexpr bool is_always_written(TextField field) noexcept {
  return field.member == &ZoxEvent::poster;
}
/** A text in split-list form; `name` is the member as a warning names it. */
struct ListField {
  GSList *ZoxEvent::*member;
  const char *name;
};
/** An element whose children "Track" each hold a text. */
struct TracksField {
  GSList *ZoxEvent::*member;
};

struct EventField {
  const char *element;
  std::variant<NumberField, TimeField, TextField, ListField, TracksField> kind;
};

/** The elements of a posting, in the order in which a document is written. */
inline constexpr std::array<EventField, 22> event_fields{{
    {"PostID", NumberField{&ZoxEvent::postId}},
    {"Stamp", TimeField{&ZoxEvent::stamp}},
    {"Updated", TimeField{&ZoxEvent::updated}},
    {"Status", NumberField{&ZoxEvent::status}},
    {"Groups", ListField{&ZoxEvent::groups, "groups"}},
    {"FName", TextField{&ZoxEvent::fName}},
    {"Title", TextField{&ZoxEvent::title}},
    {"Poster", TextField{&ZoxEvent::poster}},
    {"Link", TextField{&ZoxEvent::link}},
    {"Rating", NumberField{&ZoxEvent::rating}},
    {"Cat", NumberField{&ZoxEvent::cat}},
    {"SCat", NumberField{&ZoxEvent::sCat}},
    {"Tags", ListField{&ZoxEvent::tags, "tags"}},
    {"Tag", TextField{&ZoxEvent::tag}},
    {"Ann", TextField{&ZoxEvent::ann}},
    {"Des", TextField{&ZoxEvent::des}},
    {"Sig", TextField{&ZoxEvent::sig}},
    {"FType", NumberField{&ZoxEvent::fType}},
    {"Files", NumberField{&ZoxEvent::files}},
    {"FStart", NumberField{&ZoxEvent::fStart}},
    {"Img", TextField{&ZoxEvent::img}},
    {"MP3", TracksField{&ZoxEvent::mp3Tracks}},
}};

/** The fields that reach the cache; what follows them is fetched again when it is needed. */
inline constexpr std::span<const EventField> basic_fields{event_fields.data(), 14};

/* The other elements of a document of postings. */
inline constexpr const char *root_element = "Events";
inline constexpr const char *event_element = "Event";
inline constexpr const char *track_element = "Track";

}  // namespace velkor

#endif
