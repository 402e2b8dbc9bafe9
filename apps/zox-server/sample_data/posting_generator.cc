/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/sample_data/posting_generator.h"

#include <algorithm>

#include "zox-server/sample_data/words.h"

namespace velkor::server {
namespace {

constexpr std::int64_t hour = 3600;
constexpr std::int64_t day = 24 * hour;

/** How many codes each tag group (a, b, c and d) of a main category has. */
constexpr std::array<std::array<std::int64_t, 4>, 4> tag_counts{
    {{6, 6, 6, 28}, {5, 5, 10, 21}, {10, 5, 10, 0}, {6, 26, 0, 0}}};
constexpr std::array<char, 4> tag_letters{'a', 'b', 'c', 'd'};

struct StateShare {
  std::int64_t percent;
  PostingState state;
};
constexpr std::array<StateShare, 7> state_shares{{{24, state_spot},
                                                  {55, state_ready},
                                                  {8, state_announced},
                                                  {7, state_uploading},
                                                  {1, state_unsupported},
                                                  {3, state_deleted},
                                                  {2, state_removed}}};

PostingState draw_state(Random &random) {
  std::int64_t draw = random.below(100);
  for (const StateShare &share : state_shares) {
    if ((draw -= share.percent) < 0)
      return share.state;
  }
  return state_ready;
}

const std::array<std::int64_t, 4> &counts_of(std::int64_t category) {
  return tag_counts[static_cast<std::size_t>(category)];
}

/** A file name made from the title: other characters than ASCII letters and digits become dots. */
std::string file_name_of(const std::string &title) {
  std::string name;
  for (const char character : title.substr(0, 60)) {
    if (g_ascii_isalnum(character))
      name += g_ascii_tolower(character);
    else if (!name.empty() && name.back() != '.')
      name += '.';
  }
  return name + (name.ends_with('.') ? "rar" : ".rar");
}

std::string sentences(Random &random, std::int64_t count) {
  std::string text;
  for (; count > 0; --count)
    text += (text.empty() ? "" : random.chance(30) ? "\n" : " ") + random.one_of(words::sentences);
  return text;
}

std::string generate_tracks(Random &random) {
  std::string tracks;
  const std::int64_t count = random.between(6, 16);
  for (std::int64_t number = 1; number <= count; ++number) {
    tracks += number == 1 ? "" : track_separator;
    tracks += std::to_string(number) + ". " + random.one_of(words::episode_titles);
  }
  return tracks;
}

}  // namespace

Posting PostingGenerator::generate(std::int64_t stamp, std::int64_t now) {
  Posting posting;
  posting.stamp = stamp;
  classify(posting);
  describe(posting);
  add_details(posting);
  set_state(posting, now);
  return posting;
}

void PostingGenerator::classify(Posting &posting) {
  const std::int64_t draw = random_.below(100);
  posting.category = draw < 50 ? 0 : draw < 75 ? 1 : draw < 88 ? 2 : 3;
  posting.sub_category = random_.below(counts_of(posting.category)[0]);
  posting.tags = tags_of(posting.category, posting.sub_category);
  posting.groups = newsgroups_of(posting.category);
  // Some postings give the sub-category only in their tags.
  if (random_.chance(10))
    posting.sub_category = -1;
}

std::string PostingGenerator::tags_of(std::int64_t category, std::int64_t sub_category) {
  std::vector<std::string> tags;
  for (std::size_t group = 1; group < tag_letters.size(); ++group) {
    const std::int64_t count = counts_of(category)[group];
    if (count > 0 && random_.chance(85))
      tags.push_back(tag_letters[group] + std::to_string(random_.below(count)));
  }
  const auto place = tags.begin() + random_.below(std::ssize(tags) + 1);
  tags.insert(place, "a" + std::to_string(sub_category));
  return join_list(tags);
}

std::string PostingGenerator::newsgroups_of(std::int64_t category) {
  std::vector<std::string> numbers;
  const std::int64_t quarter = std::ssize(newsgroups_) / 4;
  for (std::int64_t count = random_.between(1, 3); count > 0 && quarter > 0; --count) {
    const std::int64_t place = category * quarter + random_.below(quarter);
    const std::string number = std::to_string(newsgroups_[static_cast<std::size_t>(place)]);
    if (std::ranges::find(numbers, number) == numbers.end())
      numbers.push_back(number);
  }
  return join_list(numbers);
}

void PostingGenerator::describe(Posting &posting) {
  posting.title = generate_title(random_, posting.category);
  posting.poster = poster_name(random_.below(poster_count));
  if (random_.chance(80))
    posting.file_name = file_name_of(posting.title);
  if (random_.chance(35)) {
    const std::string number = std::to_string(random_.between(1000, 99999));
    posting.link = (random_.chance(70) ? "http://www.naslag.example/titel?id=" + number + "&taal=nl"
                                       : "www.naslag.example/" + number);
  }
  if (random_.chance(25))
    posting.tag = random_.one_of(words::free_tags);
  posting.rating = random_.chance(30) ? 0 : random_.between(100, 1000);
}

void PostingGenerator::add_details(Posting &posting) {
  if (random_.chance(10))
    posting.announcement = "Vanavond rond " + std::to_string(random_.between(19, 23)) + ":00 uur.";
  posting.description = sentences(random_, random_.between(1, 4));
  if (random_.chance(30))
    posting.signature = random_.one_of(words::signatures);
  if (posting.category == 1 && random_.chance(40))
    posting.tracks = generate_tracks(random_);
  if (random_.chance(40))
    posting.image =
        "http://beeld.zox.example/" + std::to_string(random_.between(10000, 99999)) + ".jpg";
  posting.file_type = random_.below(4);
  posting.files = random_.between(1, 120);
  posting.file_start = 1;
  posting.par_type = random_.below(3);
  posting.pars = random_.below(30);
  posting.block_size = random_.chance(50) ? 384000 : 0;
  posting.views = random_.below(4000);
  posting.kudos = random_.below(60);
  posting.locked = random_.chance(2) ? 1 : 0;
}

void PostingGenerator::set_state(Posting &posting, std::int64_t now) {
  const std::int64_t age = std::max<std::int64_t>(now - posting.stamp, 0);
  posting.status = draw_state(random_);
  posting.updated = posting.stamp;
  if (posting.status <= state_deleted) {
    posting.updated = std::max(posting.stamp, now - random_.below(20 * hour));
    posting.reason = random_.one_of(words::removal_reasons);
  } else if (random_.chance(30)) {
    posting.updated += random_.below(std::min(age, 3 * day) + 1);
  }
}

}  // namespace velkor::server
