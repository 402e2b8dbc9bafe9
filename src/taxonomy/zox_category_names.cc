/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include <velkor/zox_category.h>

#include <array>
#include <span>

namespace velkor {
namespace {

using Names = std::span<const char *const>;

constexpr std::array picture{"DivX", "WMV", "MPG", "DVD", "HDTV", "IMG"};
constexpr std::array sound{"MP3", "WMA", "WAV", "OGG", "Lossless"};
constexpr std::array games{"Windows", "Macintosh", "Linux",     "PSX", "PS2",
                           "PSP",     "XBox",      "Dreamcast", "GBA", "Gamecube"};
constexpr std::array applications{"Windows", "Macintosh", "Linux", "OS2", "PDA", "Navigatie"};

/** By main category number. */
constexpr std::array<Names, 4> sub_categories{picture, sound, games, applications};

}  // namespace
}  // namespace velkor

using namespace velkor;

extern "C" {

const char *zox_category_get_scat_name(gint32 category, guint32 subCategory) {
  const auto index = static_cast<guint32>(category);
  if (index >= sub_categories.size() || subCategory >= sub_categories[index].size())
    return "";
  return sub_categories[index][subCategory];
}

}  // extern "C"
