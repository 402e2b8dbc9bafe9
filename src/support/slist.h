/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Singly linked GLib lists: building with a tail pointer, walking with range-for. */
#ifndef VELKOR_SUPPORT_SLIST_H
#define VELKOR_SUPPORT_SLIST_H

#include <cstddef>
#include <iterator>
#include <utility>

#include <glib.h>

namespace velkor {

/**
 * Appends to a list in constant time. It owns the cells until release(); `Free` releases an item
 * of a list that is given up.
 */
template <typename T, auto Free>
class ListBuilder {
public:
  ListBuilder() = default;
  ListBuilder(const ListBuilder &) = delete;
  ListBuilder &operator=(const ListBuilder &) = delete;
  ~ListBuilder() {
    for (GSList *cell = head_; cell != nullptr; cell = cell->next)
      Free(static_cast<T *>(cell->data));
    g_slist_free(head_);
  }

  void append(T *item) noexcept {
    GSList *cell = g_slist_prepend(nullptr, item);
    *tail_ = cell;
    tail_ = &cell->next;
  }

  [[nodiscard]] bool empty() const noexcept { return head_ == nullptr; }

  /** The list so far, still the builder's. */
  [[nodiscard]] GSList *list() const noexcept { return head_; }

  /** The list built; the builder is empty again. */
  [[nodiscard]] GSList *release() noexcept {
    tail_ = &head_;
    return std::exchange(head_, nullptr);
  }

private:
  GSList *head_ = nullptr;
  GSList **tail_ = &head_;
};

template <typename T>
void leave(T *) noexcept {}

/** Builds a list of items that stay somebody else's. */
template <typename T>
using CellBuilder = ListBuilder<T, leave<T>>;

/** The items of a list as a range of `T *`. */
template <typename T>
class Items {
public:
  class Iterator {
  public:
    using difference_type = std::ptrdiff_t;
    using value_type = T *;

    explicit Iterator(const GSList *cell = nullptr) noexcept : cell_(cell) {}
    T *operator*() const noexcept { return static_cast<T *>(cell_->data); }
    Iterator &operator++() noexcept {
      cell_ = cell_->next;
      return *this;
    }
    Iterator operator++(int) noexcept {
      Iterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const Iterator &) const noexcept = default;

  private:
    const GSList *cell_;
  };

  explicit Items(const GSList *list) noexcept : list_(list) {}
  [[nodiscard]] Iterator begin() const noexcept { return Iterator(list_); }
  [[nodiscard]] Iterator end() const noexcept { return Iterator(); }

private:
  const GSList *list_;
};

}  // namespace velkor

#endif
