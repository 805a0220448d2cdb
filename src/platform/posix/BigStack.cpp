#include "platform/BigStack.h"

#include <pthread.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <exception>

namespace FTS {

namespace {

constexpr std::size_t LargestStack = std::size_t{64} << 30;
constexpr std::size_t SmallestStack = std::size_t{8} << 20;  // What a process has anyway.

thread_local bool onBigStack = false;

/// Address space for a stack. Its lowest page may not be touched, so that a walk that outgrows even
/// this stack ends the program instead of writing over other memory.
class StackMemory {
 public:
  StackMemory() : guard(static_cast<std::size_t>(sysconf(_SC_PAGESIZE))) {
    for (size = LargestStack; size >= SmallestStack; size /= 2) {
      base = mmap(nullptr, size, PROT_READ | PROT_WRITE,
                  MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE | MAP_STACK, -1, 0);
      if (base != MAP_FAILED) break;
    }
    if (IsUsable()) mprotect(base, guard, PROT_NONE);
  }

  ~StackMemory() {
    if (IsUsable()) munmap(base, size);
  }

  StackMemory(const StackMemory&) = delete;
  StackMemory& operator=(const StackMemory&) = delete;

  bool IsUsable() const { return base != MAP_FAILED; }

  void* Lowest() const { return static_cast<char*>(base) + guard; }
  std::size_t UsableSize() const { return size - guard; }

 private:
  const std::size_t guard;
  std::size_t size = 0;
  void* base = MAP_FAILED;
};

struct Job {
  const std::function<void()>& work;
  std::exception_ptr failure;
};

void* RunJob(void* argument) {
  Job& job = *static_cast<Job*>(argument);
  onBigStack = true;
  try {
    job.work();
  } catch (...) {
    job.failure = std::current_exception();
  }
  return nullptr;
}

/// False if the thread could not be made; then nothing has run.
bool RunInThread(const StackMemory& stack, Job& job) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  pthread_t thread{};
  const bool started =
      pthread_attr_setstack(&attributes, stack.Lowest(), stack.UsableSize()) == 0 &&
      pthread_create(&thread, &attributes, RunJob, &job) == 0;
  pthread_attr_destroy(&attributes);
  if (started) pthread_join(thread, nullptr);
  return started;
}

}  // namespace

void RunOnBigStack(const std::function<void()>& work) {
  if (onBigStack) {
    work();
    return;
  }
  const StackMemory stack;
  Job job{work, nullptr};
  if (!stack.IsUsable() || !RunInThread(stack, job)) {
    work();
    return;
  }
  if (job.failure) std::rethrow_exception(job.failure);
}

}  // namespace FTS
