// Shows descriptor leaks of a POSIX test program.
#pragma once

#include <fcntl.h>
#include <unistd.h>

/// The descriptor that the next open returns: the lowest free one.
inline int FreeDescriptor() {
  const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
  ::close(descriptor);
  return descriptor;
}
