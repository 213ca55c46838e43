// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include <unistd.h>

namespace vellory {

/// Owns a file descriptor.
class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        close();
        fd_ = std::exchange(other.fd_, -1);
        return *this;
    }
    ~Descriptor() { close(); }

    int get() const { return fd_; }
    bool isOpen() const { return fd_ >= 0; }

  private:
    void close() const {
        if (fd_ >= 0) {
            ::close(fd_);
        }
    }

    int fd_ = -1;
};

} // namespace vellory
