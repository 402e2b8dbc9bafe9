/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/postings.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>
#include <velkor/zox_watchlist.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

/** What a posting is sorted by, and its ID, by which equal ones are sorted. */
using Selected = std::pair<SortKey, gint32>;

struct Collection {
  const Field<ZoxEvent> &key;
  std::vector<Selected> postings;
};

void collect(const ZoxEvent *posting, gpointer collection) noexcept {
  auto &into = *static_cast<Collection *>(collection);
  into.postings.emplace_back(SortKey(into.key.value(*posting)), posting->postId);
}

/** Leaves those that come first, in order, and no more than asked for. */
template <typename Precedes>
void arrange(std::vector<Selected> &postings, std::optional<std::size_t> limit, Precedes precedes) {
  if (limit && *limit < postings.size()) {
    const auto end = postings.begin() + static_cast<std::ptrdiff_t>(*limit);
    std::ranges::nth_element(postings, end, precedes);
    postings.erase(end, postings.end());
  }
  std::ranges::sort(postings, precedes);
}

/** A posting by its ID, and itself when it is in the cache. */
struct Entry {
  gint32 id;
  OwnedEvent posting;
};

Fields<Entry> entry_fields() {
  Fields<Entry> fields = fields_of_part<Entry, ZoxEvent>(
      posting_fields(), [](const Entry &entry) { return entry.posting.get(); });
  fields.front().value = [](const Entry &entry) -> Value { return entry.id; };
  return fields;
}

std::string sub_category_name(const ZoxEvent &posting) {
  return zox_category_get_scat_name(posting.cat, static_cast<guint32>(posting.sCat));
}

bool is_new(const ZoxEvent &posting) noexcept {
  return posting.stamp >= core->config->prevCheck;
}

}  // namespace

std::vector<gint32> select_postings(const ZoxFilter &filter, const Order &order) {
  zox_eventlist_apply_filter(core->eventlist, &filter);
  const Fields<ZoxEvent> fields = posting_fields();
  Collection collection{field_named(fields, order.sort.value_or("date")), {}};
  zox_eventlist_visit(core->eventlist, 1, collect, &collection);
  const bool newest_first = !order.sort;
  if (newest_first != order.reverse)
    arrange(collection.postings, order.limit, std::greater{});
  else
    arrange(collection.postings, order.limit, std::less{});
  std::vector<gint32> ids;
  ids.reserve(collection.postings.size());
  for (const auto &[key, id] : collection.postings)
    ids.push_back(id);
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

Value tag_value(gint32 category, const GString *code) {
  const ZoxTag *tag = zox_tag_find(code, category);
  const std::string name = tag_name(category, code);
  return Value::Object{name,
                       {{"code", code},
                        {"group", tag == nullptr ? Value() : Value(tag->group->name)},
                        {"name", name}}};
}

Value tag_values(gint32 category, const GSList *codes) {
  Value::List tags;
  for (const GString *code : Items<GString>(codes))
    tags.push_back(tag_value(category, code));
  return tags;
}

Type tags_type() {
  return type::list_of(
      type::object({{"code", type::text()}, {"group", type::text()}, {"name", type::text()}}));
}

Value newsgroup_values(const GSList *ids) {
  Value::List groups;
  for (const GString *id : Items<GString>(ids)) {
    const auto number = static_cast<guint32>(std::strtoul(id->str, nullptr, 10));
    const std::string name = newsgroup_name(number);
    groups.push_back(Value::Object{name, {{"id", number}, {"shortName", name}}});
  }
  return groups;
}

Type newsgroups_type() {
  return type::list_of(type::object({{"id", type::number()}, {"shortName", type::text()}}));
}

Fields<ZoxEvent> posting_fields() {
  using P = const ZoxEvent &;
  return {
      {{.name = "id", .type = type::number(), .rank = 2},
       [](P posting) -> Value { return posting.postId; }},
      {{.name = "date", .type = type::moment(), .rank = 3, .style = Style::faint},
       [](P posting) -> Value { return moment_or_nothing(posting.stamp); }},
      {{.name = "updated", .type = type::moment()},
       [](P posting) -> Value { return moment_or_nothing(posting.updated); }},
      {{.name = "categoryPath", .type = type::text(), .rank = 4, .title = "Category"},
       [](P posting) -> Value { return category_name(posting); }},
      {{.name = "category", .type = type::text(), .place = Place::nowhere},
       [](P posting) { return text_or_nothing(zox_string_category(posting.cat)); }},
      {{.name = "categoryId", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.cat; }},
      {{.name = "subCategory", .type = type::text(), .place = Place::nowhere},
       [](P posting) { return text_or_nothing(sub_category_name(posting)); }},
      {{.name = "subCategoryId", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.sCat; }},
      {{.name = "status", .type = type::text(), .rank = 5},
       [](P posting) -> Value { return status_name(posting); }},
      {{.name = "statusId", .type = type::number(), .place = Place::nowhere},
       [](P posting) -> Value { return posting.status; }},
      {{.name = "title", .type = type::text(), .rank = 1, .flexible = true, .style = Style::strong},
       [](P posting) -> Value { return posting.title; },
       [](P posting) { return std::string(view_of(posting.link)); }},
      {{.name = "poster", .type = type::text(), .rank = 1, .flexible = true},
       [](P posting) -> Value { return posting.poster; }},
      {{.name = "tags", .type = tags_type(), .flexible = true},
       [](P posting) { return tag_values(posting.cat, posting.tags); }},
      {{.name = "freeTag", .type = type::text(), .flexible = true},
       [](P posting) -> Value { return posting.tag; }},
      {{.name = "newsgroups", .type = newsgroups_type(), .flexible = true},
       [](P posting) { return newsgroup_values(posting.groups); }},
      {{.name = "fileName", .type = type::text(), .flexible = true},
       [](P posting) -> Value { return posting.fName; }},
      {{.name = "link", .type = type::text(), .flexible = true},
       [](P posting) -> Value { return posting.link; },
       [](P posting) { return std::string(view_of(posting.link)); }},
      {{.name = "rating", .type = type::number(), .place = Place::line_unless_zero},
       [](P posting) -> Value { return posting.rating; }},
      {{.name = "new", .type = type::flag(), .place = Place::nowhere},
       [](P posting) -> Value { return is_new(posting); }},
      {{.name = "watched", .type = type::flag(), .place = Place::nowhere},
       [](P posting) -> Value {
         return zox_watchlist_is_in_list(static_cast<guint32>(posting.postId)) != FALSE;
       }},
  };
}

RecordInfo posting_records() {
  return list_of_records(posting_fields(), "posting", "postings");
}

void print_postings(const std::vector<gint32> &ids, const Context &context) {
  const Fields<Entry> fields = entry_fields();
  RecordPrinter<Entry> printer(context, fields);
  for (const gint32 id : ids)
    printer.add({id, find_posting(id)});
  printer.finish();
}

void print_postings_arranged(std::vector<gint32> ids, const Context &context) {
  const Order order = order_of(context.arguments);
  const Fields<Entry> fields = entry_fields();
  arrange_by(ids, order, [&](gint32 id) {
    return field_named(fields, *order.sort).value({id, find_posting(id)});
  });
  print_postings(ids, context);
}

}  // namespace velkor::ctl
