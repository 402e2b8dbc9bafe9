/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The owner of a file descriptor. */
#ifndef VELKOR_SUPPORT_DESCRIPTOR_H
#define VELKOR_SUPPORT_DESCRIPTOR_H

#include <utility>

#include <unistd.h>

namespace velkor {

/** Closes its descriptor at the end of its life; a negative one stands for none. */
class Descriptor {
public:
  explicit Descriptor(int descriptor = -1) noexcept : descriptor_(descriptor) {}
  Descriptor(Descriptor &&other) noexcept : descriptor_(other.release()) {}
  Descriptor &operator=(Descriptor &&other) noexcept {
    std::swap(descriptor_, other.descriptor_);
    return *this;
  }
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;
  ~Descriptor() {
    if (descriptor_ >= 0)
      close(descriptor_);
  }

  explicit operator bool() const noexcept { return descriptor_ >= 0; }
  [[nodiscard]] int get() const noexcept { return descriptor_; }
  [[nodiscard]] int release() noexcept { return std::exchange(descriptor_, -1); }

private:
  int descriptor_;
};

}  // namespace velkor

#endif
