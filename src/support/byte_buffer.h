/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** Bytes that are collected, used as a whole and forgotten, over and over in the same memory. */
#ifndef VELKOR_SUPPORT_BYTE_BUFFER_H
#define VELKOR_SUPPORT_BYTE_BUFFER_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace velkor {

class ByteBuffer {
public:
  /** `bytes` may be null if there are none. */
  void append(const void *bytes, std::size_t size) noexcept {
    if (size > capacity_ - size_)
      grow(size);
    if (size > 0)
      std::memcpy(bytes_.get() + size_, bytes, size);
    size_ += size;
  }

  void clear() noexcept { size_ = 0; }
  [[nodiscard]] std::string_view view() const noexcept { return {bytes_.get(), size_}; }

private:
  /* A string or vector would fill the new memory before it is written to. */
  void grow(std::size_t size) noexcept {
    const std::size_t capacity = std::max(2 * capacity_, size_ + size);
    std::unique_ptr<char[]> larger(new char[capacity]);
    if (size_ > 0)
      std::memcpy(larger.get(), bytes_.get(), size_);
    bytes_ = std::move(larger);
    capacity_ = capacity;
  }

  std::unique_ptr<char[]> bytes_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

}  // namespace velkor

#endif
