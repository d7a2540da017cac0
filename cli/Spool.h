/// Lists that may be longer than the memory should be.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "FileDescriptor.h"

namespace mova::cli {

/// A file without a name in the temporary folder. Failures throw a Failure with status kCantCreate.
class Spool {
 public:
  Spool();
  uint64_t size() const { return written_ + waiting_.size(); }
  void append(std::string_view bytes);
  /// Fills as much of `room` as there is behind `offset`; returns the number of bytes.
  size_t readAt(uint64_t offset, char* room, size_t size);

 private:
  void flush();

  FileDescriptor file_;
  uint64_t written_ = 0;
  std::string waiting_;  ///< the end of the list, not written yet
};

/// Reads a part of a spool from its begin to its end.
class SpoolReader {
 public:
  explicit SpoolReader(Spool& spool) : SpoolReader(spool, 0, spool.size()) {}
  SpoolReader(Spool& spool, uint64_t begin, uint64_t end) : spool_(&spool), next_(begin), end_(end) {}

  /// The place of what is read next.
  uint64_t place() const { return next_ - buffer_.size() + used_; }
  /// False at the end; then `room` may be filled in part.
  bool read(char* room, size_t size);
  /// The bytes before the next `separator` or the end; false at the end. Reads no further than `limit` bytes.
  bool readUntil(char separator, size_t limit, std::string& bytes);

 private:
  bool fill();

  Spool* spool_;
  uint64_t next_;
  uint64_t end_;
  std::string buffer_;
  size_t used_ = 0;
};

}  // namespace mova::cli
