/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * A cache directory that is only read. Loading can write: it creates the directory, tests whether
 * it is writable, writes default filters and an empty mail box, and replaces files of earlier
 * versions. The view is a temporary directory with links to the files of the real one, so that
 * these writes leave the real one alone, even when it is missing or read-only.
 */
#ifndef VELKORCTL_CACHE_VIEW_H
#define VELKORCTL_CACHE_VIEW_H

#include <filesystem>

namespace velkor::ctl {

class CacheView {
public:
  /** Throws a Failure when the view cannot be created. */
  explicit CacheView(const std::filesystem::path &directory);
  /** Removes the view; the files behind the links stay. */
  ~CacheView();
  CacheView(const CacheView &) = delete;
  CacheView &operator=(const CacheView &) = delete;

  /** Removes the links: what is saved from now on stays in the view and is removed with it. */
  void detach() const noexcept;

  [[nodiscard]] const std::filesystem::path &path() const noexcept { return path_; }

private:
  CacheView();

  std::filesystem::path path_;
};

}  // namespace velkor::ctl

#endif
