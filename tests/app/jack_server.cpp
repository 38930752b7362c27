// The server as a process, and a lock-free JACK client.
#include "tests/app/jack_server.h"

#include <chrono>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <thread>

#include <dlfcn.h>
#include <jack/midiport.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

int acceptedClients = std::numeric_limits<int>::max();

}  // namespace

// Replaces the library's function, also for the libraries linked to this program.
extern "C" __attribute__((visibility("default"))) jack_client_t* jack_client_open(
    const char* name, jack_options_t options, jack_status_t* status, ...) {
    if (acceptedClients-- <= 0) return nullptr;
    static const auto open =
        reinterpret_cast<decltype(&jack_client_open)>(dlsym(RTLD_NEXT, "jack_client_open"));
    return open(name, options, status);  // no caller here names a server
}

void JackServer::acceptClients(int count) {
    acceptedClients = count;
}

JackServer::JackServer(const std::string& folder) {
    if (std::system("command -v jackd >/dev/null") != 0) return;
    const std::string name = "quarzel-test-" + std::to_string(getpid());
    setenv("JACK_DEFAULT_SERVER", name.c_str(), 1);
    setenv("JACK_NO_AUDIO_RESERVATION", "1", 1);
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    // On a loaded machine, half a second is too short a timeout for clients.
    const std::vector<std::string> words = {"jackd", "-r", "--no-mlock", "-t",    "4000",
                                            "-n",    name, "-d",         "dummy", "-r",
                                            "44100", "-p", "1024"};
    server_ = std::make_unique<ChildProcess>(words, folder + "jackd.log");
    for (int i = 0; i < 3000 && !client_ && !server_->hasEnded(); ++i) {
        std::this_thread::sleep_for(20ms);
        client_ = jack_client_open("listener", JackNoStartServer, nullptr);
    }
    if (!client_) throw std::runtime_error("jackd does not start");
    connect();
}

JackServer::~JackServer() {
    stop();
}

void JackServer::stop() {
    if (client_) jack_client_close(client_);
    client_ = nullptr;
    server_.reset();
}

void JackServer::connect() {
    sound_ = jack_port_register(client_, "left", JACK_DEFAULT_AUDIO_TYPE, JackPortIsInput, 0);
    midi_ = jack_port_register(client_, "keys", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    jack_set_process_callback(client_, &JackServer::process, this);
    jack_activate(client_);
}

bool JackServer::feed(const char* input) {
    return jack_connect(client_, jack_port_name(midi_), input) == 0;
}

bool JackServer::listen(const char* output) {
    const char** const ports =
        jack_get_ports(client_, output, JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
    if (!ports) return false;
    const bool isConnected = jack_port_connected_to(sound_, ports[0]) ||
                             jack_connect(client_, ports[0], jack_port_name(sound_)) == 0;
    jack_free(ports);
    return isConnected;
}

std::vector<float> JackServer::heard() const {
    std::vector<float> samples;
    const std::size_t begin = written_;
    for (std::size_t i = 0; i < samples_.size(); ++i) {
        samples.push_back(samples_[(begin + i) % samples_.size()]);
    }
    return samples;
}

void JackServer::sendMidi(const std::array<unsigned char, 3>& message) {
    messages_.push(message);
}

int JackServer::process(jack_nframes_t frames, void* self) {
    auto& server = *static_cast<JackServer*>(self);
    const auto* const sound = static_cast<float*>(jack_port_get_buffer(server.sound_, frames));
    std::size_t written = server.written_;
    for (jack_nframes_t i = 0; i < frames; ++i) {
        server.samples_[written++ % server.samples_.size()] = sound[i];
    }
    server.written_ = written;

    void* const midi = jack_port_get_buffer(server.midi_, frames);
    jack_midi_clear_buffer(midi);
    std::array<unsigned char, 3> message;
    while (server.messages_.pop(message)) jack_midi_event_write(midi, 0, message.data(), 3);
    return 0;
}
