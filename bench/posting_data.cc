/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "bench/posting_data.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace velkor::bench {
namespace {

constexpr std::int32_t base_id = 1'000'000;

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

std::int64_t stamp_of(std::int64_t number) {
  return 1'300'000'000 + number * 37;
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

std::string PostingData::next_element() {
  const std::int64_t stamp = stamp_of(id_ - base_id);
  title_ = words(4 + below(5));
  std::string file_name = title_;
  std::ranges::replace(file_name, ' ', '.');
  std::string text = "  <Event Code=\"1\">\n";
  text += number_element("PostID", id_++);
  text += number_element("Stamp", stamp);
  text += number_element("Updated", stamp + below(86400));
  text += number_element("Status", static_cast<int>(below(3)) - 1);
  text += text_element("Groups", stored_list({some("", newsgroups), some("", newsgroups)}));
  text += text_element("FName", file_name);
  text += text_element("Title", title_);
  text += text_element("Poster", some("plaatser", 5000));
  if (below(2) == 0)
    text += text_element("Link", some("http://www.link.example/titel/", 1'000'000));
  text += number_element("Rating", below(100));
  text += number_element("Cat", below(4));
  text += number_element("SCat", below(5));
  text += text_element("Tags", stored_list({some("a", 6), some("b", 9), some("c", 20)}));
  if (below(10) == 0)
    text += text_element("Tag", words(1));
  return text + "  </Event>\n";
}

std::string document_of(std::int32_t count, std::int32_t first_id) {
  PostingData data(first_id);
  std::string text = "<?xml version=\"1.0\"?>\n<Events>\n";
  for (std::int32_t number = 0; number < count; ++number)
    text += data.next_element();
  return text + "</Events>\n";
}

}  // namespace velkor::bench
