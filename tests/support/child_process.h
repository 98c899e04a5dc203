// Child processes of a POSIX test program.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

/// Runs `work` in a child process; the result is its exit code.
template <class Work>
pid_t StartChild(Work work) {
  const pid_t child = ::fork();
  if (child == 0) {
    const int exitCode = work();
    std::fflush(stdout);  // prints the failures of the child
    ::_exit(exitCode);
  }
  return child;
}

/// Permissions do not restrict root. False if the process is root and cannot become another user.
inline bool StopBeingRoot() {
  constexpr uid_t kNobody = 65534;
  return ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

/// Waits for the end of `child`; -1 if a signal ended it.
inline int ExitCodeOf(pid_t child) {
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
