/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/postings.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <tuple>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>
#include <velkor/zox_watchlist.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/moment.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

enum SortMode : gint32 { by_stamp = 0, by_title = 1, by_poster = 2, by_rating = 3 };

/** A posting with what it is sorted by; equal ones are sorted by ID. */
struct Selected {
  gint64 number;
  std::string text;
  gint32 id;

  bool operator<(const Selected &other) const noexcept {
    return std::tie(number, text, id) < std::tie(other.number, other.text, other.id);
  }
};

std::string collation_key(const GString *text) {
  if (text == nullptr)
    return {};
  const OwnedText folded(g_utf8_casefold(text->str, -1));
  return OwnedText(g_utf8_collate_key(folded.get(), -1)).get();
}

Selected sort_key(const ZoxEvent &posting, gint32 mode) {
  switch (mode) {
  case by_title:
    return {0, collation_key(posting.title), posting.postId};
  case by_poster:
    return {0, collation_key(posting.poster), posting.postId};
  case by_rating:
    return {posting.rating, {}, posting.postId};
  default:
    return {posting.stamp, {}, posting.postId};
  }
}

struct Collection {
  gint32 mode;
  std::vector<Selected> postings;
};

void collect(const ZoxEvent *posting, gpointer collection) noexcept {
  auto &into = *static_cast<Collection *>(collection);
  into.postings.push_back(sort_key(*posting, into.mode));
}

std::string sub_category_name(const ZoxEvent &posting) {
  return zox_category_get_scat_name(posting.cat, static_cast<guint32>(posting.sCat));
}

bool is_new(const ZoxEvent &posting) noexcept {
  return posting.stamp >= core->config->prevCheck;
}

void add_tags(Json &json, const ZoxEvent &posting) {
  json.begin_array("tags");
  for (const GString *code : Items<GString>(posting.tags)) {
    const ZoxTag *tag = zox_tag_find(code, posting.cat);
    json.begin_object().member("code", code);
    json.member("group", tag == nullptr ? nullptr : tag->group->name);
    json.member("name", tag == nullptr ? nullptr : tag->name).end_object();
  }
  json.end_array();
}

void add_newsgroups(Json &json, const ZoxEvent &posting) {
  json.begin_array("newsgroups");
  for (const GString *id : Items<GString>(posting.groups)) {
    const auto number = static_cast<guint32>(std::strtoul(id->str, nullptr, 10));
    json.begin_object().member("id", number).member("name", newsgroup_name(number)).end_object();
  }
  json.end_array();
}

}  // namespace

std::vector<gint32> select_postings(const ZoxFilter &filter) {
  zox_eventlist_apply_filter(core->eventlist, &filter);
  Collection collection{filter.sortMode, {}};
  zox_eventlist_visit(core->eventlist, 1, collect, &collection);
  std::ranges::sort(collection.postings, std::less<>());
  if (filter.sortAscending == 0)
    std::ranges::reverse(collection.postings);
  std::vector<gint32> ids;
  ids.reserve(collection.postings.size());
  for (const Selected &one : collection.postings)
    ids.push_back(one.id);
  return ids;
}

OwnedEvent find_posting(gint32 id) noexcept {
  return OwnedEvent(zox_eventlist_lookup_id(core->eventlist, id));
}

OwnedEvent cached_posting(gint32 id) {
  OwnedEvent posting = find_posting(id);
  if (!posting)
    throw Failure(Exit::not_found, "posting " + std::to_string(id) + " is not in the cache");
  return posting;
}

std::string status_name(const ZoxEvent &posting) {
  const std::string name = zox_string_status(posting.status);
  return name.empty() ? std::to_string(posting.status) : name;
}

std::string category_name(const ZoxEvent &posting) {
  const std::string sub = sub_category_name(posting);
  return zox_string_category(posting.cat) + (sub.empty() ? "" : "/" + sub);
}

std::vector<Column> posting_columns() {
  using Align = Column::Align;
  return {{"ID", Align::right},
          {"DATE"},
          {"CATEGORY"},
          {"STATUS"},
          {"TITLE", Align::left, true},
          {"POSTER", Align::left, true}};
}

std::vector<std::string> posting_row(const ZoxEvent &posting) {
  return {std::to_string(posting.postId),
          show_moment(posting.stamp),
          category_name(posting),
          status_name(posting),
          std::string(view_of(posting.title)),
          std::string(view_of(posting.poster))};
}

void add_posting(Json &json, const ZoxEvent &posting) {
  json.member("id", posting.postId).member("stamp", posting.stamp);
  json.member("date", show_moment(posting.stamp)).member("updated", posting.updated);
  json.member("status", posting.status).member("statusName", zox_string_status(posting.status));
  json.member("category", posting.cat).member("categoryName", zox_string_category(posting.cat));
  json.member("subCategory", posting.sCat).member("subCategoryName", sub_category_name(posting));
  json.member("title", posting.title).member("poster", posting.poster);
  json.member("fileName", posting.fName).member("link", posting.link);
  json.member("rating", posting.rating).member("freeTag", posting.tag);
  add_tags(json, posting);
  add_newsgroups(json, posting);
  json.member("new", is_new(posting));
  json.member("watched", zox_watchlist_is_in_list(static_cast<guint32>(posting.postId)) != FALSE);
}

void print_postings(const std::vector<gint32> &ids, const Context &context) {
  const auto row = [](gint32 id) {
    const OwnedEvent posting = find_posting(id);
    return posting ? posting_row(*posting) : std::vector<std::string>{std::to_string(id)};
  };
  const auto add_members = [](Json &json, gint32 id) {
    if (const OwnedEvent posting = find_posting(id))
      add_posting(json, *posting);
    else
      json.member("id", id);
  };
  print_list(context, posting_columns(), ids, row, add_members);
}

}  // namespace velkor::ctl
