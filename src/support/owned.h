/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Owners for the handles of GLib and of the C library: each releases what it holds. */
#ifndef VELKOR_SUPPORT_OWNED_H
#define VELKOR_SUPPORT_OWNED_H

#include <cstdio>
#include <memory>
#include <utility>

#include <glib-object.h>
#include <glib.h>

namespace velkor {

/** Turns a release function into a deleter type. */
template <auto Release>
struct ReleaseWith {
  template <typename T>
  void operator()(T *handle) const noexcept {
    Release(handle);
  }
};

inline void free_string(GString *text) noexcept {
  g_string_free(text, TRUE);
}

/** A class of its own: an inline function as argument would hide every class that holds a text. */
struct ReleaseString {
  void operator()(GString *text) const noexcept { free_string(text); }
};

/** A growable text (`ZoxString`). */
using OwnedString = std::unique_ptr<GString, ReleaseString>;
/** A zero-terminated text from GLib. */
using OwnedText = std::unique_ptr<char, ReleaseWith<g_free>>;
using OwnedError = std::unique_ptr<GError, ReleaseWith<g_error_free>>;
using OwnedFile = std::unique_ptr<std::FILE, ReleaseWith<std::fclose>>;
/** The cells of a list, never its items. */
using OwnedCells = std::unique_ptr<GSList, ReleaseWith<g_slist_free>>;
/** One reference on a GObject. */
template <typename T>
using OwnedObject = std::unique_ptr<T, ReleaseWith<g_object_unref>>;

/** A copy of `text` that keeps null apart from empty. */
inline GString *copy_string(const GString *text) noexcept {
  return text == nullptr ? nullptr : g_string_new_len(text->str, static_cast<gssize>(text->len));
}

/** Replaces the text held in `place`, releasing the earlier one. */
inline void replace_string(GString *&place, GString *text) noexcept {
  OwnedString earlier(std::exchange(place, text));
}

/** The characters of `text`, or null when there is none. */
inline const char *chars_or_null(const GString *text) noexcept {
  return text == nullptr ? nullptr : text->str;
}

/** Fills the caller's optional out place with a text that the caller frees. */
inline void hand_over(char **place, OwnedText text) noexcept {
  if (place != nullptr)
    *place = text.release();
}

}  // namespace velkor

#endif
