// The program defines the watched functions under their own names, in front of the C library's, so
// its libraries call them, too. The kernel reports system calls by a signal.
#include "tests/plugin/vst2/call_watch.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdarg>
#include <cstddef>
#include <cstdio>

#include <dlfcn.h>
#include <linux/prctl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/prctl.h>
#include <ucontext.h>
#include <x86intrin.h>

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
std::atomic<long> taken{0};
std::atomic<long> awaited{0};
std::atomic<std::uint64_t> allTicks{0};
std::atomic<std::uint64_t> longestTicks{0};

void noteLock(void* mutex, bool waited, std::uint64_t ticks) {
    taken.fetch_add(1, std::memory_order_relaxed);
    awaited.fetch_add(waited, std::memory_order_relaxed);
    allTicks.fetch_add(ticks, std::memory_order_relaxed);
    for (std::uint64_t longest = longestTicks;
         ticks > longest && !longestTicks.compare_exchange_weak(longest, ticks);) {
    }
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

double nanosecondsPerTick() {
    using namespace std::chrono;
    const auto start = steady_clock::now();
    const std::uint64_t ticks = __rdtsc();
    while (steady_clock::now() - start < milliseconds(5)) {
    }
    const duration<double, std::nano> passed = steady_clock::now() - start;
    return passed.count() / static_cast<double>(__rdtsc() - ticks);
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
    allTicks = longestTicks = 0;
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
    static const double scale = nanosecondsPerTick();
    Locks all = {taken, awaited};
    all.averageNanoseconds = scale * static_cast<double>(allTicks) / std::max(all.taken, 1L);
    all.longestNanoseconds = scale * static_cast<double>(longestTicks);
    for (const auto& mutex : mutexes) all.mutexes += mutex != nullptr;
    return all;
}

std::vector<std::string> names() {
    std::vector<std::string> all;
    Entry::forEach([&](Entry& entry) { all.push_back(entry.name()); });
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

// Optional arguments that were not given arrive as register garbage and are passed on unchanged.
using Word = long;

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
WATCH(posix_memalign, int, (void** block, Word alignment, Word size), block, alignment, size)
WATCH(mmap, void*, (void* at, Word size, int access, int flags, int file, Word from), at, size,
      access, flags, file, from)
WATCH(munmap, int, (void* at, Word size), at, size)

// Locks.
extern "C" __attribute__((visibility("default"))) int watched_lock(pthread_mutex_t* mutex) __asm__(
    "pthread_mutex_lock");
extern "C" int watched_lock(pthread_mutex_t* mutex) {
    using Lock = int (*)(pthread_mutex_t*);
    static const auto lock = watch::next<Lock>("pthread_mutex_lock");
    static const auto tryLock = watch::next<Lock>("pthread_mutex_trylock");
    if (!watch::noting) return lock(mutex);
    const std::uint64_t start = __rdtsc();
    const bool waits = tryLock(mutex) == EBUSY;
    const int answer = waits ? lock(mutex) : 0;
    watch::noteLock(mutex, waits, __rdtsc() - start);
    return answer;
}
WATCH(pthread_mutex_trylock, int, (void* mutex), mutex)
WATCH(pthread_mutex_timedlock, int, (void* mutex, void* until), mutex, until)
WATCH(pthread_rwlock_rdlock, int, (void* lock), lock)
WATCH(pthread_rwlock_wrlock, int, (void* lock), lock)
WATCH(pthread_spin_lock, int, (void* lock), lock)
WATCH(pthread_cond_wait, int, (void* condition, void* mutex), condition, mutex)
WATCH(pthread_cond_timedwait, int, (void* condition, void* mutex, void* until), condition, mutex,
      until)
WATCH(pthread_cond_clockwait, int, (void* condition, void* mutex, int clock, void* until),
      condition, mutex, clock, until)
WATCH(pthread_cond_signal, int, (void* condition), condition)
WATCH(pthread_cond_broadcast, int, (void* condition), condition)
WATCH(sem_wait, int, (void* semaphore), semaphore)
WATCH(sem_timedwait, int, (void* semaphore, void* until), semaphore, until)
WATCH(sem_post, int, (void* semaphore), semaphore)
WATCH(pthread_create, int, (void* thread, void* attributes, void* start, void* argument), thread,
      attributes, start, argument)
WATCH(pthread_join, int, (Word thread, void** answer), thread, answer)

// Waits.
WATCH(nanosleep, int, (void* time, void* rest), time, rest)
WATCH(clock_nanosleep, int, (int clock, int flags, void* time, void* rest), clock, flags, time,
      rest)
WATCH(usleep, int, (unsigned time), time)
WATCH(sleep, unsigned, (unsigned time), time)
WATCH(sched_yield, int, ())
WATCH(poll, int, (void* files, Word count, int time), files, count, time)
WATCH(select, int, (int count, void* in, void* out, void* other, void* time), count, in, out, other,
      time)

// Files and sockets.
WATCH(open, int, (void* path, int flags, Word mode), path, flags, mode)
WATCH(open64, int, (void* path, int flags, Word mode), path, flags, mode)
WATCH(openat, int, (int folder, void* path, int flags, Word mode), folder, path, flags, mode)
WATCH(fopen, void*, (void* path, void* mode), path, mode)
WATCH(fopen64, void*, (void* path, void* mode), path, mode)
WATCH(fclose, int, (void* file), file)
WATCH(fflush, int, (void* file), file)
WATCH(read, Word, (int file, void* to, Word size), file, to, size)
WATCH(write, Word, (int file, void* from, Word size), file, from, size)
WATCH(writev, Word, (int file, void* pieces, int count), file, pieces, count)
WATCH(lseek, Word, (int file, Word to, int from), file, to, from)
WATCH(close, int, (int file), file)
WATCH(stat, int, (void* path, void* answer), path, answer)
WATCH(lstat, int, (void* path, void* answer), path, answer)
WATCH(fstat, int, (int file, void* answer), file, answer)
WATCH(access, int, (void* path, int mode), path, mode)
WATCH(rename, int, (void* from, void* to), from, to)
WATCH(unlink, int, (void* path), path)
WATCH(mkdir, int, (void* path, Word mode), path, mode)
WATCH(rmdir, int, (void* path), path)
WATCH(fsync, int, (int file), file)
WATCH(opendir, void*, (void* path), path)
WATCH(ioctl, int, (int file, Word request, Word argument), file, request, argument)
WATCH(fcntl, int, (int file, int request, Word argument), file, request, argument)
WATCH(connect, int, (int file, void* address, unsigned size), file, address, size)
WATCH(syscall, Word, (Word number, Word a, Word b, Word c, Word d, Word e, Word f), number, a, b, c,
      d, e, f)

// Console and locale-dependent text. The compiler uses the checking variants where it can.
#define WATCH_FORMATTED(name, parameters, call) \
    DEFINE(name, int, parameters) {             \
        entry_##name.note();                    \
        va_list arguments;                      \
        va_start(arguments, format);            \
        const int answer = call;                \
        va_end(arguments);                      \
        return answer;                          \
    }
WATCH_FORMATTED(printf, (const char* format, ...), std::vprintf(format, arguments))
WATCH_FORMATTED(__printf_chk, (int, const char* format, ...), std::vprintf(format, arguments))
WATCH_FORMATTED(fprintf, (std::FILE * file, const char* format, ...),
                std::vfprintf(file, format, arguments))
WATCH_FORMATTED(__fprintf_chk, (std::FILE * file, int, const char* format, ...),
                std::vfprintf(file, format, arguments))
WATCH_FORMATTED(snprintf, (char* text, std::size_t size, const char* format, ...),
                std::vsnprintf(text, size, format, arguments))
WATCH_FORMATTED(__snprintf_chk,
                (char* text, std::size_t size, int, std::size_t, const char* format, ...),
                std::vsnprintf(text, size, format, arguments))
WATCH(vfprintf, int, (void* file, void* format, void* arguments), file, format, arguments)
WATCH(puts, int, (void* text), text)
WATCH(fputs, int, (void* text, void* file), text, file)
WATCH(fwrite, Word, (void* from, Word size, Word count, void* file), from, size, count, file)
WATCH(strtod, double, (void* text, void* end), text, end)

// Loader, environment, random generator, exceptions.
WATCH(dlopen, void*, (void* path, int flags), path, flags)
WATCH(dlclose, int, (void* library), library)
WATCH(getenv, char*, (void* name), name)
WATCH(setlocale, char*, (int category, void* name), category, name)
WATCH(newlocale, void*, (int categories, void* name, void* base), categories, name, base)
WATCH(uselocale, void*, (void* locale), locale)
WATCH(rand, int, ())
WATCH(system, int, (void* line), line)
WATCH(__cxa_throw, void, (void* thrown, void* type, void* destroy), thrown, type, destroy)
