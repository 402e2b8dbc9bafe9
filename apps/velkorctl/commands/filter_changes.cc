/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl filters add, edit, rename, move, remove and import. */
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "velkorctl/commands.h"
#include "velkorctl/consent.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/messages.h"
#include "velkorctl/record_printer.h"
#include "velkorctl/text_input.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

/** Some ten thousand filters with many tags each. */
constexpr std::size_t longest_document = 16777216;

using Filters = std::vector<OwnedFilter>;

Filters copies_of(const GSList *list) {
  Filters filters;
  for (const ZoxFilter *filter : Items<ZoxFilter>(list))
    filters.emplace_back(zox_filter_duplicate(filter));
  return filters;
}

bool same_texts(const GSList *left, const GSList *right) noexcept {
  for (; left != nullptr && right != nullptr; left = left->next, right = right->next)
    if (g_string_equal(static_cast<const GString *>(left->data),
                       static_cast<const GString *>(right->data)) == FALSE)
      return false;
  return left == right;
}

/** Whether all that is saved of two filters is the same. */
bool same_filter(const ZoxFilter &left, const ZoxFilter &right) noexcept {
  return left.cat == right.cat && left.sCat == right.sCat &&
         view_of(left.name) == view_of(right.name) &&
         view_of(left.extraTag) == view_of(right.extraTag) && same_texts(left.tags, right.tags);
}

/** The cached postings of some main categories. */
struct Hidden {
  std::set<gint32> categories;
  std::int64_t postings = 0;
};

void count_hidden(const ZoxEvent *posting, gpointer data) noexcept {
  auto &hidden = *static_cast<Hidden *>(data);
  if (hidden.categories.contains(posting->cat))
    ++hidden.postings;
}

/** The main categories that have a filter before, but none after the change. */
std::set<gint32> abandoned_categories(const Filters &after) {
  std::set<gint32> categories;
  for (const ZoxFilter *filter : Items<ZoxFilter>(core->filterlist->filters))
    categories.insert(filter->cat);
  for (const OwnedFilter &filter : after)
    categories.erase(filter->cat);
  return categories;
}

std::string hiding(const std::set<gint32> &categories, std::int64_t postings) {
  std::vector<std::string> names;
  std::ranges::transform(categories, std::back_inserter(names), zox_string_category);
  return "no filter would be left for " + joined(names) + ", and " + std::to_string(postings) +
         (postings == 1 ? " cached posting" : " cached postings") + " would no longer be listed";
}

/** The saved filters while a command changes them. */
class FilterChange {
public:
  explicit FilterChange(const Context &context)
      : session_(context.options, CoreSession::Access::write, Load::postings_if_readable),
        arguments_(context.arguments), filters_(copies_of(core->filterlist->filters)) {}

  [[nodiscard]] Filters &filters() noexcept { return filters_; }

  /** The filter that the argument FILTER names. */
  [[nodiscard]] Filters::iterator named() {
    const std::size_t place =
        saved_filter_place(arguments_.required("FILTER"), std::nullopt, Exit::not_found);
    return filters_.begin() + static_cast<std::ptrdiff_t>(place);
  }

  /** Throws a usage Failure when another filter of its category has the filter's name. */
  void require_own_name(const ZoxFilter &filter) const {
    const std::string name(view_of(filter.name));
    for (const OwnedFilter &other : filters_)
      if (other.get() != &filter && other->cat == filter.cat &&
          same_name(name, zox_string_value(other->name)))
        throw usage_error("there is already a filter called \"" + name + "\" for " +
                          zox_string_category(filter.cat));
  }

  /** Throws a Failure when they cannot be saved, or the user does not want what that brings. */
  void save() {
    require_consent_to_hiding();
    ListBuilder<ZoxFilter, zox_filter_free_filter> list;
    for (OwnedFilter &filter : filters_)
      list.append(filter.release());
    zox_filterlist_set_filters(core->filterlist, list.list());
    if (const ZoxFileError *outcome = zox_file_last_error(); outcome->status != ZOX_FILE_FINE)
      throw Failure(Exit::files,
                    std::string("the filters could not be saved: ") + outcome->message);
  }

private:
  /** Postings of a main category without a filter are in no list. */
  void require_consent_to_hiding() const {
    Hidden hidden{abandoned_categories(filters_)};
    zox_eventlist_visit(core->eventlist, 0, count_hidden, &hidden);
    if (hidden.postings > 0)
      require_consent(arguments_, hiding(hidden.categories, hidden.postings));
  }

  CoreSession session_;
  const Arguments &arguments_;
  Filters filters_;
};

OwnedString filter_name(const std::string &text) {
  const auto is_control = [](unsigned char character) {
    return character < ' ' || character == 127;
  };
  if (text.empty() || std::ranges::any_of(text, is_control))
    throw usage_error("the name of a filter is one line of text");
  return OwnedString(g_string_new(text.c_str()));
}

void require_category(const ZoxFilter &filter) {
  if (filter.cat < 0)
    throw usage_error("a saved filter needs a --category, or a --tag that only one category has");
}

Exit run_add(const Context &context) {
  FilterChange change(context);
  OwnedFilter &filter = change.filters().emplace_back(zox_filter_new_filter());
  filter->name = filter_name(context.arguments.required("NAME")).release();
  set_saved_conditions(*filter, context.arguments);
  require_category(*filter);
  change.require_own_name(*filter);
  change.save();
  return Exit::ok;
}

Exit run_edit(const Context &context) {
  FilterChange change(context);
  ZoxFilter &filter = **change.named();
  set_saved_conditions(filter, context.arguments);
  require_category(filter);
  change.require_own_name(filter);
  change.save();
  return Exit::ok;
}

Exit run_rename(const Context &context) {
  FilterChange change(context);
  ZoxFilter &filter = **change.named();
  replace_string(filter.name, filter_name(context.arguments.required("NAME")).release());
  change.require_own_name(filter);
  change.save();
  return Exit::ok;
}

Exit run_move(const Context &context) {
  FilterChange change(context);
  const auto count = static_cast<std::int64_t>(change.filters().size());
  const auto from = change.named();
  const auto to = change.filters().begin() +
                  (number_in_range(context.arguments.required("NUMBER"), 1, count, "NUMBER") - 1);
  if (from < to)
    std::rotate(from, from + 1, to + 1);
  else
    std::rotate(to, from, from + 1);
  change.save();
  return Exit::ok;
}

Exit run_remove(const Context &context) {
  FilterChange change(context);
  change.filters().erase(change.named());
  change.save();
  return Exit::ok;
}

Filters read_filters(const std::string &file) {
  const std::string text = read_text(file, longest_document);
  const OwnedString document(g_string_new_len(text.data(), static_cast<gssize>(text.size())));
  GSList *list = nullptr;
  if (zox_filterlist_parse(document.get(), &list) != 0)
    throw usage_error((file == "-" ? "standard input" : file) + " is not a document of filters");
  Filters filters;
  for (ZoxFilter *filter : Items<ZoxFilter>(list))
    filters.emplace_back(filter);
  g_slist_free(list);
  return filters;
}

Fields<std::int64_t> import_fields() {
  return {{{.name = "added", .type = type::number(), .rank = 1},
           [](std::int64_t added) -> Value { return added; }}};
}

Exit run_import(const Context &context) {
  Filters imported = read_filters(context.arguments.value("FILE").value_or("-"));
  FilterChange change(context);
  if (context.arguments.has("--replace"))
    change.filters().clear();
  std::int64_t added = 0;
  for (OwnedFilter &filter : imported) {
    const auto same = [&](const OwnedFilter &other) { return same_filter(*filter, *other); };
    if (std::ranges::any_of(change.filters(), same))
      continue;
    change.filters().push_back(std::move(filter));
    ++added;
  }
  change.save();
  say(std::to_string(added) + (added == 1 ? " filter has" : " filters have") + " been added");
  if (wants_records(context.arguments))
    print_record(context, import_fields(), added);
  return Exit::ok;
}

Argument filter_argument() {
  return {"FILTER", "The filter, by its name or its number (#3)"};
}

std::vector<Option> with_consent(std::vector<Option> options) {
  options.push_back(yes_option());
  return options;
}

}  // namespace

std::vector<Command> filter_change_commands() {
  return {
      {"add", "Save a new filter", {{"NAME", "What to call it"}}, saved_filter_options(), run_add},
      {"edit",
       "Change the conditions of a filter; an empty value removes one",
       {filter_argument()},
       with_consent(saved_filter_options()),
       run_edit},
      {"rename",
       "Give a filter another name",
       {filter_argument(), {"NAME", "What to call it"}},
       {},
       run_rename},
      {"move",
       "Put a filter in another place of the list",
       {filter_argument(), {"NUMBER", "The number that it is to have"}},
       {},
       run_move},
      {"remove", "Delete a filter", {filter_argument()}, with_consent({}), run_remove},
      with_output({"import",
                   "Add the filters of a document that are not there yet",
                   {{"FILE", "The document; standard input without it", Argument::Count::optional}},
                   with_consent({{"--replace", "", "Delete the filters that are there now"}}),
                   run_import},
                  one_record(import_fields())),
  };
}

}  // namespace velkor::ctl
