// Runs xmllint --noout on a file, the peer the job-ticket benchmarks measure
// reading against. Output is thrown away; the answer is xmllint's exit status,
// or -1 when it could not be run.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <filesystem>
#include <string>

extern char** environ;

namespace zorva::bench {

inline int RunXmllint(const std::filesystem::path& path) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  std::string program = "xmllint", flag = "--noout", file = path.string();
  char* argv[] = {program.data(), flag.data(), file.data(), nullptr};
  pid_t pid = 0;
  const int err = posix_spawnp(&pid, "xmllint", &actions, nullptr, argv, environ);
  posix_spawn_file_actions_destroy(&actions);
  if (err != 0) return -1;
  int status = 0;
  waitpid(pid, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace zorva::bench
