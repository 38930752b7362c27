// Runs an action in a child process that stops before each system call, where the test can kill it
// or make the call fail.
#pragma once

#include <cerrno>
#include <csignal>
#include <functional>
#include <optional>

#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

class TracedChild {
  public:
    enum Result { kTrue, kFalse, kDied };

    // Only the thread that creates the child may use it.
    explicit TracedChild(const std::function<bool()>& action) : process_(fork()) {
        if (process_ == 0) {
            ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
            raise(SIGSTOP);
            _exit(action() ? kTrue : kFalse);
        }
        waitpid(process_, &status_, 0);
        ptrace(PTRACE_SETOPTIONS, process_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    }
    ~TracedChild() {
        if (!isStopped()) return;
        // The current call does not happen.
        ::kill(process_, SIGKILL);
        waitpid(process_, &status_, 0);
    }
    TracedChild(const TracedChild&) = delete;
    TracedChild& operator=(const TracedChild&) = delete;

    // Lets the current call happen and stops before the next. Returns its number, or nothing at the
    // end.
    std::optional<long> next() {
        if (isInCall_) goOn();  // to the end of the call
        goOn();
        isInCall_ = isStopped();
        if (!isInCall_) return std::nullopt;
        return static_cast<long>(registers().orig_rax);
    }

    // The current call does not happen and returns `error`.
    void fail(int error) {
        user_regs_struct values = registers();
        values.orig_rax = static_cast<unsigned long long>(-1);
        ptrace(PTRACE_SETREGS, process_, nullptr, &values);
        goOn();
        isInCall_ = false;
        values = registers();
        values.rax = static_cast<unsigned long long>(-error);
        ptrace(PTRACE_SETREGS, process_, nullptr, &values);
    }

    // The result of the action, once it has ended.
    Result result() const {
        return WIFEXITED(status_) ? static_cast<Result>(WEXITSTATUS(status_)) : kDied;
    }

  private:
    bool isStopped() const { return WIFSTOPPED(status_); }
    void goOn() {
        if (!isStopped()) return;
        ptrace(PTRACE_SYSCALL, process_, nullptr, nullptr);
        waitpid(process_, &status_, 0);
    }
    user_regs_struct registers() const {
        user_regs_struct values = {};
        ptrace(PTRACE_GETREGS, process_, nullptr, &values);
        return values;
    }

    const pid_t process_;
    int status_ = 0;
    bool isInCall_ = false;
};

// Runs the action in children that are killed before their first, second, third ... system call,
// until one completes. Calls the check after each. Returns the number killed.
inline int killAtEachCall(const std::function<bool()>& action,
                          const std::function<void()>& lookAround) {
    for (int killed = 0;; ++killed) {
        bool ended = false;
        {
            TracedChild child(action);
            for (int call = 0; call <= killed && !ended; ++call) ended = !child.next();
        }
        lookAround();
        if (ended) return killed;
    }
}

// Whether a call concerns files by name or descriptor. Writers need not survive other failures,
// such as memory.
inline bool isFileCall(long number) {
    switch (number) {
        case SYS_open:
        case SYS_openat:
        case SYS_close:
        case SYS_readlink:
        case SYS_stat:
        case SYS_fstat:
        case SYS_lstat:
        case SYS_newfstatat:
        case SYS_access:
        case SYS_flock:
        case SYS_fchmod:
        case SYS_ftruncate:
        case SYS_write:
        case SYS_fsync:
        case SYS_rename:
        case SYS_unlink:
            return true;
        default:
            return false;
    }
}
