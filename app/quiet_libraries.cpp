// Replaces the message handlers of ALSA and JACK.
#include "app/quiet_libraries.h"

#include <iostream>

#include <alsa/asoundlib.h>
#include <jack/jack.h>

namespace app {
namespace {

void ignoreAlsa(const char*, int, const char*, int, const char*, ...) {}
void ignoreJack(const char*) {}

}  // namespace

QuietLibraries::QuietLibraries() : before_(std::cerr.rdbuf(nullptr)) {
    snd_lib_error_set_handler(ignoreAlsa);
    jack_set_error_function(ignoreJack);
    jack_set_info_function(ignoreJack);
}

QuietLibraries::~QuietLibraries() {
    std::cerr.rdbuf(before_);
}

}  // namespace app
