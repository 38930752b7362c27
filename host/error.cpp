// Turns exceptions into messages and exit codes.
#include "host/error.h"

namespace host {

int exitCodeOf(const char* program, std::ostream& err, const std::function<void()>& action) {
    try {
        action();
        return 0;
    } catch (const UsageError& error) {
        err << program << ": " << error.what() << " (see --help)\n";
        return 2;
    } catch (const std::exception& error) {
        err << program << ": " << error.what() << '\n';
        return 1;
    }
}

}  // namespace host
