/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Postings that a watcher matches. */
#ifndef VELKORCTL_WATCHER_HITS_H
#define VELKORCTL_WATCHER_HITS_H

#include <string>
#include <vector>

#include "velkorctl/postings.h"

namespace velkor::ctl {

struct WatcherHit {
  /** The text of the watcher. */
  std::string watcher;
  OwnedEvent posting;
};

/** What is printed about one: the watcher, then the fields of the posting. */
Fields<WatcherHit> hit_fields();

/**
 * The hits among the postings that the latest update brought, by watcher, the newest first. A
 * posting that several watchers match has the first one. There must be a core with the postings.
 */
std::vector<WatcherHit> hits_of_update();

/** The document that "watchers run --format json" would print about them. */
std::string document_of(const std::vector<WatcherHit> &hits);

}  // namespace velkor::ctl

#endif
