/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/filter_options.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_config.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "velkorctl/failure.h"
#include "velkorctl/moment.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

void set_text(GString *&place, const std::optional<std::string> &text) noexcept {
  if (text)
    replace_string(place, text->empty() ? nullptr : g_string_new(text->c_str()));
}

std::int64_t moment_of(const std::string &option, const std::string &text, std::int64_t now,
                       DayEdge edge) {
  const auto moment = parse_moment(text, now, edge);
  if (!moment)
    throw usage_error(
        option + ": \"" + text +
        R"(" is not a time; use 2026-01-31, "2026-01-31 18:30", today, 12h, 3d or 2w)");
  return *moment;
}

void change_category(ZoxFilter &filter, gint32 category) noexcept {
  if (filter.cat == category)
    return;
  filter.cat = category;
  filter.sCat = -1;
  zox_splitted_list_free(&filter.tags);
}

void set_category(ZoxFilter &filter, const Arguments &arguments) {
  if (const auto category = arguments.value("--category"))
    change_category(filter, category_number(*category));
  const auto sub_category = arguments.value("--sub-category");
  if (sub_category && filter.cat < 0)
    throw usage_error("--sub-category needs --category");
  if (sub_category)
    filter.sCat = sub_category->empty() ? -1 : sub_category_number(filter.cat, *sub_category);
}

void set_tags(ZoxFilter &filter, const Arguments &arguments) {
  std::vector<std::string> given = arguments.values("--tag");
  if (given.empty())
    return;
  std::erase(given, "");
  TextList tags;
  for (const std::string &text : given) {
    const TagChoice choice = tag_choice(filter.cat, text);
    filter.cat = choice.category;
    tags.append(g_string_new(choice.code.c_str()));
  }
  zox_splitted_list_free(&filter.tags);
  filter.tags = tags.release();
}

void set_newsgroups(ZoxFilter &filter, const Arguments &arguments) {
  TextList groups;
  for (const std::string &text : arguments.values("--newsgroup"))
    groups.append(g_string_new(std::to_string(newsgroup_id(text)).c_str()));
  filter.groupIdList = groups.release();
}

void set_states(ZoxFilter &filter, const Arguments &arguments) {
  for (const std::string &text : arguments.values("--status"))
    for (const gint32 state : state_numbers(text))
      filter.statusList = g_slist_append(filter.statusList, GINT_TO_POINTER(state));
}

void set_times(ZoxFilter &filter, const Arguments &arguments, std::int64_t now) {
  const auto since = arguments.value("--since");
  const auto from = arguments.value("--from");
  const auto to = arguments.value("--to");
  if ((since || arguments.has("--new")) && (from || to))
    throw usage_error("--since and --new cannot be combined with --from and --to");
  if (since && arguments.has("--new"))
    throw usage_error("--since and --new cannot be combined");
  if (arguments.has("--new"))
    filter.sinceStamp = core->config->prevCheck;
  if (since)
    filter.sinceStamp = moment_of("--since", *since, now, DayEdge::first_second);
  if (!from && !to)
    return;
  filter.useDateRange = 1;
  filter.dateFrom = from ? moment_of("--from", *from, now, DayEdge::first_second) : 0;
  filter.dateTo = to ? moment_of("--to", *to, now, DayEdge::last_second) : G_MAXINT64;
  if (filter.dateFrom > filter.dateTo)
    throw usage_error("--from is later than --to");
}

/** A saved filter with its place, counted from 0. */
struct SavedFilter {
  std::size_t place;
  const ZoxFilter *filter;
};

std::string number_of(const SavedFilter &saved) {
  return "#" + std::to_string(saved.place + 1);
}

std::vector<SavedFilter> saved_filters_matching(const std::string &name,
                                                const std::optional<std::string> &category) {
  std::vector<SavedFilter> found;
  SavedFilter saved{0, nullptr};
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters)) {
    saved.filter = filter;
    const bool in_category = !category || filter->cat == category_number(*category);
    if (in_category &&
        (same_name(name, zox_string_value(filter->name)) || name == number_of(saved)))
      found.push_back(saved);
    ++saved.place;
  }
  return found;
}

}  // namespace

std::vector<Option> saved_filter_options() {
  return {
      {"-c,--category", "NAME", "Postings in this main category, by name or number"},
      {"-s,--sub-category", "NAME",
       "Postings in this sub-category of the category, by name or number"},
      {"-g,--tag", "NAME",
       "Postings with this tag, by name or code; when repeated, one tag of each group", true},
      {"--free-tag", "WORD", "Postings with WORD in the poster's own tag text"},
  };
}

void set_saved_conditions(ZoxFilter &filter, const Arguments &arguments) {
  set_category(filter, arguments);
  set_tags(filter, arguments);
  set_text(filter.extraTag, arguments.value("--free-tag"));
}

std::vector<Option> filter_options() {
  std::vector<Option> options{
      {"-f,--filter", "NAME", "Start from a saved filter, by its name or its number (#3)"},
      {"-t,--title", "TEXT", "Postings whose title contains TEXT"},
      {"-p,--poster", "TEXT", "Postings whose poster has TEXT in the name"},
  };
  std::ranges::move(saved_filter_options(), std::back_inserter(options));
  const std::vector<Option> rest{
      {"-n,--newsgroup", "NAME",
       "Postings in this newsgroup, by name or number; may be repeated for alternatives", true},
      {"--status", "WORD",
       "Postings in this state, by name or number; may be repeated for alternatives", true},
      {"--new", "", "Postings since the update before the last one"},
      {"--since", "TIME", "Postings since TIME: 2026-01-31, today, 12h, 3d, 2w"},
      {"--from", "TIME", "Postings from TIME on; combine with --to for a range"},
      {"--to", "TIME", "Postings up to TIME; a date includes the whole day"},
  };
  std::ranges::copy(rest, std::back_inserter(options));
  return options;
}

std::size_t saved_filter_place(const std::string &name, const std::optional<std::string> &category,
                               Exit unless_found) {
  const std::vector<SavedFilter> found = saved_filters_matching(name, category);
  if (found.empty())
    throw Failure(unless_found,
                  "no saved filter is called \"" + name + "\"; see velkorctl filters");
  if (found.size() == 1)
    return found.front().place;
  std::vector<std::string> numbers;
  numbers.reserve(found.size());
  for (const SavedFilter &one : found)
    numbers.push_back(number_of(one) + " (" + zox_string_category(one.filter->cat) + ")");
  throw usage_error("several saved filters are called \"" + name + "\": " + joined(numbers));
}

OwnedFilter saved_filter(const std::string &name, const std::optional<std::string> &category) {
  const auto place = static_cast<guint>(saved_filter_place(name, category, Exit::usage));
  return OwnedFilter(zox_filter_duplicate(
      static_cast<const ZoxFilter *>(g_slist_nth_data(core->filterlist->filters, place))));
}

OwnedFilter filter_of(const Arguments &arguments, std::int64_t now) {
  const auto saved = arguments.value("--filter");
  OwnedFilter filter = saved ? saved_filter(*saved, arguments.value("--category"))
                             : OwnedFilter(zox_filter_new_filter());
  set_text(filter->titleSearch, arguments.value("--title"));
  set_text(filter->posterSearch, arguments.value("--poster"));
  set_text(filter->extraTag, arguments.value("--free-tag"));
  if (!saved)
    set_category(*filter, arguments);
  else if (arguments.has("--sub-category"))
    throw usage_error("--sub-category cannot be combined with --filter");
  set_tags(*filter, arguments);
  set_newsgroups(*filter, arguments);
  set_states(*filter, arguments);
  set_times(*filter, arguments, now);
  return filter;
}

}  // namespace velkor::ctl
