/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/store/posting.h"
#include "support/numbers.h"

#include <algorithm>
#include <array>

namespace velkor::server {
namespace {

constexpr std::array fields{
    PostingField{"PostID", &Posting::id, Visibility::everywhere},
    PostingField{"Stamp", &Posting::stamp, Visibility::everywhere},
    PostingField{"Updated", &Posting::updated, Visibility::everywhere},
    PostingField{"Status", &Posting::status, Visibility::everywhere},
    PostingField{"FName", &Posting::file_name, Visibility::everywhere},
    PostingField{"Title", &Posting::title, Visibility::everywhere},
    PostingField{"Groups", &Posting::groups, Visibility::everywhere},
    PostingField{"Poster", &Posting::poster, Visibility::everywhere},
    PostingField{"Link", &Posting::link, Visibility::everywhere},
    PostingField{"Cat", &Posting::category, Visibility::everywhere},
    PostingField{"SCat", &Posting::sub_category, Visibility::everywhere},
    PostingField{"Tags", &Posting::tags, Visibility::everywhere},
    PostingField{"Tag", &Posting::tag, Visibility::everywhere},
    PostingField{"Rating", &Posting::rating, Visibility::everywhere},
    PostingField{"Ann", &Posting::announcement, Visibility::details},
    PostingField{"Des", &Posting::description, Visibility::details},
    PostingField{"Sig", &Posting::signature, Visibility::details},
    PostingField{"FType", &Posting::file_type, Visibility::details},
    PostingField{"Files", &Posting::files, Visibility::details},
    PostingField{"FStart", &Posting::file_start, Visibility::details},
    PostingField{"Img", &Posting::image, Visibility::details},
    PostingField{"ParType", &Posting::par_type, Visibility::forum},
    PostingField{"Pars", &Posting::pars, Visibility::forum},
    PostingField{"BlockSize", &Posting::block_size, Visibility::forum},
    PostingField{"View", &Posting::views, Visibility::forum},
    PostingField{"Kudos", &Posting::kudos, Visibility::forum},
    PostingField{"Locked", &Posting::locked, Visibility::forum},
    PostingField{"Reason", &Posting::reason, Visibility::forum},
    PostingField{"Tracks", &Posting::tracks, Visibility::internal},
};

using Number = std::int64_t Posting::*;
using Text = std::string Posting::*;

}  // namespace

std::span<const PostingField> posting_fields() {
  return fields;
}

const PostingField *posting_field(std::string_view name) {
  const auto *const found = std::ranges::find(
      fields, name, [](const PostingField &field) { return std::string_view(field.name); });
  return found == fields.end() ? nullptr : &*found;
}

void set_field(Posting &posting, PostingMember member, const std::string &value) {
  if (const Text *text = std::get_if<Text>(&member))
    posting.**text = value;
  else
    posting.*std::get<Number>(member) = leading_number(value);
}

void write_field(XmlWriter &xml, const Posting &posting, const PostingField &field) {
  if (const Text *text = std::get_if<Text>(&field.member)) {
    if (!(posting.**text).empty())
      xml.element(field.name, posting.**text);
    return;
  }
  const Number number = std::get<Number>(field.member);
  if (number != &Posting::sub_category || posting.*number >= 0)
    xml.element(field.name, posting.*number);
}

void write_posting(XmlWriter &xml, const Posting &posting, bool details) {
  for (const PostingField &field : fields) {
    if (field.visibility == Visibility::everywhere ||
        (details && field.visibility == Visibility::details))
      write_field(xml, posting, field);
  }
}

void write_forum_data(XmlWriter &xml, const Posting &posting) {
  for (const PostingField &field : fields) {
    if (field.visibility == Visibility::forum)
      write_field(xml, posting, field);
  }
}

void write_tracks(XmlWriter &xml, const Posting &posting) {
  if (posting.tracks.empty())
    return;
  xml.open("MP3");
  std::string_view rest = posting.tracks;
  for (bool more = true; more;) {
    const std::size_t end = rest.find(track_separator);
    more = end != std::string_view::npos;
    xml.element("Track", rest.substr(0, end));
    rest.remove_prefix(more ? end + track_separator.size() : 0);
  }
  xml.close();
}

std::vector<std::string> split_list(std::string_view text) {
  std::vector<std::string> items;
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find('|', start), text.size());
    if (end > start)
      items.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  return items;
}

std::string join_list(std::span<const std::string> items) {
  std::string joined;
  for (const std::string &item : items)
    joined += "|" + item;
  return joined.empty() ? joined : joined + "|";
}

}  // namespace velkor::server
