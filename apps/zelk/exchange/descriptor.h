// SPDX-License-Identifier: Apache-2.0
#ifndef ZELK_APPS_EXCHANGE_DESCRIPTOR_H
#define ZELK_APPS_EXCHANGE_DESCRIPTOR_H

#include <unistd.h>

#include <utility>

namespace cli {

// An open descriptor, closed at the end of its scope; negative for none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : _number(number) {}
  Descriptor(Descriptor&& other) noexcept : _number(std::exchange(other._number, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(_number, other._number);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  bool is_open() const { return _number >= 0; }
  int number() const { return _number; }
  // Some file systems report a full disk only here, as errno.
  int close() { return _number < 0 ? 0 : ::close(std::exchange(_number, -1)); }

 private:
  int _number = -1;
};

}  // namespace cli

#endif  // ZELK_APPS_EXCHANGE_DESCRIPTOR_H
