/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/stock/stock.h"

#include <algorithm>

#include "zox-server/stock/words.h"

namespace velkor::server {
namespace {

constexpr std::int64_t day = 24 * 3600;

/** Most postings are of the last two weeks, the younger the more; a few are older. */
std::int64_t draw_age(Random &random) {
  if (random.chance(6))
    return 14 * day + random.below(46 * day);
  constexpr std::int64_t scale = 1 << 20;
  const std::int64_t draw = random.below(scale);
  return 60 + draw * draw / scale * (14 * day) / scale;
}

std::vector<std::int64_t> draw_stamps(Random &random, std::int64_t count, std::int64_t now) {
  std::vector<std::int64_t> stamps;
  stamps.reserve(static_cast<std::size_t>(count));
  for (; count > 0; --count)
    stamps.push_back(now - draw_age(random));
  std::ranges::sort(stamps);
  return stamps;
}

}  // namespace

Stock::Stock(Service &service, std::uint64_t seed)
    : service_(service), random_(seed + static_cast<std::uint64_t>(service.postings.highest_id())) {
}

void Stock::fill(std::int64_t count) {
  Transaction transaction(service_.database);
  add_newsgroups();
  add_posters();
  const std::int64_t now = service_.clock.now();
  SpotMaker maker(random_, newsgroup_numbers());
  for (const std::int64_t stamp : draw_stamps(random_, count, now))
    service_.postings.add(maker.make(stamp, now));
  service_.dumps.seal();
  transaction.commit();
}

void Stock::add_newsgroups() {
  const std::int64_t known_since = service_.clock.now() - 100 * day;
  for (const std::string &name : newsgroup_names())
    service_.groups.add(name, known_since);
}

void Stock::add_posters() {
  const std::int64_t now = service_.clock.now();
  for (std::int64_t number = 0; number < poster_count; ++number) {
    const Account account{poster_name(number), "", false};
    service_.accounts.put(account, now - random_.between(60, 1500) * day);
    if (random_.chance(8))
      service_.accounts.seen(account.name, now - random_.below(600));
  }
}

std::vector<std::int64_t> Stock::newsgroup_numbers() {
  std::vector<std::int64_t> numbers;
  for (const Group &group : service_.groups.later_than(0))
    numbers.push_back(group.id);
  return numbers;
}

Changed Stock::change(const Change &wanted) {
  Transaction transaction(service_.database);
  Changed changed;
  changed.stamp = service_.change_stamp();
  std::vector<std::int64_t> live = service_.postings.live_ids();
  changed.updated = draw(live, wanted.updated);
  changed.deleted = draw(live, wanted.deleted);
  changed.removed = draw(live, wanted.removed);
  for (const std::int64_t id : changed.updated)
    update(id, changed.stamp);
  for (const std::int64_t id : changed.deleted)
    take_away(id, state_deleted, changed.stamp);
  for (const std::int64_t id : changed.removed)
    take_away(id, state_removed, changed.stamp);
  for (std::int64_t count = wanted.newsgroups; count > 0; --count)
    service_.groups.add("alt.binaries.nieuw." + std::to_string(service_.groups.count() + 1),
                        changed.stamp);
  changed.added = add_spots(wanted.added, changed.stamp);
  transaction.commit();
  return changed;
}

/** Takes `count` ids out of `live`. */
std::vector<std::int64_t> Stock::draw(std::vector<std::int64_t> &live, std::int64_t count) {
  std::vector<std::int64_t> drawn;
  for (; count > 0 && !live.empty(); --count) {
    std::swap(live[static_cast<std::size_t>(random_.below(std::ssize(live)))], live.back());
    drawn.push_back(live.back());
    live.pop_back();
  }
  return drawn;
}

std::vector<std::int64_t> Stock::add_spots(std::int64_t count, std::int64_t stamp) {
  std::vector<std::int64_t> ids;
  SpotMaker maker(random_, newsgroup_numbers());
  for (; count > 0; --count) {
    Posting posting = maker.make(stamp, stamp);
    posting.status = std::max<std::int64_t>(posting.status, state_spot);
    posting.reason.clear();
    ids.push_back(service_.postings.add(posting));
  }
  return ids;
}

/** What is under way gets on; what is there gets another rating and a mark in its title. */
void Stock::update(std::int64_t id, std::int64_t stamp) {
  Posting posting = service_.postings.find(id).value();
  if (posting.status == state_announced)
    posting.status = state_uploading;
  else if (posting.status == state_uploading)
    posting.status = state_ready;
  else
    posting.title += " [bijgewerkt]";
  posting.rating = random_.between(100, 1000);
  posting.updated = stamp;
  service_.postings.replace(posting);
}

void Stock::take_away(std::int64_t id, PostingState state, std::int64_t stamp) {
  Posting posting = service_.postings.find(id).value();
  posting.status = state;
  posting.reason = random_.one_of(words::removal_reasons);
  posting.updated = stamp;
  service_.postings.replace(posting);
}

}  // namespace velkor::server
