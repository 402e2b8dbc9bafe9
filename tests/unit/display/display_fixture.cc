/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "display_fixture.h"

#include <velkor/zox_category.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_events_sort.h>
#include <velkor/zox_file.h>
#include <velkor/zox_filterlist.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_splitted_list.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

namespace velkor::test {
namespace {

ZoxForum *one_reaction() {
  ZoxReactie *reactie = zox_events_forum_reactie_new();
  reactie->messId = 9;
  reactie->author = zox_string_new("lezer");
  reactie->body = zox_string_new("mooi");
  reactie->stamp = 1234567890;
  reactie->kudos = 3;
  reactie->avatar = zox_string_new("a.png");
  ZoxForum *forum = zox_events_forum_new();
  forum->reactions = g_slist_append(nullptr, reactie);
  return forum;
}

void set_texts(ZoxEvent &event) {
  event.fName = zox_string_new("naam.nzb");
  event.title = zox_string_new("Een <titel> & meer");
  event.poster = zox_string_new("iemand");
  event.link = zox_string_new("www.example.org/x");
  event.tag = zox_string_new("vrij & <woord>");
  event.ann = zox_string_new("eerste regel\ntweede regel");
  event.des = zox_string_new("omschrijving");
  event.sig = zox_string_new("groet");
  event.img = zox_string_new("http://www.example.org/i.jpg");
  event.reason = zox_string_new("dubbel");
}

void set_numbers(ZoxEvent &event) {
  event.stamp = 1234567890;
  event.updated = (gint64{1} << 32) + 5;
  event.status = -2;
  event.rating = 42;
  event.cat = 0;
  event.sCat = 3;
  event.fType = 1;
  event.files = 50;
  event.fStart = 2;
  event.parType = 6;
  event.pars = 8;
  event.blockSize = 384000;
  event.view = 123;
  event.kudos = -4;
  event.locked = 1;
  event.watchlistUpdated = 1;
  event.watcherHit = 1;
}

}  // namespace

DisplayTest::DisplayTest() {
  zox_file_set_data_dir("/data/my files");
  zox_tags_init();
  add_group(17, "alt.binaries.tv");
  add_group(4, "comp.os");
  core->config->prevCheck = 1700000000;
  core->eventlist = zox_eventlist_new();
}

OwnedEvent DisplayTest::bare_event(gint32 postId) {
  OwnedEvent event(zox_event_new());
  event->postId = postId;
  return event;
}

OwnedEvent DisplayTest::full_event() {
  OwnedEvent event(zox_event_new());
  event->postId = 4711;
  set_numbers(*event);
  set_texts(*event);
  event->groups = zox_splitted_list_split("|17|4|");
  event->tags = zox_splitted_list_split("|a0|a1|z9|a2|b0|");
  event->mp3Tracks = zox_splitted_list_split("|01 - begin|02 - einde|");
  event->forum = one_reaction();
  return event;
}

void DisplayTest::add_group(guint32 id, const char *name) {
  ZoxGroup *group = zox_group_new();
  group->id = id;
  group->groupName = zox_string_new(name);
  core->groups = g_slist_append(core->groups, group);
}

void DisplayTest::add_event(const ZoxEvent &event) {
  zox_eventlist_add_or_replace_event(core->eventlist, &event);
}

void DisplayTest::show_every_category() {
  core->filterlist = zox_filterlist_new();
  const OwnedFilter filter(zox_filter_new_filter());
  for (filter->cat = 0; filter->cat < 4; ++filter->cat)
    zox_filterlist_append_filter(core->filterlist, filter.get());
  zox_categories_init();
}

std::string DisplayTest::print(const ZoxEvent &event, bool indent, gint32 position,
                               ZoxTextFunc textFunc) {
  return take(zox_events_sort_print(&event, indent ? 1 : 0, position, textFunc));
}

std::string take(ZoxString *text) {
  const OwnedString held(text);
  return std::string(text->str, text->len);
}

std::string golden(const std::string &name) {
  return read_file(std::filesystem::path(VELKOR_TEST_DIR) / "golden" / name);
}

std::string content_of(const std::string &xml, const std::string &element) {
  const std::string opening = "<" + element + ">";
  const std::size_t start = xml.find(opening);
  if (start == std::string::npos)
    return "(absent)";
  const std::size_t begin = start + opening.size();
  std::string content = xml.substr(begin, xml.find("</" + element + ">", begin) - begin);
  if (content.starts_with("<![CDATA["))
    content = content.substr(9, content.size() - 12);
  return content;
}

std::size_t count_of(const std::string &text, const std::string &part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

ZoxString *in_braces(ZoxString *text) {
  ZoxString *converted = g_string_new(nullptr);
  g_string_printf(converted, "{%s}", text->str);
  return converted;
}

}  // namespace velkor::test
