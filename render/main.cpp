// quarzel-render, the offline host: renders MIDI files through an instrument into sound files.
#include <iostream>

#include "platform/console.h"
#include "render/program.h"

int main(int argc, char** argv) {
    static std::atomic<bool> interrupted{false};
    platform::useUtf8Console();
    platform::printMessages();  // there may be nobody to close a window
    platform::setWhenInterrupted(interrupted);
    return render::run(argc, argv,
                       {std::cout, std::cerr, platform::isErrorOutputWatched(), interrupted});
}
