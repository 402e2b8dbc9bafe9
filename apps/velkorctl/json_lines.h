/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** JSON for scripts: one value per line. */
#ifndef VELKORCTL_JSON_LINES_H
#define VELKORCTL_JSON_LINES_H

#include "support/json.h"

namespace velkor::ctl {

class Output;

/** Prints an array with one value per line as the values are added. */
class JsonLines {
public:
  explicit JsonLines(Output &output) : output_(output) {}
  void add(const Json &value);
  void finish();

private:
  Output &output_;
  bool empty_ = true;
};

}  // namespace velkor::ctl

#endif
