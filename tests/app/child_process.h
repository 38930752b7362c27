// Runs another program during a test.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// A program that runs in parallel to the test. Its standard output and error go to a file.
class ChildProcess {
  public:
    ChildProcess(const std::vector<std::string>& words, std::string outputFile);
    ~ChildProcess();  // sends SIGTERM
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    std::string output() const;  // so far
    void signal(int number) const;
    // Returns its exit code, or -1 if it runs longer than 20 s or a signal ends it.
    int waitForEnd();
    bool hasEnded();

  private:
    pid_t process_ = -1;
    int status_ = 0;
    std::string outputFile_;
};
