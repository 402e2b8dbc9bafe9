/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/spot_file.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

#include <velkor/zox_string.h>

#include "support/slist.h"
#include "velkorctl/arguments.h"
#include "velkorctl/failure.h"
#include "velkorctl/messages.h"
#include "velkorctl/vocabulary.h"

namespace velkor::ctl {
namespace {

using OwnedKeyFile = std::unique_ptr<GKeyFile, ReleaseWith<g_key_file_unref>>;
using OwnedTexts = std::unique_ptr<char *, ReleaseWith<g_strfreev>>;

constexpr const char *group = "posting";
constexpr gint32 spot = -1;

struct TextKey {
  const char *key;
  GString *ZoxEvent::*member;
};
constexpr std::array<TextKey, 8> text_keys{{
    {"title", &ZoxEvent::title},
    {"file-name", &ZoxEvent::fName},
    {"link", &ZoxEvent::link},
    {"image", &ZoxEvent::img},
    {"free-tag", &ZoxEvent::tag},
    {"announcement", &ZoxEvent::ann},
    {"description", &ZoxEvent::des},
    {"signature", &ZoxEvent::sig},
}};

struct NumberKey {
  const char *key;
  gint32 ZoxEvent::*member;
};
constexpr std::array<NumberKey, 6> number_keys{{
    {"file-type", &ZoxEvent::fType},
    {"files", &ZoxEvent::files},
    {"file-start", &ZoxEvent::fStart},
    {"par-files", &ZoxEvent::pars},
    {"par-type", &ZoxEvent::parType},
    {"par-block-size", &ZoxEvent::blockSize},
}};

constexpr std::array<const char *, 6> other_keys{"category", "sub-category", "status",
                                                 "tags",     "newsgroups",   "tracks"};

/** Reads one file into one posting; reports each problem and goes on. */
class SpotReader {
public:
  explicit SpotReader(const std::string &file);
  OwnedEvent read();

private:
  [[nodiscard]] bool has(const char *key) const;
  [[nodiscard]] std::string text(const char *key) const;
  [[nodiscard]] std::vector<std::string> list(const char *key) const;
  /** Carries out a step; reports and counts the problem that it finds. */
  void attempt(const std::function<void()> &step);
  void require(const char *key);
  void refuse_unknown_keys();
  void read_texts();
  void read_numbers();
  void read_category();
  void read_tags();
  void read_newsgroups();
  void read_tracks();

  OwnedKeyFile keys_{g_key_file_new()};
  OwnedEvent event_{zox_event_new()};
  int problems_ = 0;
};

SpotReader::SpotReader(const std::string &file) {
  GError *place = nullptr;
  g_key_file_load_from_file(keys_.get(), file.c_str(), G_KEY_FILE_NONE, &place);
  const OwnedError error(place);
  if (error)
    throw usage_error(file + ": " + error->message);
  if (g_key_file_has_group(keys_.get(), group) == FALSE)
    throw usage_error(file + ": the group [posting] is missing");
}

bool SpotReader::has(const char *key) const {
  return g_key_file_has_key(keys_.get(), group, key, nullptr) != FALSE;
}

std::string SpotReader::text(const char *key) const {
  GError *place = nullptr;
  const OwnedText value(g_key_file_get_string(keys_.get(), group, key, &place));
  const OwnedError error(place);
  if (error)
    throw usage_error(std::string(key) + ": " + error->message);
  return value.get();
}

std::vector<std::string> SpotReader::list(const char *key) const {
  const OwnedTexts values(g_key_file_get_string_list(keys_.get(), group, key, nullptr, nullptr));
  std::vector<std::string> result;
  for (char **value = values.get(); value != nullptr && *value != nullptr; ++value)
    result.emplace_back(*value);
  return result;
}

void SpotReader::attempt(const std::function<void()> &step) {
  try {
    step();
  } catch (const Failure &failure) {
    say(failure.what());
    ++problems_;
  }
}

void SpotReader::require(const char *key) {
  attempt([&] {
    if (!has(key) || text(key).empty())
      throw usage_error(std::string(key) + " is missing");
  });
}

void SpotReader::refuse_unknown_keys() {
  std::vector<std::string> known(other_keys.begin(), other_keys.end());
  for (const TextKey &entry : text_keys)
    known.emplace_back(entry.key);
  for (const NumberKey &entry : number_keys)
    known.emplace_back(entry.key);
  const OwnedTexts present(g_key_file_get_keys(keys_.get(), group, nullptr, nullptr));
  for (char **key = present.get(); key != nullptr && *key != nullptr; ++key)
    attempt([&] {
      if (std::ranges::find(known, std::string_view(*key)) == known.end())
        throw usage_error(std::string("unknown key ") + *key);
    });
}

void SpotReader::read_texts() {
  for (const TextKey &entry : text_keys)
    if (has(entry.key))
      attempt([&] {
        if (const std::string value = text(entry.key); !value.empty())
          replace_string((*event_).*entry.member, g_string_new(value.c_str()));
      });
}

void SpotReader::read_numbers() {
  constexpr gint32 highest = std::numeric_limits<gint32>::max();
  for (const NumberKey &entry : number_keys)
    if (has(entry.key))
      attempt([&] {
        (*event_).*entry.member =
            static_cast<gint32>(number_in_range(text(entry.key), 0, highest, entry.key));
      });
}

void SpotReader::read_category() {
  event_->status = spot;
  attempt([&] {
    if (has("category"))
      event_->cat = category_number(text("category"));
    if (has("sub-category") && event_->cat >= 0)
      event_->sCat = sub_category_number(event_->cat, text("sub-category"));
  });
  attempt([&] {
    if (has("status"))
      event_->status = state_numbers(text("status")).front();
  });
}

void SpotReader::read_tags() {
  if (event_->cat < 0)
    return;
  TextList tags;
  for (const std::string &name : list("tags"))
    attempt([&] { tags.append(g_string_new(tag_choice(event_->cat, name).code.c_str())); });
  event_->tags = tags.release();
}

void SpotReader::read_newsgroups() {
  TextList groups;
  for (const std::string &name : list("newsgroups"))
    attempt([&] { groups.append(g_string_new(std::to_string(newsgroup_id(name)).c_str())); });
  event_->groups = groups.release();
}

void SpotReader::read_tracks() {
  TextList tracks;
  for (const std::string &name : list("tracks"))
    tracks.append(g_string_new(name.c_str()));
  event_->mp3Tracks = tracks.release();
}

OwnedEvent SpotReader::read() {
  refuse_unknown_keys();
  for (const char *key : {"title", "category", "sub-category", "newsgroups"})
    require(key);
  read_texts();
  read_numbers();
  read_category();
  read_tags();
  read_newsgroups();
  read_tracks();
  if (problems_ > 0)
    throw usage_error("the posting is not sent");
  return std::move(event_);
}

}  // namespace

OwnedEvent read_spot(const std::string &file) {
  return SpotReader(file).read();
}

}  // namespace velkor::ctl
