/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* A session as a front end has it (updates, filters, the display, saving and loading, watchlist and
 * bad words) beside a model that does the same with a map. After every step both hold the same
 * postings. */
#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <velkor/velkor.h>

#include "store/event_text.h"
#include "support/clock.h"
#include "support/slist.h"
#include "support/text.h"
#include "support/xml.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"
#include "tests/fuzz/transfers.h"

namespace velkor::fuzz {
namespace {

constexpr gint64 now = 1'700'000'000;
constexpr gint64 day = 86400;

/** What the model knows of a posting. */
struct Known {
  std::string title;
  gint32 status = 0;
  gint64 stamp = 0;
  gint64 updated = 0;
  bool operator==(const Known &) const = default;
};
using Stock = std::map<gint32, Known>;
/** The postings of a dump, in their order. */
using Arrivals = std::vector<std::pair<gint32, Known>>;

std::string upper(std::string text) {
  std::ranges::transform(text, text.begin(), g_ascii_toupper);
  return text;
}

bool holds(const std::string &title, const std::string &word) {
  return upper(title).find(upper(word)) != std::string::npos;
}

bool is_long_deleted(const Known &posting) {
  return posting.status == ZOX_STATUS_DELETED && posting.updated < now - day;
}

bool is_deleted(const Known &posting) {
  return posting.status == ZOX_STATUS_DELETED || posting.status == ZOX_STATUS_REMOVED;
}

/** The simple truth about a list, its file and the settings. */
class Model {
public:
  Stock list;
  std::set<gint32> watchlist;
  std::vector<std::string> bad_words;

  /** Postings as a document gives them: bad words keep those out that are not deleted. */
  template <typename Postings>
  [[nodiscard]] Postings readable(Postings postings) const {
    std::erase_if(postings, [this](const auto &entry) {
      return !is_deleted(entry.second) &&
             std::ranges::any_of(bad_words, [&entry](const std::string &word) {
               return holds(entry.second.title, word);
             });
    });
    return postings;
  }
  void load() { list = readable(file_); }
  void save() {
    file_ = list;
    std::erase_if(file_, [](const auto &entry) { return is_long_deleted(entry.second); });
  }
  /** The first of several with the same id stays. */
  void merge(const Arrivals &postings) {
    for (auto arrival = postings.rbegin(); arrival != postings.rend(); ++arrival)
      list[arrival->first] = arrival->second;
  }
  /** Removes what is too old; tells whether anything was that old. */
  void clean_up(gint64 most_days) {
    const auto is_old = [&](const auto &entry) {
      return entry.second.stamp < now - most_days * day;
    };
    if (std::ranges::none_of(list, is_old))
      return;
    std::erase_if(
        list, [&](const auto &entry) { return is_old(entry) && !watchlist.contains(entry.first); });
    save();
    load();
  }
  void purge() {
    std::erase_if(list, [this](const auto &entry) {
      const bool removed =
          entry.second.status == ZOX_STATUS_REMOVED || is_long_deleted(entry.second);
      if (removed)
        watchlist.erase(entry.first);
      return removed;
    });
  }

private:
  Stock file_;
};

/** What the server has to give. */
struct Offer {
  Arrivals postings;
  std::string dump;
};

/** A title that comes back from a file to the byte. */
std::string take_title(Input &input) {
  std::string title = xml::storable(input.view());
  std::erase(title, '\r');
  return title;
}

OwnedEvent take_simple_posting(Input &input) {
  OwnedEvent posting(zox_event_new());
  posting->postId = static_cast<gint32>(1 + input.byte());
  posting->status = static_cast<gint32>(input.below(6)) - 3;
  posting->cat = static_cast<gint32>(input.below(4));
  posting->sCat = 1;
  posting->stamp = now - static_cast<gint64>(input.below(64)) * day;
  posting->updated = now - static_cast<gint64>(input.below(4)) * day;
  replace_string(posting->title, zox_string_new(take_title(input).c_str()));
  replace_string(posting->poster, zox_string_new("iemand"));
  return posting;
}

Known known(const ZoxEvent &posting) {
  return {std::string(view_of(posting.title)), posting.status, posting.stamp, posting.updated};
}

Offer take_offer(Input &input) {
  Offer offer;
  for (unsigned count = input.below(16); count > 0; --count) {
    const OwnedEvent posting = take_simple_posting(input);
    offer.postings.emplace_back(posting->postId, known(*posting));
    append_element(offer.dump, *posting);
  }
  offer.dump = "<?xml version=\"1.0\"?>\n<Events>\n" + offer.dump + "</Events>\n";
  return offer;
}

std::string availability(gint64 stamp, bool has_dump) {
  return "<Events><Event Code=\"0\"><Stamp>" + std::to_string(stamp) + "</Stamp></Event>" +
         (has_dump ? "<Event Code=\"7\"><Chunks>een</Chunks></Event>" : "") + "</Events>";
}

/** Carries out every step twice: in the library and in the model. */
class Walk {
public:
  void step(Input &input) {
    static constexpr std::array steps{
        &Walk::update,   &Walk::filter, &Walk::display,  &Walk::save,    &Walk::load, &Walk::watch,
        &Walk::bad_word, &Walk::purge,  &Walk::clean_up, &Walk::replace, &Walk::fail};
    (this->*steps[input.below(steps.size())])(input);
    compare();
  }

private:
  static ZoxErrorCode fetch() {
    char *message = nullptr;
    const ZoxErrorCode code = zox_events_fetch(nullptr, nullptr, nullptr, &message, nullptr);
    const OwnedText owned(message);
    return code;
  }

  void update(Input &input) {
    const Offer offer = take_offer(input);
    const bool is_time = input.byte() != 1;
    const gint64 stamp = is_time ? now + input.byte() : -5;
    const bool has_dump = !input.flag();
    answer_requests([&](const std::string &url) {
      const bool dump = url.find("/dumps/") != std::string::npos;
      return dump ? offer.dump : availability(stamp, has_dump);
    });
    const bool had_update = core->config->lastCheck != 0;
    const ZoxErrorCode code = fetch();
    model_.clean_up(retention_days());
    const Arrivals postings = model_.readable(offer.postings);
    if (!has_dump || postings.empty()) {
      require(code == ZOX_RESULT_NOTHING_NEW || offer.postings.empty(), "nothing new came");
      return;
    }
    require(code == ZOX_RESULT_SUCCESS, "the update succeeds");
    if (had_update)
      model_.load();
    model_.merge(postings);
    model_.save();
    model_.load();
    require(!is_time || core->config->lastCheck == stamp, "the time of the update is kept");
  }

  /** An update without a connection changes nothing but what was too old. */
  void fail(Input & /*input*/) {
    answer_requests([](const std::string &) { return std::nullopt; });
    require(fetch() == ZOX_RESULT_NOT_CONNECTED, "the update fails");
    model_.clean_up(retention_days());
  }

  void filter(Input &input) {
    const std::string word = take_title(input);
    const OwnedFilter filter(zox_filter_new_filter());
    replace_string(filter->titleSearch, zox_string_new(word.c_str()));
    zox_eventlist_apply_filter(core->eventlist, filter.get());
    const auto expected = std::ranges::count_if(
        model_.list, [&word](const auto &entry) { return holds(entry.second.title, word); });
    require(zox_eventlist_get_count(core->eventlist, 1) == static_cast<guint32>(expected),
            "the filter accepts what holds the text");
  }

  void display(Input & /*input*/) {
    const bool whole = std::ranges::none_of(model_.list, [](const auto &entry) {
      return entry.second.title.find("]]>") != std::string::npos ||
             entry.second.title.size() > 60'000;
    });
    const OwnedString text(zox_events_sort_total(nullptr));
    const xml::Document document = xml::parse(view_of(text.get()));
    require(document != nullptr || !whole, "the document is well-formed");
  }

  void save(Input & /*input*/) {
    require(zox_eventlist_save(core->eventlist) == 1, "the list can be saved");
    model_.save();
  }

  void load(Input & /*input*/) {
    zox_eventlist_load(core->eventlist, nullptr);
    model_.load();
  }

  void watch(Input &input) {
    const auto id = static_cast<gint32>(1 + input.byte());
    if (input.flag())
      require((zox_watchlist_remove(id) == 1) == (model_.watchlist.erase(id) == 1),
              "what is watched can be removed");
    else
      require((zox_watchlist_add(id) == 1) == model_.watchlist.insert(id).second,
              "a posting is on the watchlist once");
  }

  void bad_word(Input &input) {
    const std::string word = take_title(input);
    if (word.empty()) {
      model_.bad_words.clear();
      zox_settings_set_list("badword", nullptr, nullptr);
    } else if (zox_settings_set_list("badword", OwnedWords(word).cells(), nullptr) ==
               ZOX_SETTING_DONE) {
      model_.bad_words = {word};
    }
  }

  void purge(Input & /*input*/) {
    zox_eventlist_purge_deleted(core->eventlist);
    model_.purge();
  }

  void clean_up(Input & /*input*/) {
    zox_eventlist_cleanup(core->eventlist);
    model_.clean_up(retention_days());
  }

  void replace(Input &input) {
    const OwnedEvent posting = take_simple_posting(input);
    zox_eventlist_add_or_replace_event(core->eventlist, posting.get());
    model_.list[posting->postId] = known(*posting);
  }

  /** A list of one text. */
  class OwnedWords {
  public:
    explicit OwnedWords(const std::string &word) { words_.append(zox_string_new(word.c_str())); }
    [[nodiscard]] const GSList *cells() const noexcept { return words_.list(); }

  private:
    ListBuilder<GString, free_string> words_;
  };

  static gint64 retention_days() {
    const ZoxSetting &setting = *zox_settings_find("verwijderPostsNaXDagen");
    return setting.choices[core->config->verwijderPostsNaXDagen];
  }

  void compare() const {
    Stock held;
    for (const auto &[id, posting] : listed_postings())
      held.emplace(id, known(*posting));
    require(held == model_.list, "the list holds what the model does");
    require(g_slist_length(zox_watchlist_get()) == model_.watchlist.size(),
            "the watchlist is as long as the model's");
    require(std::ranges::all_of(model_.watchlist,
                                [](gint32 id) {
                                  return zox_watchlist_is_in_list(static_cast<guint32>(id)) !=
                                         FALSE;
                                }),
            "the watchlist holds what the model does");
  }

  Model model_;
};

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  const ReplacedClock clock([] { return fuzz::now; });
  fuzz::Input input(data, size);
  fuzz::clear_cache();
  fuzz::reset_settings();
  fuzz::empty_list();
  fuzz::Walk walk;
  while (!input.empty())
    walk.step(input);
  return 0;
}
