// Parses the text form of a bank.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "state/bank.h"

namespace banks {

// The message names the line: "line 12: ...".
class BankSourceError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct BankSource {
    state::Bank bank;
    int programs = 0;  // named in the text; the rest keep their defaults
};

// A line that starts with "#" is a comment. Every other line is one of
//
//     program NAME            begins the next program; NAME is the rest of the line, 1..23 bytes
//     PARAMETER VALUE, ...    sets values 0..1, each parameter at most once per program
//
// PARAMETER is the stored name; "NAME#2" is the second parameter with that name. Values not given
// keep their defaults. Throws BankSourceError at the first error.
BankSource parseBankSource(std::string_view text);

}  // namespace banks
