/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "velkorctl/json_lines.h"

#include "velkorctl/output.h"

namespace velkor::ctl {

void JsonLines::add(const Json &value) {
  output_.write(empty_ ? "[\n" : ",\n");
  output_.write(value.compact());
  empty_ = false;
}

void JsonLines::finish() {
  output_.write(empty_ ? "[]\n" : "\n]\n");
}

}  // namespace velkor::ctl
