/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Taking over the postings of one document: they are counted, tested and put where they belong. */
#ifndef VELKOR_STORE_EVENT_INTAKE_H
#define VELKOR_STORE_EVENT_INTAKE_H

#include <optional>
#include <span>
#include <vector>

#include "filter/bad_words.h"
#include "posting/packed_event.h"
#include "store/event_reader.h"

namespace velkor {

class EventIntake {
public:
  /** Exactly one is given: a table of postings by id, or a list that gets them at its front. */
  EventIntake(GHashTable *table, GSList **list) noexcept : table_(table), list_(list) {}

  /** Takes the next postings of the document, and reports what was odd about them. */
  void take(std::vector<OwnedEventObject> objects,
            const std::vector<EventRemark> &remarks) noexcept;

private:
  /** The id of the object's posting if it is taken. */
  std::optional<gint32> accepted_id(ZOXEventObject &object,
                                    std::span<const EventRemark> remarks) noexcept;
  void count(const ZoxEvent &event) noexcept;
  bool has_bad_word(const ZoxEvent &event) noexcept;
  void put(gint32 postId, OwnedEventObject object) const noexcept;

  GHashTable *table_;
  GSList **list_;
  BadWords bad_words_;
  bool counting_ = false;  // a new posting has been met
};

}  // namespace velkor

#endif
