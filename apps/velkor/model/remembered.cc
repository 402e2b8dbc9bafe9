/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "model/remembered.h"

#include <algorithm>
#include <memory>
#include <string>

#include <glib.h>

#include "support/owned.h"

namespace velkor::app {
namespace {

using OwnedKeyFile = std::unique_ptr<GKeyFile, ReleaseWith<g_key_file_unref>>;

constexpr const char *window = "Window";
constexpr const char *list = "List";
constexpr int smallest = 100;
constexpr int largest = 20000;

/** A number of pixels; `place` stays as it is when the file has none that makes sense. */
void read_size(GKeyFile *file, const char *group, const char *key, int &place) {
  const int value = g_key_file_get_integer(file, group, key, nullptr);
  if (value >= smallest && value <= largest)
    place = value;
}

void read_flag(GKeyFile *file, const char *group, const char *key, bool &place) {
  GError *error = nullptr;
  const bool value = g_key_file_get_boolean(file, group, key, &error) != FALSE;
  if (const OwnedError failure(error); !failure)
    place = value;
}

std::string width_key(Column column) {
  return "width-" + std::string(column_key(column));
}

}  // namespace

Remembered read_remembered(const std::filesystem::path &file) {
  Remembered remembered;
  const OwnedKeyFile keys(g_key_file_new());
  if (g_key_file_load_from_file(keys.get(), file.c_str(), G_KEY_FILE_NONE, nullptr) == FALSE)
    return remembered;
  read_size(keys.get(), window, "width", remembered.width);
  read_size(keys.get(), window, "height", remembered.height);
  read_flag(keys.get(), window, "maximized", remembered.maximized);
  read_size(keys.get(), window, "tree-width", remembered.tree_width);
  read_size(keys.get(), window, "list-height", remembered.list_height);
  const OwnedText sorted(g_key_file_get_string(keys.get(), list, "sort", nullptr));
  if (const auto column = column_with_key(sorted ? sorted.get() : "")) {
    remembered.sorting.column = *column;
    read_flag(keys.get(), list, "descending", remembered.sorting.descending);
  }
  for (std::size_t place = 0; place < column_count; ++place)
    read_size(keys.get(), list, width_key(static_cast<Column>(place)).c_str(),
              remembered.column_widths[place]);
  return remembered;
}

void write_remembered(const std::filesystem::path &file, const Remembered &remembered) {
  const OwnedKeyFile keys(g_key_file_new());
  g_key_file_set_integer(keys.get(), window, "width", remembered.width);
  g_key_file_set_integer(keys.get(), window, "height", remembered.height);
  g_key_file_set_boolean(keys.get(), window, "maximized", remembered.maximized ? TRUE : FALSE);
  g_key_file_set_integer(keys.get(), window, "tree-width", remembered.tree_width);
  g_key_file_set_integer(keys.get(), window, "list-height", remembered.list_height);
  const std::string sorted(column_key(remembered.sorting.column));
  g_key_file_set_string(keys.get(), list, "sort", sorted.c_str());
  g_key_file_set_boolean(keys.get(), list, "descending",
                         remembered.sorting.descending ? TRUE : FALSE);
  for (std::size_t place = 0; place < column_count; ++place)
    if (const int width = remembered.column_widths[place]; width > 0)
      g_key_file_set_integer(keys.get(), list, width_key(static_cast<Column>(place)).c_str(),
                             width);
  g_mkdir_with_parents(file.parent_path().c_str(), 0700);
  GError *error = nullptr;
  g_key_file_save_to_file(keys.get(), file.c_str(), &error);
  if (const OwnedError failure(error); failure)
    g_message("%s: %s", file.c_str(), failure->message);
}

}  // namespace velkor::app
