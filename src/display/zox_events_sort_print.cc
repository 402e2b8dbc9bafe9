/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_sort.h>

#include <algorithm>
#include <array>
#include <limits>
#include <variant>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "display/parts.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/text_writer.h"

namespace velkor {
namespace {

/** What fits into a line of the element. */
constexpr std::size_t line_limit = 65534;

class EventPrinter;

/** A number of the posting. */
struct Number {
  gint32 ZoxEvent::*member;
};
/** A number made of the posting. */
struct Computed {
  gint64 (EventPrinter::*value)() const;
};
/** A text that has its line in any case. */
struct Text {
  ZoxString *ZoxEvent::*member;
};
/** A text whose line is left out without it. */
struct OptionalText {
  ZoxString *ZoxEvent::*member;
};
/** A long text that goes through the front end's conversion first. */
struct ConvertedText {
  ZoxString *ZoxEvent::*member;
};
/** Lines of their own kind. */
struct Special {
  void (EventPrinter::*print)(const LineElement &);
};

struct Line {
  LineElement element;
  std::variant<Number, Computed, Text, OptionalText, ConvertedText, Special> content;
};

gint32 scaled_rating(gint32 rating, gint32 scale) noexcept {
  if (scale == 0)
    return 0;  // there is no such scale, and nothing to divide by
  const auto factor = static_cast<float>(100.0 / scale);
  const auto highest = static_cast<gint32>(10U * static_cast<guint32>(scale));
  const float scaled = factor * static_cast<float>(std::min(rating, highest));
  constexpr auto bound = static_cast<float>(1U << 31U);
  if (scaled >= bound)
    return std::numeric_limits<gint32>::max();
  if (scaled <= -bound)
    return std::numeric_limits<gint32>::min();
  return static_cast<gint32>(scaled);
}

/** Knows what stands in the lines of one posting. */
class EventPrinter {
public:
  EventPrinter(TextWriter &out, const ZoxEvent &event, const ElementSettings &settings,
               DisplayLookups &lookups) noexcept
      : out_(out), lines_(out, {settings.indent, line_limit}), event_(event), settings_(settings),
        lookups_(lookups), address_(zox_string_add_http(event.link)) {
    ZOX_ASSERT_IN(zox_events_sort_print, address_, "url");
  }

  void print() noexcept;

private:
  static const std::array<Line, 36> table;

  void print(const LineElement &element, Number content) noexcept {
    lines_.number_line(element, event_.*content.member);
  }
  void print(const LineElement &element, Computed content) noexcept {
    lines_.number_line(element, (this->*content.value)());
  }
  void print(const LineElement &element, Text content) noexcept {
    lines_.text_line(element, event_.*content.member);
  }
  void print(const LineElement &element, OptionalText content) noexcept {
    if (event_.*content.member != nullptr)
      lines_.text_line(element, event_.*content.member);
  }
  void print(const LineElement &element, ConvertedText content) noexcept;
  void print(const LineElement &element, Special content) noexcept {
    (this->*content.print)(element);
  }

  [[nodiscard]] gint64 stamp() const noexcept { return event_.stamp; }
  [[nodiscard]] gint64 updated() const noexcept { return static_cast<gint32>(event_.updated); }
  [[nodiscard]] gint64 newsgroup_count() const noexcept { return g_slist_length(event_.groups); }
  [[nodiscard]] gint64 rating() const noexcept {
    return scaled_rating(event_.rating, core->config->ratingScale);
  }
  [[nodiscard]] gint64 position() const noexcept { return settings_.position; }
  [[nodiscard]] gint64 watched() const noexcept { return lookups_.watched(event_.postId) ? 1 : 0; }

  void date(const LineElement &element) noexcept;
  void groups(const LineElement &element) noexcept;
  void newsgroups(const LineElement &element) noexcept;
  void link(const LineElement &element) noexcept;
  void tag_table(const LineElement &element) noexcept;
  void tracks(const LineElement &element) noexcept;
  void forum(const LineElement &element) noexcept;

  TextWriter &out_;
  LineWriter lines_;
  const ZoxEvent &event_;
  const ElementSettings &settings_;
  DisplayLookups &lookups_;
  const OwnedString address_;
};

/** The lines between the opening and the closing one, in their order. */
constexpr std::array<Line, 36> EventPrinter::table{{
    {{"PostID"}, Number{&ZoxEvent::postId}},
    {{"Datum"}, Special{&EventPrinter::date}},
    {{"Stamp"}, Computed{&EventPrinter::stamp}},
    {{"Status"}, Number{&ZoxEvent::status}},
    {{"FName"}, OptionalText{&ZoxEvent::fName}},
    {{"Title"}, Text{&ZoxEvent::title}},
    {{"Groups"}, Special{&EventPrinter::groups}},
    {{"NumNewsgroups"}, Computed{&EventPrinter::newsgroup_count}},
    {{"Newsgroups"}, Special{&EventPrinter::newsgroups}},
    {{"Poster"}, Text{&ZoxEvent::poster}},
    {{"Link"}, Special{&EventPrinter::link}},
    {{"Rating"}, Computed{&EventPrinter::rating}},
    {{"Cat"}, Number{&ZoxEvent::cat}},
    {{"SCat"}, Number{&ZoxEvent::sCat}},
    {{"TagInfo"}, Special{&EventPrinter::tag_table}},
    {{"Tag"}, Text{&ZoxEvent::tag}},
    {{"Updated"}, Computed{&EventPrinter::updated}},
    {{"Pos"}, Computed{&EventPrinter::position}},
    {{"Ann"}, ConvertedText{&ZoxEvent::ann}},
    {{"Des"}, ConvertedText{&ZoxEvent::des}},
    {{"Sig"}, ConvertedText{&ZoxEvent::sig}},
    {{"FType"}, Number{&ZoxEvent::fType}},
    {{"Files"}, Number{&ZoxEvent::files}},
    {{"FStart"}, Number{&ZoxEvent::fStart}},
    {{"AantalParFiles"}, Number{&ZoxEvent::pars}},
    {{"Kudos"}, Number{&ZoxEvent::kudos}},
    {{"ParType"}, Number{&ZoxEvent::parType}},
    {{"ParBlockSize"}, Number{&ZoxEvent::blockSize}},
    {{"NumViews"}, Number{&ZoxEvent::view}},
    {{"Img"}, OptionalText{&ZoxEvent::img}},
    {{"MP3"}, Special{&EventPrinter::tracks}},
    {{""}, Special{&EventPrinter::forum}},
    {{"Locked"}, Number{&ZoxEvent::locked}},
    {{"Reason", 3}, OptionalText{&ZoxEvent::reason}},
    {{"UpdatedInWatchlist", 3}, Number{&ZoxEvent::watchlistUpdated}},
    {{"Watchlist"}, Computed{&EventPrinter::watched}},
}};

void EventPrinter::print() noexcept {
  lines_.plain_line("\t<Event>\n");
  for (const Line &line : table)
    std::visit([&](const auto &content) { print(line.element, content); }, line.content);
  lines_.plain_line("\t</Event>\n");
}

void EventPrinter::print(const LineElement &element, ConvertedText content) noexcept {
  const ZoxString *text = event_.*content.member;
  if (text == nullptr)
    return;
  if (settings_.textFunc == nullptr)
    return lines_.text_line(element, text);
  const OwnedString converted(settings_.textFunc(event_.*content.member));
  ZOX_ASSERT_IN(zox_events_sort_print, converted, "tmp");
  lines_.text_line(element, converted.get());
}

void EventPrinter::date(const LineElement &element) noexcept {
  const OwnedText text(zox_string_date(event_.stamp));
  if (text)
    lines_.word_line(element, text.get());
}

void EventPrinter::groups(const LineElement &element) noexcept {
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups))
    ZOX_ASSERT_IN(zox_events_sort_print, groupId, "groupId");
  const OwnedString tmp(zox_splitted_list_concat(event_.groups));
  ZOX_ASSERT_IN(zox_events_sort_print, tmp, "tmp");
  lines_.text_line(element, tmp.get());
}

void EventPrinter::newsgroups(const LineElement &element) noexcept {
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups)) {
    const auto id = static_cast<guint32>(leading_integer(groupId->str));
    const ShownNewsgroup &newsgroup = lookups_.newsgroup(id);
    if (newsgroup.name)
      lines_.cdata_line(element, [&] { out_.add(*newsgroup.name); });
    else if (!newsgroup.known)
      g_warning("zox_events_sort_print(): nieuwsgroep behorende bij groupId %s onbekend "
                "(eventid = %i)!\n",
                groupId->str, event_.postId);
  }
}

void EventPrinter::link(const LineElement &element) noexcept {
  lines_.text_line(element, address_.get());
}

void EventPrinter::tag_table(const LineElement &element) noexcept {
  lines_.cdata_line(element, [&] { add_tag_table(out_, event_, address_->str, lookups_); });
}

void EventPrinter::tracks(const LineElement &) noexcept {
  if (event_.mp3Tracks == nullptr)
    return;
  lines_.plain_line("\t\t<MP3>\n");
  for (const ZoxString *track : Items<ZoxString>(event_.mp3Tracks)) {
    ZOX_ASSERT_IN(zox_events_sort_print, track, "track");
    lines_.text_line({"Track", 3}, track);
  }
  lines_.plain_line("\t\t</MP3>\n");
}

/** The forum prints itself, at its own depth and with lines of its own length. */
void EventPrinter::forum(const LineElement &) noexcept {
  if (event_.forum == nullptr)
    return;
  const OwnedString text(zox_events_forum_print(&event_, settings_.textFunc));
  if (text)
    out_.add(view_of(text.get()));
}

}  // namespace

void add_event(TextWriter &out, const ZoxEvent &event, const ElementSettings &settings,
               DisplayLookups &lookups) noexcept {
  EventPrinter(out, event, settings, lookups).print();
}

}  // namespace velkor

using namespace velkor;

extern "C" {

ZoxString *zox_events_sort_print(const ZoxEvent *posting, gint32 indent, gint32 position,
                                 ZoxTextFunc textFunc) {
  ZOX_ASSERT_AS(posting != nullptr, "event");
  ZOX_ASSERT(core);
  ZOX_ASSERT(core->config);
  TextWriter out;
  DisplayLookups lookups;
  add_event(out, *posting, {indent != 0, position, textFunc}, lookups);
  return out.release();
}

}  // extern "C"
