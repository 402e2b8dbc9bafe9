/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/snapshot_reader.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_config.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_filter.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>
#include <velkor/zox_watchlist.h>

#include "library/category_words.h"
#include "model/shown_text.h"
#include "support/numbers.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::app {
namespace {

using OwnedFilter = std::unique_ptr<ZoxFilter, ReleaseWith<zox_filter_free_filter>>;

bool is_set(const GString *text) noexcept {
  return text != nullptr && text->len > 0;
}

class Reader {
public:
  explicit Reader(const std::unordered_set<std::int32_t> &hits)
      : hits_(hits), everything_(zox_filter_new_filter()) {
    add_entry({.kind = TreeEntry::Kind::everything}, *everything_);
    for (const ZoxCategory *category : Items<ZoxCategory>(zox_categories_get()))
      add_entry(
          {.kind = category->isMain != 0 ? TreeEntry::Kind::category : TreeEntry::Kind::filter,
           .name = shown_line(view_of(category->name)),
           .category = category->id},
          *category->filter);
  }

  SharedSnapshot read() {
    for (const ZoxGroup *group : Items<ZoxGroup>(zox_groups_get()))
      if (group->groupName != nullptr)
        snapshot_.words.newsgroups.try_emplace(
            std::to_string(group->id),
            OwnedText(zox_string_strip_newsgroup(group->groupName)).get());
    zox_eventlist_visit(core->eventlist, 0, on_posting, this);
    snapshot_.table.complete();
    for (const GString *id : Items<GString>(zox_watchlist_get()))
      snapshot_.watched.insert(static_cast<std::int32_t>(leading_number(id->str)));
    snapshot_.has_account = is_set(core->config->username) && is_set(core->config->password);
    return std::make_shared<const Snapshot>(std::move(snapshot_));
  }

private:
  void add_entry(TreeEntry entry, const ZoxFilter &filter) {
    snapshot_.tree.push_back(std::move(entry));
    filters_.push_back(&filter);
  }

  static void on_posting(const ZoxEvent *posting, gpointer self) noexcept {
    static_cast<Reader *>(self)->add(*posting);
  }

  void add(const ZoxEvent &posting) {
    // After the first update everything would be new, which says nothing.
    const bool is_new = core->config->prevCheck > 0 && posting.stamp >= core->config->prevCheck;
    const Row row = snapshot_.table.add(
        {.id = posting.postId,
         .title = shown_line(view_of(posting.title)),
         .poster = shown_line(view_of(posting.poster)),
         .stamp = posting.stamp,
         .rating = posting.rating * 100 / core->config->ratingScale,
         .status = posting.status,
         .category = posting.cat,
         .sub_category = posting.sCat,
         .marks = static_cast<std::uint8_t>((is_new ? mark_new : 0) |
                                            (hits_.contains(posting.postId) ? mark_hit : 0))});
    note_words(posting);
    note_labels(posting);
    for (std::size_t place = 0; place < filters_.size(); ++place)
      if (zox_filter_accepts(filters_[place], &posting, 0) != FALSE)
        snapshot_.tree[place].insert(row, is_new);
  }

  void note_labels(const ZoxEvent &posting) {
    snapshot_.tags.begin_row();
    for (const GString *code : Items<GString>(posting.tags)) {
      key_.assign(1, static_cast<char>(posting.cat)).append(code->str, code->len);
      add_label(snapshot_.tags, tag_numbers_, [&] { return tag_name(code, posting.cat); });
    }
    snapshot_.newsgroups.begin_row();
    for (const GString *number : Items<GString>(posting.groups)) {
      key_.assign(number->str, number->len);
      add_label(snapshot_.newsgroups, newsgroup_numbers_, [this] { return newsgroup_name(); });
    }
  }

  using Numbers = std::unordered_map<std::string, Labels::Number>;

  /** Adds the label of the key to the row; its name is only looked up when it is a new one. */
  template <typename NameOf>
  void add_label(Labels &labels, Numbers &numbers, const NameOf &name_of) {
    auto place = numbers.find(key_);
    if (place == numbers.end())
      place = numbers.emplace(key_, labels.add_name(name_of())).first;
    labels.add(place->second);
  }

  static std::string tag_name(const GString *code, std::int32_t category) {
    const ZoxTag *tag = zox_tag_find(code, category);
    return shown_line(view_of(tag == nullptr ? code : tag->name));
  }

  [[nodiscard]] std::string newsgroup_name() const {
    const auto place = snapshot_.words.newsgroups.find(key_);
    return place == snapshot_.words.newsgroups.end() ? key_ : place->second;
  }

  /** The words for numbers that have not occurred before. */
  void note_words(const ZoxEvent &posting) {
    const std::pair category(posting.cat, posting.sCat);
    if (!snapshot_.words.categories.contains(category))
      snapshot_.words.categories.emplace(
          category, category_words(posting.cat, static_cast<std::uint32_t>(posting.sCat)));
    if (!snapshot_.words.states.contains(posting.status))
      snapshot_.words.states.emplace(posting.status, zox_string_status(posting.status));
  }

  const std::unordered_set<std::int32_t> &hits_;
  OwnedFilter everything_;
  std::vector<const ZoxFilter *> filters_;  // of the entries of the tree
  Snapshot snapshot_;
  std::string key_;  // of the label that is looked for
  Numbers tag_numbers_;
  Numbers newsgroup_numbers_;
};

}  // namespace

SharedSnapshot read_snapshot(const std::unordered_set<std::int32_t> &hits) {
  return Reader(hits).read();
}

}  // namespace velkor::app
