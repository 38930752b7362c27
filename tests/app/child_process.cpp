// Processes through POSIX calls.
#include "tests/app/child_process.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <iterator>
#include <thread>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

ChildProcess::ChildProcess(const std::vector<std::string>& words, std::string outputFile)
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

ChildProcess::~ChildProcess() {
    if (hasEnded()) return;
    signal(SIGTERM);
    if (waitForEnd() == -1 && !hasEnded()) {
        signal(SIGKILL);
        waitForEnd();
    }
}

std::string ChildProcess::output() const {
    std::ifstream file(outputFile_);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void ChildProcess::signal(int number) const {
    if (process_ > 0) kill(process_, number);
}

bool ChildProcess::hasEnded() {
    if (process_ > 0 && waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
    return process_ <= 0;
}

int ChildProcess::waitForEnd() {
    for (int i = 0; i < 2000 && !hasEnded(); ++i) std::this_thread::sleep_for(10ms);
    return hasEnded() && WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
}
