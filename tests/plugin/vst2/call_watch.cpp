// The program defines the watched functions under their own names, in front of the C library's, so
// its libraries call them, too. The kernel reports system calls by a signal.
#include "tests/plugin/vst2/call_watch.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

#include <dlfcn.h>
#include <linux/prctl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/prctl.h>
#include <ucontext.h>

namespace watch {
namespace {

// The kernel reads the trap at every system call of the thread.
constexpr char kPass = 0;   // SYSCALL_DISPATCH_FILTER_ALLOW
constexpr char kBlock = 1;  // SYSCALL_DISPATCH_FILTER_BLOCK
thread_local volatile char trap = kPass;
thread_local bool trapping = false;  // enabled in the kernel
thread_local bool noting = false;

class Entry {
  public:
    explicit Entry(const char* name) : name_(name), next_(first_) { first_ = this; }
    void note() {
        if (noting) count_.fetch_add(1, std::memory_order_relaxed);
    }

    template <typename Action>
    static void forEach(Action action) {
        for (Entry* entry = first_; entry; entry = entry->next_) action(*entry);
    }
    const char* name() const { return name_; }
    int count() const { return count_; }
    void clear() { count_ = 0; }

  private:
    inline static Entry* first_ = nullptr;
    const char* name_;
    Entry* next_;
    std::atomic<int> count_{0};
};

template <typename Function>
Function next(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

constexpr int kSystemCalls = 512;
std::atomic<int> systemCalls[kSystemCalls];

constexpr int kMostMutexes = 64;
std::atomic<void*> mutexes[kMostMutexes];
std::atomic<int> taken{0};
std::atomic<int> awaited{0};

void noteLock(void* mutex, bool waited) {
    taken.fetch_add(1, std::memory_order_relaxed);
    awaited.fetch_add(waited, std::memory_order_relaxed);
    for (auto& seen : mutexes) {
        void* expected = nullptr;
        if (seen.compare_exchange_strong(expected, mutex) || expected == mutex) return;
    }
}

// Executes the thread's system call and lets the rest of this Watch pass.
void onSystemCall(int, siginfo_t* info, void* context) {
    trap = kPass;
    if (info->si_syscall < kSystemCalls) systemCalls[info->si_syscall].fetch_add(1);
    static const auto call = next<long (*)(long, ...)>("syscall");
    greg_t* const r = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
    const int before = errno;
    const long answer = call(info->si_syscall, r[REG_RDI], r[REG_RSI], r[REG_RDX], r[REG_R10],
                             r[REG_R8], r[REG_R9]);
    r[REG_RAX] = answer == -1 ? -errno : answer;
    errno = before;
}

bool askForSystemCalls() {
    struct sigaction action = {};
    action.sa_sigaction = onSystemCall;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;  // otherwise the call finds the signal blocked
    return sigaction(SIGSYS, &action, nullptr) == 0 &&
           prctl(PR_SET_SYSCALL_USER_DISPATCH, PR_SYS_DISPATCH_ON, 0L, 0L, &trap) == 0;
}

}  // namespace

Watch::Watch() {
    const bool trapped = seesSystemCalls();
    noting = true;
    if (trapped) trap = kBlock;
}

Watch::~Watch() {
    trap = kPass;
    noting = false;
}

bool seesSystemCalls() {
    if (!trapping) trapping = askForSystemCalls();
    return trapping;
}

void reset() {
    Entry::forEach([](Entry& entry) { entry.clear(); });
    for (auto& count : systemCalls) count = 0;
    for (auto& mutex : mutexes) mutex = nullptr;
    taken = awaited = 0;
}

std::string calls() {
    std::string text;
    const auto add = [&text](const std::string& name, int count) {
        if (count > 0) text += (text.empty() ? "" : ", ") + name + ' ' + std::to_string(count);
    };
    Entry::forEach([&](Entry& entry) { add(entry.name(), entry.count()); });
    for (int i = 0; i < kSystemCalls; ++i) {
        add("system call " + std::to_string(i), systemCalls[i]);
    }
    return text;
}

Locks locks() {
    Locks all = {taken, awaited};
    for (const auto& mutex : mutexes) all.mutexes += mutex != nullptr;
    return all;
}

}  // namespace watch

// Headers declare these functions differently, so the definitions use other names here.
#define DEFINE(name, result, parameters)              \
    static watch::Entry entry_##name(#name);          \
    extern "C" __attribute__((visibility("default"))) \
    result watched_##name parameters __asm__(#name);  \
    extern "C" result watched_##name parameters

#define WATCH(name, result, parameters, ...)                               \
    DEFINE(name, result, parameters) {                                     \
        entry_##name.note();                                               \
        static const auto real = watch::next<result(*) parameters>(#name); \
        return real(__VA_ARGS__);                                          \
    }

// Heap. The dynamic linker needs it before it can look up symbols.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);
}
DEFINE(malloc, void*, (std::size_t size)) {
    entry_malloc.note();
    return __libc_malloc(size);
}
DEFINE(calloc, void*, (std::size_t count, std::size_t size)) {
    entry_calloc.note();
    return __libc_calloc(count, size);
}
DEFINE(realloc, void*, (void* block, std::size_t size)) {
    entry_realloc.note();
    return __libc_realloc(block, size);
}
DEFINE(aligned_alloc, void*, (std::size_t alignment, std::size_t size)) {
    entry_aligned_alloc.note();
    return __libc_memalign(alignment, size);
}
DEFINE(free, void, (void* block)) {
    if (block) entry_free.note();
    __libc_free(block);
}

// Locks that are free need no system call.
extern "C" __attribute__((visibility("default"))) int watched_lock(pthread_mutex_t* mutex) __asm__(
    "pthread_mutex_lock");
extern "C" int watched_lock(pthread_mutex_t* mutex) {
    using Lock = int (*)(pthread_mutex_t*);
    static const auto lock = watch::next<Lock>("pthread_mutex_lock");
    static const auto tryLock = watch::next<Lock>("pthread_mutex_trylock");
    if (!watch::noting) return lock(mutex);
    const bool waits = tryLock(mutex) == EBUSY;
    const int answer = waits ? lock(mutex) : 0;
    watch::noteLock(mutex, waits);
    return answer;
}
WATCH(pthread_mutex_trylock, int, (void* mutex), mutex)
WATCH(pthread_rwlock_rdlock, int, (void* lock), lock)
WATCH(pthread_rwlock_wrlock, int, (void* lock), lock)
WATCH(pthread_cond_signal, int, (void* condition), condition)
WATCH(pthread_cond_broadcast, int, (void* condition), condition)
WATCH(sem_post, int, (void* semaphore), semaphore)

// What belongs to the whole process: exceptions, environment, locale, random generator, streams.
WATCH(__cxa_throw, void, (void* thrown, void* type, void* destroy), thrown, type, destroy)
WATCH(getenv, char*, (void* name), name)
WATCH(setlocale, char*, (int category, void* name), category, name)
WATCH(strtod, double, (void* text, void* end), text, end)
WATCH(vsnprintf, int, (void* to, long size, void* format, void* arguments), to, size, format,
      arguments)
WATCH(rand, int, ())
WATCH(fwrite, long, (void* from, long size, long count, void* file), from, size, count, file)
