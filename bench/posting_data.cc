/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/posting_data.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace velkor::bench {
namespace {

constexpr std::int32_t base_id = 1'000'000;
constexpr std::int64_t day{86400};
constexpr int deleted = -2;

constexpr std::array vocabulary{
    "linux", "debian",   "seizoen",   "aflevering", "album", "complete", "collectie", "nieuwe",
    "deel",  "muziek",   "live",      "concert",    "spel",  "editie",   "versie",    "handboek",
    "film",  "klassiek", "verzameld", "jaargang",   "1080p", "x264",     "flac",      "subs",
};

std::string number_element(const std::string &name, std::int64_t number) {
  return "    <" + name + ">" + std::to_string(number) + "</" + name + ">\n";
}

std::string text_element(const std::string &name, const std::string &text) {
  return "    <" + name + "><![CDATA[" + text + "]]></" + name + ">\n";
}

std::string stored_list(std::initializer_list<std::string> items) {
  std::string text = "|";
  for (const std::string &item : items)
    text += item + "|";
  return text;
}

}  // namespace

std::int32_t id_of(std::int64_t number) {
  return base_id + static_cast<std::int32_t>(number);
}

std::int64_t Timeline::stamp_of(std::int64_t number) const {
  if (number < aged)
    return now - 16 * day + number * day / aged;
  // What is newer than the stock, up to a twelfth of it, still lies before now.
  return now - 13 * day + (number - aged) * 12 * day / std::max(postings - aged, 1);
}

std::string PostingData::some(const char *what, unsigned bound) {
  return what + std::to_string(below(bound));
}

std::string PostingData::words(unsigned count) {
  std::string text;
  for (unsigned word = 0; word < count; ++word) {
    text += word == 0 ? "" : " ";
    text += below(600) == 0 ? rare_word : vocabulary[below(vocabulary.size())];
  }
  return text;
}

std::string PostingData::texts() {
  title_ = words(4 + below(5));
  std::string file_name = title_;
  std::ranges::replace(file_name, ' ', '.');
  std::string text =
      text_element("Groups", stored_list({some("", newsgroups), some("", newsgroups)}));
  text += text_element("FName", file_name);
  text += text_element("Title", title_);
  text += text_element("Poster", some("plaatser", 5000));
  if (below(2) == 0)
    text += text_element("Link", some("http://www.link.example/titel/", 1'000'000));
  return text;
}

std::string PostingData::categories() {
  std::string text = number_element("Rating", below(100));
  text += number_element("Cat", below(4));
  text += number_element("SCat", below(5));
  tags_ = stored_list({some("a", 6), some("b", 9), some("c", 20)});
  text += text_element("Tags", tags_);
  if (below(10) == 0)
    text += text_element("Tag", words(1));
  return text + "  </Event>\n";
}

std::string PostingData::make(std::int64_t number, std::int64_t updated, int status) {
  std::string text = "  <Event Code=\"1\">\n";
  text += number_element("PostID", id_of(number));
  text += number_element("Stamp", timeline_.stamp_of(number));
  text += number_element("Updated", updated);
  text += number_element("Status", status);
  text += texts();
  return text + categories();
}

std::string PostingData::element(std::int64_t number) {
  const std::int64_t updated = timeline_.stamp_of(number) + below(day);
  return make(number, updated, some_status());
}

std::string PostingData::changed_element(std::int64_t number) {
  return make(number, timeline_.now, some_status());
}

std::string PostingData::deleted_element(std::int64_t number) {
  return make(number, timeline_.now, deleted);
}

std::string document_of(std::int32_t count) {
  PostingData data({.postings = count});
  std::string text = "<?xml version=\"1.0\"?>\n<Events>\n";
  for (std::int32_t number = 0; number < count; ++number)
    text += data.element(number);
  return text + "</Events>\n";
}

}  // namespace velkor::bench
