/* SPDX-License-Identifier: LGPL-2.1-or-later */
/*
 * Everything at once: the thread that owns the core changes filters, settings and the watchlist,
 * updates, counts, shows and saves, while details and reactions load in the background and other
 * threads fetch and look things up. Each round ends by closing the core with fetches under way, and
 * the program ends so too. Every fetch must be reported once, with a result that can be.
 * Prints how many rounds, changes, fetches and look-ups there were; tools/stress.py drives it.
 */
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <velkor/velkor.h>

#include "support/opened_core.h"
#include "support/owned.h"
#include "support/owned_records.h"
#include "support/slist.h"

namespace velkor::stress {
namespace {

constexpr std::size_t changes_a_round = 60;
constexpr std::size_t fetching_threads = 2;

struct Tally {
  std::size_t changes = 0;
  std::size_t started = 0;
  std::size_t reported = 0;
  std::atomic<std::size_t> looked_up = 0;
};
Tally tally;

/** What went wrong first, on whatever thread; null as long as nothing has. */
std::atomic<const char *> fault = nullptr;

void require(bool condition, const char *message) noexcept {
  if (!condition)
    fault = message;
}

void check() {
  if (const char *message = fault)
    throw std::runtime_error(message);
}

bool is_possible(ZoxErrorCode result) noexcept {
  return result == ZOX_RESULT_SUCCESS || result == ZOX_RESULT_POSTING_GONE ||
         result == ZOX_RESULT_POSTING_NOT_CACHED;
}

/** Whether the fetches have to succeed; those that a closing core ends do not. */
bool closing = false;

gint note_details(ZoxErrorCode result, gint32, char *message, gpointer) noexcept {
  const OwnedText owner(message);
  ++tally.reported;
  require(closing || is_possible(result), "details in the background fail");
  return 0;
}

gint note_forum(ZoxErrorCode result, gint32, gint32, char *message, gpointer) noexcept {
  return note_details(result, 0, message, nullptr);
}

void start_fetches(gint32 postId) noexcept {
  zox_eventinfo_fetch_async(postId, note_details, nullptr);
  zox_events_forum_fetch_async(postId, 0, note_forum, nullptr);
  tally.started += 2;
}

void report_pending() noexcept {
  while (g_main_context_iteration(nullptr, FALSE) != FALSE)
    continue;
}

void report_all() noexcept {
  while (tally.reported < tally.started)
    g_main_context_iteration(nullptr, TRUE);
  report_pending();
  require(tally.reported == tally.started, "a fetch is reported twice");
}

// What the owner of the core does. Each takes a number that makes one time differ from another.

OwnedFilter filter_of(std::size_t number) noexcept {
  constexpr std::size_t categories = 4;
  OwnedFilter filter(zox_filter_new_filter());
  filter->cat = static_cast<gint32>(number % categories);
  filter->name = zox_string_new("filter");
  return filter;
}

void change_filters(std::size_t number) {
  constexpr std::size_t most_filters = 8;
  GSList *filters = nullptr;
  for (std::size_t count = 0; count < number % most_filters; ++count)
    filters = g_slist_prepend(filters, filter_of(number + count).release());
  zox_filterlist_set_filters(core->filterlist, filters);
  g_slist_free_full(
      filters, [](gpointer filter) { zox_filter_free_filter(static_cast<ZoxFilter *>(filter)); });
}

void set(const char *key, const std::string &text) {
  require(zox_settings_set(key, text.c_str(), nullptr) == ZOX_SETTING_DONE,
          "a setting is not taken");
}

void set_list(const char *key, const char *stored) {
  ZoxSplittedList *items = zox_splitted_list_split(stored);
  require(zox_settings_set_list(key, items, nullptr) == ZOX_SETTING_DONE,
          "a list of settings is not taken");
  zox_splitted_list_free(&items);
}

void change_settings(std::size_t number) {
  const bool odd = number % 2 != 0;
  set("username", "demo");
  set("password", "demo-geheim");
  set("proxyUser", odd ? "een" : "een andere");
  set_list("watcher", odd ? "|linux|film|" : "|dvd|");
  set_list("badword", odd ? "|ongewenst|" : "|nooit|nergens|");
  set_list("groupFilterList", odd ? "|1|2|3|" : "|4|");
}

void reload_settings(std::size_t) {
  zox_config_save();
  zox_config_load();
}

gint32 id_of(std::size_t number);

void change_watchlist(std::size_t number) {
  constexpr std::size_t kept = 7;
  zox_watchlist_add(id_of(number));
  zox_watchlist_remove(id_of(number + kept));
  zox_watchlist_set_state(1);
}

void apply_filter(std::size_t number) {
  const OwnedFilter filter = filter_of(number);
  ZoxSplittedList *groups = zox_splitted_list_split("|1|2|3|4|5|");
  if (number % 2 != 0)
    filter->groupIdList = groups;
  else
    zox_splitted_list_free(&groups);
  zox_eventlist_apply_filter(core->eventlist, filter.get());
}

void count(std::size_t) {
  zox_categories_reset_counters();
  zox_eventlist_visit(
      core->eventlist, 0, [](const ZoxEvent *event, gpointer) { zox_category_update(event); },
      nullptr);
}

void show(std::size_t number) {
  const OwnedString page(number % 2 != 0 ? zox_events_sort_total(nullptr)
                                         : zox_events_sort_filtered(nullptr));
  require(page->len > 0, "the display document is empty");
}

void save(std::size_t) {
  require(zox_eventlist_save(core->eventlist) == 1, "the postings are not saved");
  require(zox_group_save() >= 0, "the newsgroups are not saved");
}

void update(std::size_t) {
  set("lastCheck", "0");
  char *text = nullptr;
  const ZoxErrorCode code = zox_events_fetch(nullptr, nullptr, nullptr, &text, nullptr);
  const OwnedText owner(text);
  require(code == ZOX_RESULT_SUCCESS, "an update fails");
}

constexpr std::array changes{change_filters,
                             change_settings,
                             reload_settings,
                             change_watchlist,
                             apply_filter,
                             count,
                             show,
                             save};
constexpr std::size_t changes_an_update = 20;

void change(std::size_t number) {
  if (number % changes_an_update == changes_an_update - 1)
    update(number);
  else
    changes[number % changes.size()](number / 2 + number);
  ++tally.changes;
}

/** The ids of postings that the server knows; it stays as it is once the first update is done. */
std::vector<gint32> ids;

gint32 id_of(std::size_t number) {
  return ids[number % ids.size()];
}

void note_ids() {
  zox_eventlist_visit(
      core->eventlist, 0,
      [](const ZoxEvent *event, gpointer) noexcept { ids.push_back(event->postId); }, nullptr);
  require(!ids.empty(), "there are no postings");
  check();
}

/** Works on any thread: what neither belongs to one thread nor needs a main loop. */
void look_up(std::size_t number) noexcept {
  const gint32 id = ids[number % ids.size()];
  char *text = nullptr;
  const ZoxErrorCode code =
      number % 2 != 0 ? zox_eventinfo_fetch(id, &text) : zox_events_forum_fetch(id, 0, &text);
  const OwnedText message(text);
  require(is_possible(code), "a fetch on a thread of its own fails");
  const OwnedEvent event(zox_eventlist_lookup_id(core->eventlist, id));
  const OwnedFilter filter = filter_of(number);
  if (event)
    zox_filter_accepts(filter.get(), event.get(), 0);
  zox_eventlist_get_count(core->eventlist, 1);
  zox_eventlist_save(core->eventlist);
  const OwnedString user(zox_settings_get("username"));
  require(user && std::string_view(user->str) == "demo", "a setting is read in part");
  ++tally.looked_up;
}

/** Threads of the front end, which end with this. */
class Lookers {
public:
  Lookers() {
    for (std::size_t number = 0; number < threads_.size(); ++number) {
      threads_[number] = std::jthread([number](const std::stop_token &stop) {
        for (std::size_t time = number; !stop.stop_requested(); time += fetching_threads)
          look_up(time);
      });
    }
  }

private:
  std::array<std::jthread, fetching_threads> threads_;
};

/** Fetches a few postings, most of which the list does not hold when it is empty. */
void start_some(std::size_t number) {
  constexpr std::size_t some = 4;
  for (std::size_t count = 0; count < some && !ids.empty(); ++count)
    start_fetches(id_of(number * some + count));
}

void run_round(std::size_t round) {
  start_some(round);
  update(round);
  if (ids.empty())
    note_ids();
  const Lookers lookers;
  for (std::size_t number = 0; number < changes_a_round; ++number) {
    start_some(number);
    change(number + round);
    report_pending();
    check();
  }
}

void run(const std::string &cache, const char *plugins, std::size_t rounds) {
  for (std::size_t round = 0; round < rounds; ++round) {
    // What is fetched first is then found on the server, and counted.
    std::filesystem::remove(cache + "/velkor.posts.gz");
    {
      const OpenedCore core_of_round(options_without_bus(cache.c_str(), plugins));
      run_round(round);
      start_some(round);
      closing = true;
    }
    report_all();
    closing = false;
    check();
  }
  std::cout << rounds << ' ' << tally.changes << ' ' << tally.reported << ' ' << tally.looked_up
            << std::endl;
}

/** Ends the program with the core open and fetches under way. */
[[noreturn]] void end_at_work(const std::string &cache, const char *plugins) {
  new OpenedCore(options_without_bus(cache.c_str(), plugins));  // lives as long as the process
  start_some(0);
  std::exit(EXIT_SUCCESS);
}

}  // namespace
}  // namespace velkor::stress

int main(int argc, char **words) {
  if (argc != 5) {
    std::cerr << "usage: velkor-stress HOST CACHE-DIRECTORY PLUG-IN-DIRECTORY ROUNDS\n";
    return EXIT_FAILURE;
  }
  try {
    zox_http_set_hosts(words[1], words[1]);
    velkor::stress::run(words[2], words[3], std::stoul(words[4]));
    velkor::stress::end_at_work(words[2], words[3]);
  } catch (const std::exception &error) {
    std::cerr << "velkor-stress: " << error.what() << '\n';
    return EXIT_FAILURE;
  }
}
