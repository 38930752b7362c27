// Runs another program during a test.
#pragma once

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

// A program that runs in parallel to the test. Its standard output and error go to a file.
class ChildProcess {
  public:
    ChildProcess(const std::vector<std::string>& words, std::string outputFile);
    ~ChildProcess();  // sends SIGTERM
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    std::string output() const;  // so far
    void signal(int number) const;
    // Returns its exit code, or -1 if it runs longer than a minute or a signal ends it.
    int waitForEnd();
    bool hasEnded();

  private:
    pid_t process_ = -1;
    int status_ = 0;
    std::string outputFile_;
};

inline ChildProcess::ChildProcess(const std::vector<std::string>& words, std::string outputFile)
    : outputFile_(std::move(outputFile)) {
    std::vector<char*> arguments;
    for (const auto& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const int file = open(outputFile_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    process_ = fork();
    if (process_ != 0) {
        close(file);
        return;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // even if the test is killed
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

inline ChildProcess::~ChildProcess() {
    if (hasEnded()) return;
    signal(SIGTERM);
    if (waitForEnd() == -1 && !hasEnded()) {
        signal(SIGKILL);
        waitForEnd();
    }
}

inline std::string ChildProcess::output() const {
    std::ifstream file(outputFile_);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline void ChildProcess::signal(int number) const {
    if (process_ > 0) kill(process_, number);
}

inline bool ChildProcess::hasEnded() {
    if (process_ > 0 && waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
    return process_ <= 0;
}

inline int ChildProcess::waitForEnd() {
    for (int i = 0; i < 6000 && !hasEnded(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return hasEnded() && WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
}
