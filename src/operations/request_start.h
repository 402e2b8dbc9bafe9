/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the functions that start requests share. */
#ifndef VELKOR_OPERATIONS_REQUEST_START_H
#define VELKOR_OPERATIONS_REQUEST_START_H

#include "operations/request.h"

namespace velkor {

/** Makes a request and starts it. @return the caller's reference */
ZoxRequest *start(RequestWork work, const ZoxRequestOptions *options) noexcept;

/** The place for a message of a blocking function, which may leave it untouched. */
class MessagePlace {
public:
  explicit MessagePlace(OwnedText &message) noexcept : message_(message) {}
  ~MessagePlace() { message_.reset(place_); }
  MessagePlace(const MessagePlace &) = delete;
  MessagePlace &operator=(const MessagePlace &) = delete;

  operator char **() noexcept { return &place_; }

private:
  OwnedText &message_;
  char *place_ = nullptr;
};

}  // namespace velkor

#endif
