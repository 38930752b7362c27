// A locale with decimal commas, as a host may set for the whole process.
#pragma once

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <string>

#include "tests/support/temporary_folder.h"

// Sets the locale for C and C++ during its lifetime.
class ForeignLocale {
  public:
    ForeignLocale() : before_(std::locale::global(std::locale(std::locale(), new Commas))) {
        if (setLocale("de_DE.UTF-8") || setLocale("German_Germany.1252")) return;
#ifndef _WIN32
        // The old character set compiles ten times as fast.
        const std::string compile =
            "localedef -i de_DE -f ISO-8859-1 \"" + folder_.path() + "de_DE\" 2>/dev/null";
        setenv("LOCPATH", folder_.path().c_str(), 1);
        if (std::system(compile.c_str()) == 0) setLocale("de_DE");
        unsetenv("LOCPATH");
#endif
    }
    ~ForeignLocale() {
        std::setlocale(LC_ALL, "C");
        std::locale::global(before_);
    }
    ForeignLocale(const ForeignLocale&) = delete;
    ForeignLocale& operator=(const ForeignLocale&) = delete;

    bool ofTheCLibrary() const {
        return !name_.empty();
    }
    // Whether it is still the process's locale.
    bool stands() const {
        return std::has_facet<Commas>(std::locale()) &&
               (name_.empty() || std::setlocale(LC_ALL, nullptr) == name_);
    }

  private:
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };

    bool setLocale(const char* name) {
        const char* const set = std::setlocale(LC_ALL, name);
        if (!set || *std::localeconv()->decimal_point != ',') return false;
        name_ = set;
        return true;
    }

    TemporaryFolder folder_;
    std::locale before_;
    std::string name_;  // of the C locale, empty if there is none
};
