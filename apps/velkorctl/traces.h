/* SPDX-License-Identifier: LGPL-2.1-or-later */
/**
 * Where the library's trace lines on standard output go while this lives: nowhere, or, made safe
 * for a terminal, to standard error.
 */
#ifndef VELKORCTL_TRACES_H
#define VELKORCTL_TRACES_H

#include <string>
#include <thread>

#include "velkorctl/descriptor.h"

namespace velkor::ctl {

class Traces {
public:
  explicit Traces(bool show);
  ~Traces();
  Traces(const Traces &) = delete;
  Traces &operator=(const Traces &) = delete;

private:
  void forward() noexcept;

  Descriptor reading_end_;
  std::thread forwarder_;
};

}  // namespace velkor::ctl

#endif
