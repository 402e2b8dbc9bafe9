/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** One posting with everything that the server tells about it. */
#ifndef VELKOR_APP_MODEL_POSTING_DETAILS_H
#define VELKOR_APP_MODEL_POSTING_DETAILS_H

#include <cstdint>
#include <string>
#include <vector>

#include "model/forum.h"

namespace velkor::app {

/** The names of the tags of one group, such as the genres. */
struct TagGroup {
  std::string name;
  std::vector<std::string> tags;
};

struct PostingDetails {
  std::int32_t id = 0;
  std::string title{};
  std::string poster{};
  std::string category{};
  std::string status{};
  std::string reason{};  // why it was removed
  std::int64_t stamp = 0;
  std::int32_t rating = 0;
  std::string link{};   // a web address, or empty
  std::string image{};  // likewise
  std::vector<TagGroup> tags{};
  std::string free_tag{};
  std::vector<std::string> newsgroups{};
  std::string file_name{};
  std::int32_t files = 0;
  std::int32_t par_files = 0;
  std::vector<std::string> tracks{};
  std::string announcement{};
  std::string description{};
  std::string signature{};
  std::int32_t kudos = 0;
  std::int32_t views = 0;
  bool closed = false;  // for reactions
  std::vector<Reaction> reactions{};
};

}  // namespace velkor::app

#endif
