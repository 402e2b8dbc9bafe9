/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** An owned file descriptor. */
#ifndef VELKORCTL_DESCRIPTOR_H
#define VELKORCTL_DESCRIPTOR_H

#include <utility>

#include <unistd.h>

namespace velkor::ctl {

class Descriptor {
public:
  explicit Descriptor(int number = -1) noexcept : number_(number) {}
  Descriptor(const Descriptor &) = delete;
  Descriptor &operator=(const Descriptor &) = delete;
  Descriptor(Descriptor &&other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor &operator=(Descriptor &&other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0)
      close(number_);
  }

  [[nodiscard]] int get() const noexcept { return number_; }
  [[nodiscard]] bool valid() const noexcept { return number_ >= 0; }

private:
  int number_;
};

}  // namespace velkor::ctl

#endif
