#include "Spool.h"

#include <fcntl.h>
#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "Failure.h"
#include "Files.h"
#include "Text.h"
#include "api/Output.h"

namespace mova::cli {

namespace {

constexpr size_t kBuffer = 1 << 16;

std::string temporaryFolder() {
  const char* folder = std::getenv("TMPDIR");
  return folder && *folder ? folder : "/tmp";
}

[[noreturn]] void refuseFolder() {
  throw Failure(kCantCreate, fmt::format("{}: no temporary file can be written there: {}", printable(temporaryFolder()),
                                         std::strerror(errno)));
}

int createUnnamed() {
  const std::string folder = temporaryFolder();
  const int fd = ::open(folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
  if (fd >= 0) return fd;
  // Some file systems have names for all files.
  std::string name = folder + "/mova-XXXXXX";
  const int named = ::mkostemp(name.data(), O_CLOEXEC);
  if (named < 0) refuseFolder();
  ::unlink(name.c_str());
  return named;
}

}  // namespace

Spool::Spool() : file_(createUnnamed()) {}

void Spool::append(std::string_view bytes) {
  waiting_ += bytes;
  if (waiting_.size() >= kBuffer) flush();
}

void Spool::flush() {
  if (!writeAll(file_.get(), waiting_)) refuseFolder();
  written_ += waiting_.size();
  waiting_.clear();
}

size_t Spool::readAt(uint64_t offset, char* room, size_t size) {
  if (!waiting_.empty()) flush();
  size_t done = 0;
  while (done < size) {
    const ssize_t count = ::pread(file_.get(), room + done, size - done, static_cast<off_t>(offset + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) refuseFolder();
    if (count == 0) break;
    done += static_cast<size_t>(count);
  }
  return done;
}

bool SpoolReader::fill() {
  buffer_.resize(static_cast<size_t>(std::min<uint64_t>(kBuffer, end_ - next_)));
  buffer_.resize(spool_->readAt(next_, buffer_.data(), buffer_.size()));
  next_ += buffer_.size();
  used_ = 0;
  return !buffer_.empty();
}

bool SpoolReader::read(char* room, size_t size) {
  while (size > 0) {
    if (used_ == buffer_.size() && !fill()) return false;
    const size_t count = std::min(size, buffer_.size() - used_);
    std::memcpy(room, buffer_.data() + used_, count);
    used_ += count;
    room += count;
    size -= count;
  }
  return true;
}

bool SpoolReader::readUntil(char separator, size_t limit, std::string& bytes) {
  bytes.clear();
  if (used_ == buffer_.size() && !fill()) return false;
  do {
    const std::string_view rest = std::string_view(buffer_).substr(used_);
    const size_t found = rest.find(separator);
    const std::string_view part = rest.substr(0, std::min(found, limit - bytes.size()));
    bytes += part;
    used_ += part.size();
    if (part.size() == found) {
      ++used_;
      return true;
    }
  } while (bytes.size() < limit && (used_ < buffer_.size() || fill()));
  return true;
}

}  // namespace mova::cli
