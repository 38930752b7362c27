// Reads the text that a bank is written in.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "state/bank.h"

namespace banks {

// What is wrong and where, as "line 12: ...".
class BankSourceError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct BankSource {
    state::Bank bank;
    int programs = 0;  // those that the text names; the rest stay as a new bank has them
};

// The text is read line by line; "#" at the start of a line's text makes it a comment.
//
//     program NAME                  begins the next program; NAME is 1..23 bytes to the line's end
//     PARAMETER VALUE, ...          values 0..1 of that program, each parameter at most once
//
// A parameter goes by its stored name, the second of two with the same name by "NAME#2". What a
// program does not state keeps its default. Throws BankSourceError at the first fault.
BankSource parseBankSource(std::string_view text);

}  // namespace banks
