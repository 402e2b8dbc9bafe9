/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_events_sort.h>

#include <algorithm>
#include <array>
#include <limits>
#include <variant>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_string.h>

#include "display/line_pattern.h"
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
  void (EventPrinter::*print)(const LinePattern &);
};

struct Line {
  LinePattern pattern;
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
      : out_(out), event_(event), settings_(settings), lookups_(lookups) {
    find_address();
  }

  void print() noexcept;

private:
  static const std::array<Line, 36> table;

  void print(const LinePattern &pattern, Number content) noexcept {
    number_line(pattern, event_.*content.member);
  }
  void print(const LinePattern &pattern, Computed content) noexcept {
    number_line(pattern, (this->*content.value)());
  }
  void print(const LinePattern &pattern, Text content) noexcept {
    text_line(pattern, printed(event_.*content.member));
  }
  void print(const LinePattern &pattern, OptionalText content) noexcept {
    if (event_.*content.member != nullptr)
      text_line(pattern, printed(event_.*content.member));
  }
  void print(const LinePattern &pattern, ConvertedText content) noexcept;
  void print(const LinePattern &pattern, Special content) noexcept {
    (this->*content.print)(pattern);
  }

  /** A text as "%s" prints it. */
  static std::string_view printed(const ZoxString *text) noexcept {
    return text == nullptr ? "(null)" : text->str;
  }

  void plain_line(std::string_view text) noexcept {
    out_.add_all(std::string_view("\t").substr(settings_.indent ? 0 : 1), text);
  }
  void number_line(const LinePattern &pattern, gint64 number) noexcept {
    out_.put(2 * LinePattern::room + TextWriter::max_digits, [&](char *place) {
      place = pattern.open(place, settings_.indent);
      return pattern.close(TextWriter::put_number(place, number));
    });
  }
  void text_line(const LinePattern &pattern, std::string_view text) noexcept {
    const std::size_t start = line_start();
    out_.put(2 * LinePattern::room + text.size(), [&](char *place) {
      place = pattern.open(place, settings_.indent);
      return pattern.close(place + text.copy(place, text.size()));
    });
    out_.cut(start, line_limit);
  }
  /** A line with what `write` writes. */
  template <typename Write>
  void written_line(const LinePattern &pattern, Write &&write) noexcept {
    const std::size_t start = line_start();
    out_.put(LinePattern::room, [&](char *place) { return pattern.open(place, settings_.indent); });
    write();
    out_.put(LinePattern::room, [&](char *place) { return pattern.close(place); });
    out_.cut(start, line_limit);
  }
  /** Where the next line starts; the tab of an indented one does not count. */
  [[nodiscard]] std::size_t line_start() const noexcept {
    return out_.size() + (settings_.indent ? 1 : 0);
  }

  void find_address() noexcept;

  [[nodiscard]] gint64 stamp() const noexcept { return event_.stamp; }
  [[nodiscard]] gint64 updated() const noexcept { return static_cast<gint32>(event_.updated); }
  [[nodiscard]] gint64 newsgroup_count() const noexcept { return g_slist_length(event_.groups); }
  [[nodiscard]] gint64 rating() const noexcept {
    return scaled_rating(event_.rating, core->config->ratingScale);
  }
  [[nodiscard]] gint64 position() const noexcept { return settings_.position; }
  [[nodiscard]] gint64 watched() const noexcept { return lookups_.watched(event_.postId) ? 1 : 0; }

  void date(const LinePattern &pattern) noexcept;
  void groups(const LinePattern &pattern) noexcept;
  void add_stored_groups() noexcept;
  void newsgroups(const LinePattern &pattern) noexcept;
  void link(const LinePattern &pattern) noexcept;
  void tag_table(const LinePattern &pattern) noexcept;
  void tracks(const LinePattern &pattern) noexcept;
  void forum(const LinePattern &pattern) noexcept;

  TextWriter &out_;
  const ZoxEvent &event_;
  const ElementSettings &settings_;
  DisplayLookups &lookups_;
  std::string_view address_;
  OwnedString added_address_;
};

/** The lines between the opening and the closing one, in their order. */
constexpr std::array<Line, 36> EventPrinter::table{{
    {LinePattern::plain("PostID"), Number{&ZoxEvent::postId}},
    {LinePattern::plain("Datum"), Special{&EventPrinter::date}},
    {LinePattern::plain("Stamp"), Computed{&EventPrinter::stamp}},
    {LinePattern::plain("Status"), Number{&ZoxEvent::status}},
    {LinePattern::cdata("FName"), OptionalText{&ZoxEvent::fName}},
    {LinePattern::cdata("Title"), Text{&ZoxEvent::title}},
    {LinePattern::cdata("Groups"), Special{&EventPrinter::groups}},
    {LinePattern::plain("NumNewsgroups"), Computed{&EventPrinter::newsgroup_count}},
    {LinePattern::cdata("Newsgroups"), Special{&EventPrinter::newsgroups}},
    {LinePattern::cdata("Poster"), Text{&ZoxEvent::poster}},
    {LinePattern::cdata("Link"), Special{&EventPrinter::link}},
    {LinePattern::plain("Rating"), Computed{&EventPrinter::rating}},
    {LinePattern::plain("Cat"), Number{&ZoxEvent::cat}},
    {LinePattern::plain("SCat"), Number{&ZoxEvent::sCat}},
    {LinePattern::cdata("TagInfo"), Special{&EventPrinter::tag_table}},
    {LinePattern::cdata("Tag"), Text{&ZoxEvent::tag}},
    {LinePattern::plain("Updated"), Computed{&EventPrinter::updated}},
    {LinePattern::plain("Pos"), Computed{&EventPrinter::position}},
    {LinePattern::cdata("Ann"), ConvertedText{&ZoxEvent::ann}},
    {LinePattern::cdata("Des"), ConvertedText{&ZoxEvent::des}},
    {LinePattern::cdata("Sig"), ConvertedText{&ZoxEvent::sig}},
    {LinePattern::plain("FType"), Number{&ZoxEvent::fType}},
    {LinePattern::plain("Files"), Number{&ZoxEvent::files}},
    {LinePattern::plain("FStart"), Number{&ZoxEvent::fStart}},
    {LinePattern::plain("AantalParFiles"), Number{&ZoxEvent::pars}},
    {LinePattern::plain("Kudos"), Number{&ZoxEvent::kudos}},
    {LinePattern::plain("ParType"), Number{&ZoxEvent::parType}},
    {LinePattern::plain("ParBlockSize"), Number{&ZoxEvent::blockSize}},
    {LinePattern::plain("NumViews"), Number{&ZoxEvent::view}},
    {LinePattern::cdata("Img"), OptionalText{&ZoxEvent::img}},
    {LinePattern::cdata("Track", 3), Special{&EventPrinter::tracks}},
    {LinePattern::plain(""), Special{&EventPrinter::forum}},
    {LinePattern::plain("Locked"), Number{&ZoxEvent::locked}},
    {LinePattern::cdata("Reason", 3), OptionalText{&ZoxEvent::reason}},
    {LinePattern::plain("UpdatedInWatchlist", 3), Number{&ZoxEvent::watchlistUpdated}},
    {LinePattern::plain("Watchlist"), Computed{&EventPrinter::watched}},
}};

void EventPrinter::print() noexcept {
  plain_line("\t<Event>\n");
  for (const Line &line : table)
    std::visit([&](const auto &content) { print(line.pattern, content); }, line.content);
  plain_line("\t</Event>\n");
}

/** The link as zox_string_add_http() gives it; most need no prefix and so no copy. */
void EventPrinter::find_address() noexcept {
  if (event_.link == nullptr || event_.link->len == 0)
    return;
  address_ = event_.link->str;
  if (address_.starts_with("http://"))
    return;
  added_address_.reset(zox_string_add_http(event_.link));
  ZOX_ASSERT_IN(zox_events_sort_print, added_address_, "url");
  address_ = added_address_->str;
}

void EventPrinter::print(const LinePattern &pattern, ConvertedText content) noexcept {
  const ZoxString *text = event_.*content.member;
  if (text == nullptr)
    return;
  if (settings_.textFunc == nullptr)
    return text_line(pattern, text->str);
  const OwnedString converted(settings_.textFunc(event_.*content.member));
  ZOX_ASSERT_IN(zox_events_sort_print, converted, "tmp");
  text_line(pattern, converted->str);
}

void EventPrinter::date(const LinePattern &pattern) noexcept {
  const std::string_view date = lookups_.date(event_.stamp);
  if (!date.empty())
    text_line(pattern, date);
}

void EventPrinter::groups(const LinePattern &pattern) noexcept {
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups))
    ZOX_ASSERT_IN(zox_events_sort_print, groupId, "groupId");
  written_line(pattern, [this] { add_stored_groups(); });
}

/** The stored form as zox_splitted_list_concat() gives it, up to a zero byte. */
void EventPrinter::add_stored_groups() noexcept {
  const std::size_t start = out_.size();
  out_.add("|");
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups)) {
    const std::string_view id = groupId->str;
    out_.add_all(std::string_view("|").substr(groupId == event_.groups->data ? 1 : 0), id);
    if (id.size() != groupId->len)
      return;
  }
  if (out_.size() - start >= 2)
    out_.add("|");
}

void EventPrinter::newsgroups(const LinePattern &pattern) noexcept {
  for (const ZoxString *groupId : Items<ZoxString>(event_.groups)) {
    const auto id = static_cast<guint32>(leading_integer(groupId->str));
    const ShownNewsgroup &newsgroup = lookups_.newsgroup(id);
    if (newsgroup.name)
      text_line(pattern, *newsgroup.name);
    else if (!newsgroup.known)
      g_warning("zox_events_sort_print(): nieuwsgroep behorende bij groupId %s onbekend "
                "(eventid = %i)!\n",
                groupId->str, event_.postId);
  }
}

void EventPrinter::link(const LinePattern &pattern) noexcept {
  text_line(pattern, address_);
}

void EventPrinter::tag_table(const LinePattern &pattern) noexcept {
  written_line(pattern, [&] { add_tag_table(out_, event_, address_, lookups_); });
}

void EventPrinter::tracks(const LinePattern &pattern) noexcept {
  if (event_.mp3Tracks == nullptr)
    return;
  plain_line("\t\t<MP3>\n");
  for (const ZoxString *track : Items<ZoxString>(event_.mp3Tracks)) {
    ZOX_ASSERT_IN(zox_events_sort_print, track, "track");
    text_line(pattern, track->str);
  }
  plain_line("\t\t</MP3>\n");
}

/** The forum prints itself, at its own depth and with lines of its own length. */
void EventPrinter::forum(const LinePattern &) noexcept {
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
