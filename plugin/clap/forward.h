// Functions of the interface's records that call a method of the shell.
#pragma once

#include <exception>

#include "plugin/clap/shell.h"

namespace clap {

template <auto kMethod>
struct Forward;

template <typename Answer, typename... Arguments, Answer (Shell::*kMethod)(Arguments...)>
struct Forward<kMethod> {
    static Answer CLAP_CALL call(const Plugin* plugin, Arguments... arguments) {
        try {
            return (static_cast<Shell*>(plugin->plugin_data)->*kMethod)(arguments...);
        } catch (const std::exception&) {  // no memory
            return Answer();
        }
    }
};

template <auto kMethod>
constexpr auto forward = &Forward<kMethod>::call;

}  // namespace clap
