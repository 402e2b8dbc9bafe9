/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* velkorctl explain: why a filter accepts or rejects a posting. */
#include <array>
#include <ctime>
#include <limits>
#include <string>

#include <velkor/zox_category.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_string.h>

#include "support/slist.h"
#include "support/text.h"
#include "velkorctl/commands.h"
#include "velkorctl/core_session.h"
#include "velkorctl/filter_options.h"
#include "velkorctl/moment.h"
#include "velkorctl/postings.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

/** What a test asks for and what the posting has, in words. */
struct Words {
  std::string wanted;
  std::string found;
};

/** One test of the library, by its number there. */
struct Test {
  gint32 number;
  const char *name;
  /** Whether the filter uses the test. */
  bool (*asked)(const ZoxFilter &filter);
  Words (*words)(const ZoxFilter &filter, const ZoxEvent &posting);
};

std::string quoted(const GString *text) {
  return "\"" + std::string(view_of(text)) + "\"";
}

std::string newsgroups_of(const GSList *ids) {
  return joined(newsgroup_names(ids));
}

std::string tags_of(const GSList *codes, gint32 category) {
  std::vector<std::string> tags;
  for (const GString *code : Items<GString>(codes))
    tags.push_back(std::string(code->str) + " " + tag_name(category, code));
  return joined(tags);
}

std::string states_of(const GSList *numbers) {
  std::vector<std::string> states;
  for (const GSList *cell = numbers; cell != nullptr; cell = cell->next)
    states.emplace_back(zox_string_status(GPOINTER_TO_INT(cell->data)));
  return joined(states);
}

Words since_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {"since " + show_moment(filter.sinceStamp), show_moment(posting.stamp)};
}

Words category_test_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  const std::string sub = zox_category_get_scat_name(filter.cat, static_cast<guint32>(filter.sCat));
  return {zox_string_category(filter.cat) + (sub.empty() ? "" : "/" + sub), category_name(posting)};
}

Words state_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {states_of(filter.statusList), status_name(posting)};
}

Words newsgroup_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {"one of: " + newsgroups_of(filter.groupIdList), newsgroups_of(posting.groups)};
}

Words title_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {"contains " + quoted(filter.titleSearch), quoted(posting.title)};
}

Words poster_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {"contains " + quoted(filter.posterSearch), quoted(posting.poster)};
}

Words range_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  const bool open = filter.dateTo == std::numeric_limits<gint64>::max();
  return {show_moment(filter.dateFrom) + " to " + (open ? "now" : show_moment(filter.dateTo)),
          show_moment(posting.stamp)};
}

Words tag_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {"one of each group: " + tags_of(filter.tags, filter.cat),
          tags_of(posting.tags, posting.cat)};
}

Words free_tag_words(const ZoxFilter &filter, const ZoxEvent &posting) {
  return {"the word " + quoted(filter.extraTag), quoted(posting.tag)};
}

Words saved_filter_words(const ZoxFilter & /*filter*/, const ZoxEvent &posting) {
  const std::string name = zox_string_category(posting.cat);
  return {"a saved filter in the posting's category", name.empty() ? "no category" : name};
}

constexpr std::array<Test, 10> tests{{
    {1, "since",
     [](const ZoxFilter &filter) { return filter.sinceStamp != 0 && filter.useDateRange == 0; },
     since_words},
    {2, "category", [](const ZoxFilter &filter) { return filter.cat != -1; }, category_test_words},
    {3, "state", [](const ZoxFilter &filter) { return filter.statusList != nullptr; }, state_words},
    {4, "newsgroup", [](const ZoxFilter &filter) { return filter.groupIdList != nullptr; },
     newsgroup_words},
    {5, "title", [](const ZoxFilter &filter) { return filter.titleSearch != nullptr; },
     title_words},
    {6, "poster", [](const ZoxFilter &filter) { return filter.posterSearch != nullptr; },
     poster_words},
    {7, "date range", [](const ZoxFilter &filter) { return filter.useDateRange != 0; },
     range_words},
    {8, "tags", [](const ZoxFilter &filter) { return filter.tags != nullptr; }, tag_words},
    {9, "free tag", [](const ZoxFilter &filter) { return filter.extraTag != nullptr; },
     free_tag_words},
    {10, "saved filter", [](const ZoxFilter & /*filter*/) { return true; }, saved_filter_words},
}};

/**
 * A filter with the conditions of one test only, borrowed from `filter`, so that the library
 * decides whether the posting passes that test.
 */
ZoxFilter only(const ZoxFilter &filter, gint32 number) {
  ZoxFilter one{};
  one.cat = number == 2 ? filter.cat : -1;
  one.sCat = filter.sCat;
  one.sinceStamp = number == 1 ? filter.sinceStamp : 0;
  one.statusList = number == 3 ? filter.statusList : nullptr;
  one.groupIdList = number == 4 ? filter.groupIdList : nullptr;
  one.titleSearch = number == 5 ? filter.titleSearch : nullptr;
  one.posterSearch = number == 6 ? filter.posterSearch : nullptr;
  one.useDateRange = number == 7 ? filter.useDateRange : 0;
  one.dateFrom = filter.dateFrom;
  one.dateTo = filter.dateTo;
  one.tags = number == 8 ? filter.tags : nullptr;
  one.extraTag = number == 9 ? filter.extraTag : nullptr;
  return one;
}

struct TestResult {
  const Test *test;
  bool asked;
  bool passed;
  Words words;
};

std::vector<TestResult> results_of(const ZoxFilter &filter, const ZoxEvent &posting) {
  std::vector<TestResult> results;
  results.reserve(tests.size());
  for (const Test &test : tests) {
    const ZoxFilter one = only(filter, test.number);
    const bool asked = test.asked(filter);
    const bool passed = zox_filter_explain(&one, &posting, 0) != test.number;
    results.push_back({&test, asked, passed, asked ? test.words(filter, posting) : Words{}});
  }
  return results;
}

/** The name of the first test that fails, or nothing. */
Value rejected_by(gint32 first_failure) {
  for (const Test &test : tests)
    if (test.number == first_failure)
      return test.name;
  return {};
}

Fields<TestResult> fields() {
  using R = const TestResult &;
  return {
      {{.name = "test", .type = type::text(), .rank = 1},
       [](R result) -> Value { return result.test->name; }},
      {{.name = "result", .type = type::text(), .rank = 1},
       [](R result) -> Value { return !result.asked ? "-" : (result.passed ? "pass" : "FAIL"); }},
      {{.name = "wanted", .type = type::text(), .rank = 1, .flexible = true},
       [](R result) { return text_or_nothing(result.words.wanted); }},
      {{.name = "posting", .type = type::text(), .rank = 1, .flexible = true},
       [](R result) { return text_or_nothing(result.words.found); }},
  };
}

Exit run(const Context &context) {
  const gint32 id = posting_id(context.arguments.required("ID"));
  const CoreSession session(context.options, CoreSession::Access::read, Load::postings);
  const OwnedFilter filter = filter_of(context.arguments, std::time(nullptr));
  const OwnedEvent posting = cached_posting(id);
  const std::vector<TestResult> results = results_of(*filter, *posting);
  const gint32 first_failure = zox_filter_explain(filter.get(), posting.get(), 0);
  const Value rejecting = rejected_by(first_failure);
  print_records(context, fields(), results,
                {.facts = {{"accepted", first_failure == 0}, {"rejectedBy", rejecting}}});
  if (format_of(context.arguments) == Format::table)
    context.out.write(first_failure == 0 ? "accepted\n"
                                         : "rejected by: " + text_for_people(rejecting) + "\n");
  return Exit::ok;
}

}  // namespace

Command explain_command() {
  RecordInfo record = list_of_records(fields(), "test", "tests");
  record.facts = {{.name = "accepted", .type = type::flag()},
                  {.name = "rejectedBy", .type = type::text()}};
  return with_output({"explain",
                      "Show which tests of a filter a posting passes, and which one rejects it",
                      {posting_argument()},
                      filter_options(),
                      run},
                     std::move(record));
}

}  // namespace velkor::ctl
