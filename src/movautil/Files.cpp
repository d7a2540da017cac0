#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "movautil/MovaUtil.h"

namespace {

constexpr uint32_t ReadAccess = 0x80000000;
constexpr uint32_t OpenExisting = 3;
constexpr MovaHandle InvalidHandle = -1;

// Descriptor 0 is a good one, but handle 0 is none.
MovaHandle handleOf(int descriptor) {
  return MovaHandle{descriptor} + 1;
}
int descriptorOf(MovaHandle file) {
  return static_cast<int>(file - 1);
}

}  // namespace

int32_t movaOSFileExists(const char* fileName) {
  return access(fileName, F_OK) == 0;
}

MovaHandle movaOSCreateFile(const char* fileName, uint32_t access, uint32_t, void*, uint32_t disposition, uint32_t,
                            MovaHandle) {
  if (access != ReadAccess || disposition != OpenExisting) return InvalidHandle;
  // Without O_NONBLOCK a pipe would keep us waiting for its writer before we see that it is no regular file.
  const int descriptor = open(fileName, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return InvalidHandle;
  struct stat status;
  if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
    close(descriptor);
    return InvalidHandle;
  }
  return handleOf(descriptor);
}

int32_t movaOSGetFileSizeEx(MovaHandle file, int64_t* size) {
  struct stat status;
  if (fstat(descriptorOf(file), &status) != 0) return 0;
  *size = status.st_size;
  return 1;
}

int32_t movaOSReadFile(MovaHandle file, void* buffer, uint32_t count, uint32_t* countRead, void*) {
  *countRead = 0;
  while (*countRead < count) {
    const ssize_t got = read(descriptorOf(file), static_cast<char*>(buffer) + *countRead, count - *countRead);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return 0;
    if (got == 0) break;
    *countRead += static_cast<uint32_t>(got);
  }
  return 1;
}

int32_t movaOSCloseFile(MovaHandle file) {
  return close(descriptorOf(file)) == 0;
}
