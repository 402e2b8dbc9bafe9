/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The files of a cache directory, for the programs that take care of them. */
#ifndef VELKOR_SUPPORT_CACHE_FILES_H
#define VELKOR_SUPPORT_CACHE_FILES_H

#include <string>
#include <vector>

namespace velkor {

struct CacheFile {
  /** The name in the directory, with ".gz" when it is compressed. */
  std::string name;
  enum class Kind { settings, filters, newsgroups, mail, postings } kind;
};

/** All files that a cache can have, the settings first, then in the order of writing. */
inline const std::vector<CacheFile> &cache_files() {
  using Kind = CacheFile::Kind;
  static const std::vector<CacheFile> files{
      {"velkor.conf", Kind::settings},        {"velkor.filters", Kind::filters},
      {"velkor.groups.gz", Kind::newsgroups}, {"velkor.mail", Kind::mail},
      {"velkor.posts", Kind::postings},       {"velkor.posts.gz", Kind::postings},
      {"velkor.groups", Kind::newsgroups},
  };
  return files;
}

}  // namespace velkor

#endif
