/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_sort.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <variant>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "filter/display_parts.h"
#include "support/assertion.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor {
namespace {

/** What fits into a line: anything longer is cut there. */
constexpr std::size_t line_limit = 65534;

class EventPrinter;
struct Line;

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
  void (EventPrinter::*print)(const Line &);
};

struct Line {
  std::string_view element;
  std::variant<Number, Computed, Text, OptionalText, ConvertedText, Special> content;
  std::size_t tabs = 2;
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

/** Writes the lines of one posting. */
class EventPrinter {
public:
  EventPrinter(TextWriter &out, const ZoxEvent &event, const ElementSettings &settings,
               DisplayLookups &lookups) noexcept
      : out_(out), event_(event), settings_(settings), lookups_(lookups),
        address_(zox_string_add_http(event.link)) {
    ZOX_ASSERT_AS(address_, "url");
  }

  void print() noexcept;

private:
  static const std::array<Line, 36> lines;

  /** A line of its own; `content` writes it. */
  template <typename Content>
  void line(Content &&content) noexcept {
    if (settings_.indent)
      out_.add("\t");
    const std::size_t start = out_.size();
    content();
    out_.cut(start, line_limit);
  }

  void plain_line(std::string_view text) noexcept {
    line([&] { out_.add(text); });
  }

  void number_line(const Line &place, gint64 number) noexcept {
    line([&] {
      open(place);
      out_.add(">");
      out_.add_number(number);
      out_.add("</");
      close(place);
    });
  }

  /** A line whose content, written by `content`, stands in a CDATA section. */
  template <typename Content>
  void cdata_line(const Line &place, Content &&content) noexcept {
    line([&] {
      open(place);
      out_.add("><![CDATA[");
      content();
      out_.add("]]></");
      close(place);
    });
  }

  void text_line(const Line &place, const ZoxString *text) noexcept {
    cdata_line(place, [&] { out_.add_text(text); });
  }

  void open(const Line &place) noexcept {
    out_.add(std::string_view("\t\t\t").substr(0, place.tabs));
    out_.add("<");
    out_.add(place.element);
  }

  void close(const Line &place) noexcept {
    out_.add(place.element);
    out_.add(">\n");
  }

  void print(const Line &place, Number content) noexcept {
    number_line(place, event_.*content.member);
  }
  void print(const Line &place, Computed content) noexcept {
    number_line(place, (this->*content.value)());
  }
  void print(const Line &place, Text content) noexcept { text_line(place, event_.*content.member); }
  void print(const Line &place, OptionalText content) noexcept {
    if (event_.*content.member != nullptr)
      text_line(place, event_.*content.member);
  }
  void print(const Line &place, ConvertedText content) noexcept;
  void print(const Line &place, Special content) noexcept { (this->*content.print)(place); }

  gint64 stamp() const noexcept { return event_.stamp; }
  gint64 updated() const noexcept { return static_cast<gint32>(event_.updated); }
  gint64 newsgroup_count() const noexcept { return g_slist_length(event_.groups); }
  gint64 rating() const noexcept { return scaled_rating(event_.rating, core->config->ratingScale); }
  gint64 position() const noexcept { return settings_.position; }
  gint64 watched() const noexcept { return lookups_.watched(event_.postId) ? 1 : 0; }

  void date(const Line &place) noexcept;
  void groups(const Line &place) noexcept;
  void newsgroups(const Line &place) noexcept;
  void link(const Line &place) noexcept;
  void tag_table(const Line &place) noexcept;
  void tracks(const Line &place) noexcept;
  void forum(const Line &place) noexcept;

  TextWriter &out_;
  const ZoxEvent &event_;
  const ElementSettings &settings_;
  DisplayLookups &lookups_;
  const OwnedString address_;
};

/** The lines between the opening and the closing one, in their order. */
constexpr std::array<Line, 36> EventPrinter::lines{{
    {"PostID", Number{&ZoxEvent::postId}},
    {"Datum", Special{&EventPrinter::date}},
    {"Stamp", Computed{&EventPrinter::stamp}},
    {"Status", Number{&ZoxEvent::status}},
    {"FName", OptionalText{&ZoxEvent::fName}},
    {"Title", Text{&ZoxEvent::title}},
    {"Groups", Special{&EventPrinter::groups}},
    {"NumNewsgroups", Computed{&EventPrinter::newsgroup_count}},
    {"Newsgroups", Special{&EventPrinter::newsgroups}},
    {"Poster", Text{&ZoxEvent::poster}},
    {"Link", Special{&EventPrinter::link}},
    {"Rating", Computed{&EventPrinter::rating}},
    {"Cat", Number{&ZoxEvent::cat}},
    {"SCat", Number{&ZoxEvent::sCat}},
    {"TagInfo", Special{&EventPrinter::tag_table}},
    {"Tag", Text{&ZoxEvent::tag}},
    {"Updated", Computed{&EventPrinter::updated}},
    {"Pos", Computed{&EventPrinter::position}},
    {"Ann", ConvertedText{&ZoxEvent::ann}},
    {"Des", ConvertedText{&ZoxEvent::des}},
    {"Sig", ConvertedText{&ZoxEvent::sig}},
    {"FType", Number{&ZoxEvent::fType}},
    {"Files", Number{&ZoxEvent::files}},
    {"FStart", Number{&ZoxEvent::fStart}},
    {"AantalParFiles", Number{&ZoxEvent::pars}},
    {"Kudos", Number{&ZoxEvent::kudos}},
    {"ParType", Number{&ZoxEvent::parType}},
    {"ParBlockSize", Number{&ZoxEvent::blockSize}},
    {"NumViews", Number{&ZoxEvent::view}},
    {"Img", OptionalText{&ZoxEvent::img}},
    {"MP3", Special{&EventPrinter::tracks}},
    {"", Special{&EventPrinter::forum}},
    {"Locked", Number{&ZoxEvent::locked}},
    {"Reason", OptionalText{&ZoxEvent::reason}, 3},
    {"UpdatedInWatchlist", Number{&ZoxEvent::watchlistUpdated}, 3},
    {"Watchlist", Computed{&EventPrinter::watched}},
}};

void EventPrinter::print() noexcept {
  plain_line("\t<Event>\n");
  for (const Line &place : lines)
    std::visit([&](const auto &content) { print(place, content); }, place.content);
  plain_line("\t</Event>\n");
}

void EventPrinter::print(const Line &place, ConvertedText content) noexcept {
  const ZoxString *text = event_.*content.member;
  if (text == nullptr)
    return;
  if (settings_.textFunc == nullptr)
    return text_line(place, text);
  const OwnedString converted(settings_.textFunc(event_.*content.member));
  ZOX_ASSERT_AS(converted, "tmp");
  text_line(place, converted.get());
}

void EventPrinter::date(const Line &place) noexcept {
  const OwnedText text(zox_string_date(event_.stamp));
  if (!text)
    return;
  line([&] {
    open(place);
    out_.add(">");
    out_.add(text.get());
    out_.add("</");
    close(place);
  });
}

void EventPrinter::groups(const Line &place) noexcept {
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups))
    ZOX_ASSERT(groupId);
  const OwnedString tmp(zox_splitted_list_concat(event_.groups));
  ZOX_ASSERT(tmp);
  text_line(place, tmp.get());
}

void EventPrinter::newsgroups(const Line &place) noexcept {
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups)) {
    const auto id = static_cast<guint32>(leading_integer(groupId->str));
    const std::string *name = lookups_.newsgroup(id);
    if (name != nullptr)
      cdata_line(place, [&] { out_.add(*name); });
    else
      g_warning("zox_events_sort_print(): nieuwsgroep behorende bij groupId %s onbekend "
                "(eventid = %i)!\n",
                groupId->str, event_.postId);
  }
}

void EventPrinter::link(const Line &place) noexcept {
  text_line(place, address_.get());
}

void EventPrinter::tag_table(const Line &place) noexcept {
  cdata_line(place, [&] { add_tag_table(out_, event_, address_->str, lookups_); });
}

void EventPrinter::tracks(const Line &) noexcept {
  if (event_.mp3Tracks == nullptr)
    return;
  plain_line("\t\t<MP3>\n");
  for (const ZoxString *track : Items<ZoxString>(event_.mp3Tracks)) {
    ZOX_ASSERT(track);
    text_line({"Track", Special{}, 3}, track);
  }
  plain_line("\t\t</MP3>\n");
}

/** The forum prints itself, at its own depth and with lines of its own length. */
void EventPrinter::forum(const Line &) noexcept {
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
