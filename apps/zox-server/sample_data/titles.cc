/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/sample_data/posting_generator.h"
#include "zox-server/sample_data/words.h"

namespace velkor::server {
namespace {

std::string two_digits(std::int64_t number) {
  return (number < 10 ? "0" : "") + std::to_string(number);
}

std::string thing(Random &random) {
  if (random.chance(55))
    return "De " + random.one_of(words::dutch_adjectives) + " " + random.one_of(words::dutch_nouns);
  return "The " + random.one_of(words::english_adjectives) + " " +
         random.one_of(words::english_nouns);
}

std::string year(Random &random) {
  return std::to_string(random.between(1958, 2009));
}

std::string film_title(Random &random) {
  switch (random.below(4)) {
  case 0:
    return thing(random) + " S" + two_digits(random.between(1, 9)) + "E" +
           two_digits(random.between(1, 24)) + " - " + random.one_of(words::episode_titles);
  case 1:
    return thing(random) + " van " + random.one_of(words::places) + " (" + year(random) + ")";
  case 2:
    return "Het geheim van " + random.one_of(words::places) + " [NL & EN subs]";
  default:
    return thing(random) + " (" + year(random) + ")";
  }
}

std::string music_title(Random &random) {
  const std::string band =
      random.chance(50) ? random.one_of(words::places) + " " + random.one_of(words::band_words)
                        : thing(random) + " " + random.one_of(words::band_words);
  return band + " - " + random.one_of(words::episode_titles) + " (" + year(random) + ")";
}

std::string game_title(Random &random) {
  const std::string number = random.chance(50) ? " " + std::to_string(random.between(2, 9)) : "";
  return random.one_of(words::english_adjectives) + " " + random.one_of(words::english_nouns) +
         number + ": " + random.one_of(words::episode_titles);
}

std::string program_title(Random &random) {
  return random.one_of(words::program_subjects) + random.one_of(words::program_words) + " " +
         random.one_of(words::editions) + " " + std::to_string(random.between(1, 12)) + "." +
         std::to_string(random.below(10)) + "." + std::to_string(random.below(40));
}

std::string plain_title(Random &random, std::int64_t category) {
  switch (category) {
  case 0:
    return film_title(random);
  case 1:
    return music_title(random);
  case 2:
    return game_title(random);
  default:
    return program_title(random);
  }
}

}  // namespace

std::string generate_title(Random &random, std::int64_t category) {
  std::string title = plain_title(random, category);
  if (random.chance(10))
    title += " [" + random.one_of(words::free_tags) + "]";
  if (random.chance(2)) {
    for (int parts = 0; parts < 6; ++parts)
      title += " + " + plain_title(random, category);
  }
  return title;
}

std::string poster_name(std::int64_t number) {
  const auto starts = std::ssize(words::name_starts);
  const auto ends = std::ssize(words::name_ends);
  const auto start = static_cast<std::size_t>(number % starts);
  const auto end = static_cast<std::size_t>(number / starts % ends);
  const std::int64_t round = number / (starts * ends);
  return std::string(words::name_starts[start]) + std::string(words::name_ends[end]) +
         (round == 0 ? "" : std::to_string(round * 37 + number % 53));
}

std::vector<std::string> newsgroup_names() {
  std::vector<std::string> names;
  for (std::size_t category = 0; category < words::newsgroup_roots.size(); ++category) {
    for (const std::string_view subject : words::newsgroup_subjects[category]) {
      for (const std::string_view end : words::newsgroup_ends)
        names.push_back("alt.binaries." + std::string(words::newsgroup_roots[category]) + "." +
                        std::string(subject) + std::string(end));
    }
  }
  return names;
}

}  // namespace velkor::server
