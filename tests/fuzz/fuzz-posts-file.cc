/* SPDX-License-Identifier: LGPL-2.1-or-later */
/* The cache file of the postings, whole and damaged, with and without a table of sections: reading
 * it by sections gives what reading it in one go does, and what was loaded and saved is loaded
 * again. */
#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <velkor/velkor.h>

#include "posting/event_record.h"
#include "store/event_table.h"
#include "store/event_text.h"
#include "store/event_walk.h"
#include "store/posts_layout.h"
#include "support/clock.h"
#include "support/text.h"
#include "tests/fuzz/postings.h"
#include "tests/fuzz/session.h"
#include "tests/support/sandbox.h"
#include "tests/unit/store/sectioned_file.h"

namespace velkor::fuzz {
namespace {

constexpr const char *file_name = "velkor.posts.gz";

/** The postings by id, as the file holds them. */
using Elements = std::map<gint32, std::string>;

std::string element_of(const ZoxEvent &posting) {
  // A text that is empty comes back as none.
  constexpr std::string_view empty = "<![CDATA[]]>";
  std::string element;
  append_element(element, posting);
  for (std::size_t at = element.find(empty); at != std::string::npos; at = element.find(empty)) {
    const std::size_t begin = element.rfind('\n', at) + 1;
    element.erase(begin, element.find('\n', at) + 1 - begin);
  }
  return element;
}

Elements elements_of(GHashTable *table) {
  Elements elements;
  for_each_object(table, [&elements](gpointer key, ZOXEventObject *object) {
    const OwnedEvent posting(zox_event_object_get_event(object));
    elements.emplace(GPOINTER_TO_INT(key), element_of(*posting));
  });
  return elements;
}

Elements load() {
  zox_eventlist_load(core->eventlist, nullptr);
  return elements_of(core->eventlist->tree);
}

/** What reading the file in one go gives. */
Elements read_plainly() {
  const OwnedString text(zox_file_load("velkor.posts", 1));
  if (!text)
    return {};
  const OwnedObject<ZOXEventlist> other(zox_eventlist_new());
  const ZoxErrorCode code = zox_events_parse(text.get(), &other->tree, nullptr, nullptr, 1);
  return code == 0 ? elements_of(other->tree) : Elements();
}

/** The file that the library itself makes of postings. */
std::string saved_file(Input &input) {
  empty_list();
  for (unsigned count = input.byte(); count > 0; --count)
    zox_eventlist_add_or_replace_event(core->eventlist, take_posting(input).get());
  zox_eventlist_save(core->eventlist);
  return test::read_file(cache_directory() / file_name);
}

std::string file_in_sections(Input &input) {
  std::vector<test::SectionText> sections(input.below(5));
  for (test::SectionText &section : sections) {
    section.level = static_cast<int>(input.below(10));
    section.digest = input.byte();
    section.text = input.text();
  }
  return test::sectioned_file(sections, input.byte());
}

std::string gzip_of(std::string_view text) {
  test::write_gzip(cache_directory() / file_name, text);
  return test::read_file(cache_directory() / file_name);
}

/** Changes one number of the table, whose checksum is right all the same. */
void change_table(std::string &file, Input &input) {
  std::optional<PostsLayout> layout = decode_header(file);
  if (!layout)
    return;
  const std::size_t header = header_size(layout->sections.size());
  const unsigned place = input.below(7);
  const auto number = static_cast<std::uint32_t>(input.number());
  if (place == 0)
    layout->seed = number;
  else if (place == 1)
    layout->first_size = number;
  else if (place == 2)
    layout->last_size = number;
  else if (!layout->sections.empty()) {
    PostsSection &section = layout->sections[input.byte() % layout->sections.size()];
    if (place == 3)
      section.compressed_size = number;
    else if (place == 4)
      section.text_size = number;
    else if (place == 5)
      section.checksum = number;
    else
      section.digest = number;
  }
  file.replace(0, header, encode_header(*layout));
}

void damage(std::string &file, Input &input) {
  const unsigned kind = input.below(4);
  if (kind == 0)
    return change_table(file, input);
  const auto number = static_cast<std::size_t>(input.number());
  if (kind == 1 && !file.empty())
    file[number % file.size()] ^= static_cast<char>(input.byte());
  else if (kind == 2)
    file.resize(number % (file.size() + 1));
  else
    file += input.text();
}

std::string take_file(Input &input) {
  std::string file;
  switch (input.below(4)) {
  case 0:
    return std::string(input.rest());
  case 1:
    file = gzip_of(input.view());
    break;
  case 2:
    file = file_in_sections(input);
    break;
  default:
    file = saved_file(input);
  }
  for (unsigned count = input.below(4); count > 0; --count)
    damage(file, input);
  return file;
}

/** What a saved file keeps of these postings. */
Elements kept(Elements elements) {
  for_each_held_event(core->eventlist->tree, [&elements](gpointer, const ZoxEvent &posting) {
    if (is_long_deleted(posting, current_time()))
      elements.erase(posting.postId);
  });
  return elements;
}

/**
 * Whether the file gives everything back as it is: XML makes a line feed of a carriage return, and
 * a number has ten characters at most.
 */
bool comes_back(const Elements &elements) {
  constexpr gint32 lowest_id = -999'999'999;
  return std::ranges::all_of(elements, [](const auto &entry) {
    return entry.first >= lowest_id && entry.second.find('\r') == std::string::npos;
  });
}

void save_and_load() {
  const Elements before = kept(elements_of(core->eventlist->tree));
  require(zox_eventlist_save(core->eventlist) == 1, "the list can be saved");
  const Elements after = load();
  if (comes_back(before))
    require(after == before, "what was saved is loaded");
  require(read_plainly() == after, "any reader reads what was saved");
}

}  // namespace
}  // namespace velkor::fuzz

using namespace velkor;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  fuzz::start_session();
  fuzz::Input input(data, size);
  fuzz::clear_cache();
  fuzz::reset_settings();
  const std::string file = fuzz::take_file(input);
  fuzz::write_cache_file(fuzz::file_name, file);
  const fuzz::Elements loaded = fuzz::load();
  fuzz::require(fuzz::read_plainly() == loaded, "sections give what the whole file gives");
  fuzz::save_and_load();
  while (!input.empty()) {
    zox_eventlist_add_or_replace_event(core->eventlist, fuzz::take_posting(input).get());
    fuzz::save_and_load();
  }
  return 0;
}
