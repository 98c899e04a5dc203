#include "benchmarks/support/child_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include "benchmarks/support/scratch_folder.h"

namespace benchmarks {

int RunProgram(const std::vector<std::string>& command, const std::string& output) {
  std::vector<char*> arguments;
  arguments.reserve(command.size() + 1);
  for (const std::string& argument : command) {
    arguments.push_back(const_cast<char*>(argument.c_str()));  // posix_spawn changes nothing
  }
  arguments.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
  pid_t child = 0;
  const int failure =
      ::posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  if (failure != 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
    return -1;
  }
  return WEXITSTATUS(status);
}

bool MakeGermanLocale() {
  const std::string folder = ScratchFolder().string();
  return RunProgram({"localedef", "--no-archive", "-i", "de_DE", "-f", "UTF-8",
                     folder + "/de_DE.UTF-8"}) == 0 &&
         ::setenv("LOCPATH", folder.c_str(), 1) == 0;
}

}  // namespace benchmarks
