/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the window looks like, kept from one start to the next. */
#ifndef VELKOR_APP_MODEL_REMEMBERED_H
#define VELKOR_APP_MODEL_REMEMBERED_H

#include <array>
#include <filesystem>

#include "model/order.h"

namespace velkor::app {

struct Remembered {
  int width = 1100;
  int height = 720;
  bool maximized = false;
  int tree_width = 220;
  int list_height = 320;  // while a posting is open below
  Sorting sorting{};
  /** The widths of the columns; 0 for one that was never changed. */
  std::array<int, column_count> column_widths{};

  bool operator==(const Remembered &) const = default;
};

/** What the file holds; the values above stand in for what is missing or makes no sense. */
Remembered read_remembered(const std::filesystem::path &file);

/** Writes the file and its directory; a failure is logged, since nothing but comfort depends on it.
 */
void write_remembered(const std::filesystem::path &file, const Remembered &remembered);

}  // namespace velkor::app

#endif
