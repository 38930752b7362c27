// The record that a host looks up in the library.
#include "plugin/clap/factory.h"

extern "C" {

extern const clap::Entry clap_entry;
const clap::Entry clap_entry = {
    clap::kVersion,
    [](const char*) { return true; },
    [] {},
    clap::factory,
};
}
