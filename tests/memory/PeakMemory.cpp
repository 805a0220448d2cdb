// Runs a program and writes the most memory that it had at a time, in kilobytes, behind its output.
// It stands between the tests and the program because a process starts with the peak of the one
// that made it: under the tests, which are large, a small program would seem as large as they are.

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>

int main(int argc, char** argv) {
  constexpr int CannotRun = 127;
  if (argc < 2) return CannotRun;
  const pid_t child = fork();
  if (child == 0) {
    execv(argv[1], argv + 1);
    _exit(CannotRun);
  }
  int status = 0;
  rusage usage{};
  if (child < 0 || wait4(child, &status, 0, &usage) != child) return CannotRun;
  std::cout << usage.ru_maxrss << '\n';
  return WIFEXITED(status) ? WEXITSTATUS(status) : CannotRun;
}
