#pragma once

#include <unistd.h>

#include <utility>

namespace mova::cli {

/// An open file, closed at the end.
class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  bool isOpen() const { return fd_ >= 0; }
  int get() const { return fd_; }
  /// Some file systems tell only here that bytes were lost.
  bool close() { return ::close(std::exchange(fd_, -1)) == 0; }

 private:
  int fd_;
};

}  // namespace mova::cli
