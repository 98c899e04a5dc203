// Whether a POSIX test program holds as many descriptors as before.
#pragma once

#include <fcntl.h>
#include <unistd.h>

/// The system gives the lowest number that is free.
inline int FreeDescriptor() {
  const int descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
  ::close(descriptor);
  return descriptor;
}
