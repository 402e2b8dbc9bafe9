/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/sample_data/sample_data.h"

#include <algorithm>

#include "zox-server/sample_data/words.h"

namespace velkor::server {
namespace {

constexpr std::int64_t day = std::int64_t{24} * 3600;
/** The percentage of postings by members who can log in. */
constexpr std::int64_t member_percentage = 2;

/** Most postings are from the last two weeks, more of them recent; a few are older. */
std::int64_t draw_age(Random &random) {
  if (random.chance(6))
    return 14 * day + random.below(46 * day);
  constexpr std::int64_t scale = 1 << 20;
  const std::int64_t draw = random.below(scale);
  return 60 + draw * draw / scale * (14 * day) / scale;
}

Profile generate_profile(Random &random, const std::string &name, std::int64_t now) {
  Profile profile;
  profile.joined = now - random.between(60, 1500) * day;
  profile.rank = random.between(1, 6);
  profile.status = random.below(3);
  if (random.chance(40))
    profile.avatar = "http://beeld.zox.example/avatar/" + name + ".png";
  if (random.chance(30))
    profile.email = name + "@post.example";
  if (random.chance(30))
    profile.info = random.one_of(words::sentences);
  if (random.chance(20))
    profile.site = "http://www." + name + ".example/";
  if (random.chance(20))
    profile.hobby = random.one_of(words::hobbies);
  if (random.chance(25)) {
    profile.provider = random.one_of(words::places) + " Net";
    profile.news_server = "news." + name + ".example";
  }
  profile.profile_status = random.below(2);
  return profile;
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

SampleData::SampleData(Service &service, std::uint64_t seed)
    : service_(service), random_(seed + static_cast<std::uint64_t>(service.postings.highest_id())) {
}

void SampleData::fill(std::int64_t count) {
  Transaction transaction(service_.database);
  add_newsgroups();
  add_posters();
  add_postings(count);
  service_.dumps.publish();
  transaction.commit();
}

void SampleData::add_postings(std::int64_t count) {
  const std::int64_t now = service_.clock.now();
  const std::vector<std::string> members = service_.accounts.with_password();
  PostingGenerator generator(random_, newsgroup_numbers());
  for (const std::int64_t stamp : draw_stamps(random_, count, now)) {
    Posting posting = generator.generate(stamp, now);
    if (!members.empty() && random_.chance(member_percentage))
      posting.poster = members[static_cast<std::size_t>(random_.below(std::ssize(members)))];
    const std::int64_t id = service_.postings.add(posting);
    if (random_.chance(25))
      add_reactions(id, stamp, now);
  }
}

void SampleData::add_reactions(std::int64_t posting, std::int64_t since, std::int64_t now) {
  Reaction reaction;
  reaction.posting = posting;
  reaction.stamp = since;
  for (std::int64_t count = random_.between(1, 5); count > 0; --count) {
    const std::int64_t span = now - reaction.stamp;
    if (span < 2)
      return;
    reaction.stamp += random_.between(1, std::max<std::int64_t>(span / 2, 1));
    reaction.author = poster_name(random_.below(poster_count));
    reaction.body = random_.one_of(words::reactions);
    service_.forum.add_old(reaction);
  }
}

void SampleData::add_newsgroups() {
  const std::int64_t known_since = service_.clock.now() - 100 * day;
  for (const std::string &name : newsgroup_names())
    service_.groups.add(name, known_since);
}

void SampleData::add_posters() {
  const std::int64_t now = service_.clock.now();
  for (std::int64_t number = 0; number < poster_count; ++number) {
    const Account account{poster_name(number), "", false};
    service_.accounts.put(account, 0);
    service_.accounts.set_profile(account.name, generate_profile(random_, account.name, now));
    if (random_.chance(8))
      service_.accounts.mark_seen(account.name, now - random_.below(600));
  }
}

std::vector<std::int64_t> SampleData::newsgroup_numbers() {
  std::vector<std::int64_t> numbers;
  for (const Group &group : service_.groups.newer_than(0))
    numbers.push_back(group.id);
  return numbers;
}

Changed SampleData::change(const Change &wanted) {
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
    withdraw(id, state_deleted, changed.stamp);
  for (const std::int64_t id : changed.removed)
    withdraw(id, state_removed, changed.stamp);
  for (std::int64_t count = wanted.newsgroups; count > 0; --count)
    service_.groups.add("alt.binaries.nieuw." + std::to_string(service_.groups.count() + 1),
                        changed.stamp);
  changed.added = add_spots(wanted.added, changed.stamp);
  transaction.commit();
  return changed;
}

/** Moves `count` random ids out of `live`. */
std::vector<std::int64_t> SampleData::draw(std::vector<std::int64_t> &live, std::int64_t count) {
  std::vector<std::int64_t> drawn;
  for (; count > 0 && !live.empty(); --count) {
    std::swap(live[static_cast<std::size_t>(random_.below(std::ssize(live)))], live.back());
    drawn.push_back(live.back());
    live.pop_back();
  }
  return drawn;
}

std::vector<std::int64_t> SampleData::add_spots(std::int64_t count, std::int64_t stamp) {
  std::vector<std::int64_t> ids;
  PostingGenerator generator(random_, newsgroup_numbers());
  for (; count > 0; --count) {
    Posting posting = generator.generate(stamp, stamp);
    posting.status = std::max<std::int64_t>(posting.status, state_spot);
    posting.reason.clear();
    ids.push_back(service_.postings.add(posting));
  }
  return ids;
}

/** Unfinished postings advance to their next state; others get a mark in their title. */
void SampleData::update(std::int64_t id, std::int64_t stamp) {
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

void SampleData::withdraw(std::int64_t id, PostingState state, std::int64_t stamp) {
  Posting posting = service_.postings.find(id).value();
  posting.status = state;
  posting.reason = random_.one_of(words::removal_reasons);
  posting.updated = stamp;
  service_.postings.replace(posting);
}

}  // namespace velkor::server
