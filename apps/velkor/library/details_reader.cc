/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "library/details_reader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <velkor/zox_app_core.h>
#include <velkor/zox_category.h>
#include <velkor/zox_config.h>
#include <velkor/zox_event.h>
#include <velkor/zox_eventlist.h>
#include <velkor/zox_events_forum.h>
#include <velkor/zox_string.h>
#include <velkor/zox_tags.h>

#include "model/shown_text.h"
#include "support/owned.h"
#include "support/slist.h"
#include "support/text.h"

namespace velkor::app {
namespace {

using OwnedEvent = std::unique_ptr<ZoxEvent, ReleaseWith<zox_event_free>>;

std::string line_of(const GString *text) {
  return shown_line(view_of(text));
}

std::string lines_of(const GString *text) {
  return shown_lines(view_of(text));
}

/** A web address as a browser takes it; empty for none. */
std::string address_of(const GString *text) {
  const std::string address = line_of(text);
  if (address.empty() || equal_ignoring_case(std::string_view(address).substr(0, 8), "https://"))
    return address;
  return OwnedString(zox_string_add_http(text))->str;
}

std::vector<std::string> texts_of(const GSList *list) {
  std::vector<std::string> texts;
  for (const GString *text : Items<GString>(list))
    texts.push_back(line_of(text));
  return texts;
}

void add_tag(std::vector<TagGroup> &groups, const std::string &group, std::string tag) {
  auto place = std::ranges::find(groups, group, &TagGroup::name);
  if (place == groups.end())
    place = groups.insert(groups.end(), TagGroup{group, {}});
  place->tags.push_back(std::move(tag));
}

/** By group; a code without a name stands for itself. */
std::vector<TagGroup> tags_of(const ZoxEvent &posting) {
  std::vector<TagGroup> groups;
  for (const GString *code : Items<GString>(posting.tags))
    if (const ZoxTag *tag = zox_tag_find(code, posting.cat); tag != nullptr)
      add_tag(groups, line_of(tag->group->name), line_of(tag->name));
    else
      add_tag(groups, "", line_of(code));
  return groups;
}

std::string category_of(const ZoxEvent &posting) {
  std::string words = zox_string_category(posting.cat);
  const std::string sub =
      zox_category_get_scat_name(posting.cat, static_cast<guint32>(posting.sCat));
  return sub.empty() ? words : words + "/" + sub;
}

std::vector<Reaction> reactions_of(const ZoxForum *forum) {
  std::vector<Reaction> reactions;
  if (forum == nullptr)
    return reactions;
  for (const ZoxReactie *reaction : Items<ZoxReactie>(forum->reactions))
    reactions.push_back({.id = reaction->messId,
                         .answers = reaction->reply,
                         .author = line_of(reaction->author),
                         .body = lines_of(reaction->body),
                         .stamp = reaction->stamp,
                         .edited = std::max<std::int64_t>(reaction->edit, 0),
                         .kudos = reaction->kudos});
  return threaded(std::move(reactions));
}

}  // namespace

PostingDetails details_of(const ZoxEvent &posting) {
  return {.id = posting.postId,
          .title = line_of(posting.title),
          .poster = line_of(posting.poster),
          .category = category_of(posting),
          .status = zox_string_status(posting.status),
          .reason = lines_of(posting.reason),
          .stamp = posting.stamp,
          .rating = posting.rating * 100 / core->config->ratingScale,
          .link = address_of(posting.link),
          .image = address_of(posting.img),
          .tags = tags_of(posting),
          .free_tag = line_of(posting.tag),
          .newsgroups = texts_of(posting.groups),
          .file_name = line_of(posting.fName),
          .files = posting.files,
          .par_files = posting.pars,
          .tracks = texts_of(posting.mp3Tracks),
          .announcement = lines_of(posting.ann),
          .description = lines_of(posting.des),
          .signature = lines_of(posting.sig),
          .kudos = posting.kudos,
          .views = posting.view,
          .closed = posting.locked != 0,
          .reactions = reactions_of(posting.forum)};
}

std::optional<PostingDetails> read_details(std::int32_t id) {
  const OwnedEvent posting(zox_eventlist_lookup_id(core->eventlist, id));
  return posting ? std::optional(details_of(*posting)) : std::nullopt;
}

}  // namespace velkor::app
