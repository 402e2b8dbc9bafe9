/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/filter_options.h"

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
    replace_string(place, g_string_new(text->c_str()));
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

void set_category(ZoxFilter &filter, const Arguments &arguments) {
  if (const auto category = arguments.value("--category")) {
    filter.cat = category_number(*category);
    filter.sCat = -1;
  }
  const auto sub_category = arguments.value("--sub-category");
  if (sub_category && filter.cat < 0)
    throw usage_error("--sub-category needs --category");
  if (sub_category)
    filter.sCat = sub_category_number(filter.cat, *sub_category);
}

void set_tags(ZoxFilter &filter, const Arguments &arguments) {
  const std::vector<std::string> given = arguments.values("--tag");
  if (given.empty())
    return;
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

struct SavedFilter {
  std::size_t number;
  const ZoxFilter *filter;
};

std::vector<SavedFilter> saved_filters_matching(const std::string &name,
                                                const std::optional<std::string> &category) {
  std::vector<SavedFilter> found;
  std::size_t number = 0;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters)) {
    ++number;
    const bool in_category = !category || filter->cat == category_number(*category);
    const bool named = same_name(name, zox_string_value(filter->name));
    if (in_category && (named || name == "#" + std::to_string(number)))
      found.push_back({number, filter});
  }
  return found;
}

}  // namespace

std::vector<Option> filter_options() {
  return {
      {"-f,--filter", "NAME", "Start from a saved filter, by its name or its number (#3)"},
      {"-t,--title", "TEXT", "Postings whose title contains TEXT"},
      {"-p,--poster", "TEXT", "Postings whose poster has TEXT in the name"},
      {"-c,--category", "NAME", "Postings in this main category, by name or number"},
      {"-s,--sub-category", "NAME",
       "Postings in this sub-category of the category, by name or number"},
      {"-g,--tag", "NAME",
       "Postings with this tag, by name or code; when repeated, one tag of each group", true},
      {"--free-tag", "WORD", "Postings with WORD in the poster's own tag text"},
      {"-n,--newsgroup", "NAME",
       "Postings in this newsgroup, by name or number; may be repeated for alternatives", true},
      {"--status", "WORD",
       "Postings in this state, by name or number; may be repeated for alternatives", true},
      {"--new", "", "Postings since the update before the last one"},
      {"--since", "TIME", "Postings since TIME: 2026-01-31, today, 12h, 3d, 2w"},
      {"--from", "TIME", "Postings from TIME on; combine with --to for a range"},
      {"--to", "TIME", "Postings up to TIME; a date includes the whole day"},
  };
}

OwnedFilter saved_filter(const std::string &name, const std::optional<std::string> &category) {
  const std::vector<SavedFilter> found = saved_filters_matching(name, category);
  if (found.empty())
    throw usage_error("no saved filter is called \"" + name + "\"; see velkorctl filters");
  if (found.size() == 1)
    return OwnedFilter(zox_filter_duplicate(found.front().filter));
  std::vector<std::string> numbers;
  numbers.reserve(found.size());
  for (const SavedFilter &one : found)
    numbers.push_back("#" + std::to_string(one.number) + " (" +
                      zox_string_category(one.filter->cat) + ")");
  throw usage_error("several saved filters are called \"" + name + "\": " + joined(numbers));
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
