// Another program while a test runs.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// A program that runs beside the test. Its standard output and error go to a file.
class ChildProcess {
  public:
    ChildProcess(const std::vector<std::string>& words, std::string outputFile);
    ~ChildProcess();  // ends it by SIGTERM
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    std::string output() const;  // so far
    void signal(int number) const;
    // Its exit code; -1 when it has not ended within 20 s, or was ended by a signal.
    int waitForEnd();
    bool hasEnded();

  private:
    pid_t process_ = -1;
    int status_ = 0;
    std::string outputFile_;
};
