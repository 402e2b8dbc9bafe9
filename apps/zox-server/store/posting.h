/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** A posting as the service stores it, and the table of its fields. */
#ifndef ZOX_SERVER_STORE_POSTING_H
#define ZOX_SERVER_STORE_POSTING_H

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include "zox-server/support/xml_writer.h"

namespace velkor::server {

/** The states of a posting. */
enum PostingState : std::int64_t {
  state_removed = -3,
  state_deleted = -2,
  state_spot = -1,
  state_ready = 0,
  state_announced = 1,
  state_uploading = 2,
  state_unsupported = 3,
};

struct Posting {
  std::int64_t id = 0;
  std::int64_t stamp = 0;
  std::int64_t updated = 0;
  std::int64_t status = state_spot;
  std::string file_name;
  std::string title;
  std::string groups;  // "|"-separated newsgroup numbers in stored form
  std::string poster;
  std::string link;
  std::int64_t category = 0;
  std::int64_t sub_category = -1;
  std::string tags;  // "|"-separated tag codes in stored form
  std::string tag;
  std::int64_t rating = 0;
  std::string announcement;
  std::string description;
  std::string signature;
  std::int64_t file_type = 0;
  std::int64_t files = 0;
  std::int64_t file_start = 0;
  std::string image;
  std::int64_t par_type = 0;
  std::int64_t pars = 0;
  std::int64_t block_size = 0;
  std::int64_t views = 0;
  std::int64_t kudos = 0;
  std::int64_t locked = 0;
  std::string reason;
  std::string tracks;  // joined by track_separator
};

/** Separates the tracks of a posting, in requests and in the database. */
inline constexpr std::string_view track_separator = "|ZOX|";

/** Which replies include a field. */
enum class Visibility {
  everywhere,  // dumps, xml-findpost.php and xml-posts.php
  details,     // xml-posts.php only
  forum,       // the data event of the forum
  internal,    // written in a form of its own
};

using PostingMember = std::variant<std::int64_t Posting::*, std::string Posting::*>;

struct PostingField {
  /** The name of the XML element and of the database column. */
  const char *name;
  PostingMember member;
  Visibility visibility;
};

std::span<const PostingField> posting_fields();
/** The field with that name (case-sensitive), null when there is none. */
const PostingField *posting_field(std::string_view name);

/** Sets a field from its text form. */
void set_field(Posting &posting, PostingMember member, const std::string &value);

/** Writes the field, unless it is an empty text or an unknown sub-category. */
void write_field(XmlWriter &xml, const Posting &posting, const PostingField &field);
/** Writes the fields that are visible everywhere, and with `details` those of the details. */
void write_posting(XmlWriter &xml, const Posting &posting, bool details);
/** Writes the fields of the forum's data event. */
void write_forum_data(XmlWriter &xml, const Posting &posting);
/** Writes the element "MP3" if the posting has tracks. */
void write_tracks(XmlWriter &xml, const Posting &posting);

/** The non-empty items of a "|"-separated text. */
std::vector<std::string> split_list(std::string_view text);
/** The stored form: "|" before, between and after the items; empty without any. */
std::string join_list(std::span<const std::string> items);

}  // namespace velkor::server

#endif
