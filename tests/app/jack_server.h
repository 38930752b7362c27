// A private JACK server for a test, with a client that listens and sends MIDI.
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <string>
#include <vector>

#include <jack/jack.h>

#include "platform/spsc_ring.h"
#include "tests/app/child_process.h"

// jackd with its dummy driver, in real time but without hardware. Programs started later find it
// through the environment.
class JackServer {
  public:
    // The folder is for its log. Throws if the server is there but does not start.
    explicit JackServer(const std::string& folder);
    ~JackServer();

    // Returns false if jackd is not installed.
    bool isRunning() const { return client_ != nullptr; }
    void stop();
    // Lets this process open only count more clients, like a server that is full.
    static void acceptClients(int count);

    // Connects to the program's output, which exists before it accepts connections. Returns
    // whether it is connected.
    bool listen(const char* output = "Quarzel Strings:.*0");
    // Connects MIDI to a program that does not do it itself. Returns false if it has no such port.
    bool feed(const char* input);
    // The latest half second of the left channel.
    std::vector<float> heard() const;
    void sendMidi(const std::array<unsigned char, 3>& message);

    static constexpr int kRate = 44100;

  private:
    void connect();
    static int process(jack_nframes_t frames, void* self);

    std::unique_ptr<ChildProcess> server_;
    jack_client_t* client_ = nullptr;
    jack_port_t* sound_ = nullptr;
    jack_port_t* midi_ = nullptr;
    std::array<std::atomic<float>, kRate / 2> samples_{};
    std::atomic<std::size_t> written_{0};
    platform::SpscRing<std::array<unsigned char, 3>, 64> messages_;
};
