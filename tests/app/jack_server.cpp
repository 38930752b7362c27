// Processes, and a JACK client without a lock.
#include "tests/app/jack_server.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>

#include <fcntl.h>
#include <jack/midiport.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

Program::Program(const std::vector<std::string>& words, std::string outputFile)
    : outputFile_(std::move(outputFile)) {
    std::vector<char*> arguments;
    for (const auto& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    const int file = open(outputFile_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    process_ = fork();
    if (process_ != 0) {
        close(file);
        return;
    }
    prctl(PR_SET_PDEATHSIG, SIGTERM);  // also when the test is killed
    dup2(file, STDOUT_FILENO);
    dup2(file, STDERR_FILENO);
    execvp(arguments[0], arguments.data());
    _exit(127);
}

Program::~Program() {
    if (hasEnded()) return;
    signal(SIGTERM);
    if (waitForEnd() == -1 && !hasEnded()) {
        signal(SIGKILL);
        waitForEnd();
    }
}

std::string Program::output() const {
    std::ifstream file(outputFile_);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void Program::signal(int number) const {
    if (process_ > 0) kill(process_, number);
}

bool Program::hasEnded() {
    if (process_ > 0 && waitpid(process_, &status_, WNOHANG) == process_) process_ = -1;
    return process_ <= 0;
}

int Program::waitForEnd() {
    for (int i = 0; i < 2000 && !hasEnded(); ++i) std::this_thread::sleep_for(10ms);
    return hasEnded() && WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
}

JackServer::JackServer(const std::string& folder) {
    if (std::system("command -v jackd >/dev/null") != 0) return;
    const std::string name = "quarzel-test-" + std::to_string(getpid());
    setenv("JACK_DEFAULT_SERVER", name.c_str(), 1);
    setenv("JACK_NO_AUDIO_RESERVATION", "1", 1);
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    const std::vector<std::string> words = {"jackd", "-r", "--no-mlock", "-n", name,  "-d",
                                            "dummy", "-r", "44100",      "-p", "1024"};
    server_ = std::make_unique<Program>(words, folder + "jackd.log");
    for (int i = 0; i < 500 && !client_ && !server_->hasEnded(); ++i) {
        std::this_thread::sleep_for(20ms);
        client_ = jack_client_open("listener", JackNoStartServer, nullptr);
    }
    if (client_) connect();
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

bool JackServer::listen() {
    const char** const ports =
        jack_get_ports(client_, "Quarzel Strings:.*0", JACK_DEFAULT_AUDIO_TYPE, JackPortIsOutput);
    if (!ports) return false;
    if (!jack_port_connected_to(sound_, ports[0])) {
        jack_connect(client_, ports[0], jack_port_name(sound_));
    }
    jack_free(ports);
    return true;
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
