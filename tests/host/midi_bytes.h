// Builds Standard MIDI Files byte by byte.
#pragma once

#include <initializer_list>
#include <string>
#include <vector>

inline std::string bytes(std::initializer_list<int> values) {
    std::string text;
    for (const int value : values) text.push_back(static_cast<char>(value));
    return text;
}

// The lower count bytes of value, most significant first.
inline std::string bigEndian(unsigned value, int count) {
    std::string text;
    for (int i = count - 1; i >= 0; --i) text.push_back(static_cast<char>(value >> (8 * i)));
    return text;
}

inline std::string chunk(const std::string& kind, const std::string& content) {
    return kind + bigEndian(static_cast<unsigned>(content.size()), 4) + content;
}

inline std::string midiHeader(int type, int trackCount, int division) {
    return chunk("MThd", bigEndian(type, 2) + bigEndian(trackCount, 2) + bigEndian(division, 2));
}

// A whole file. Appends an end mark with no delta time to each track.
inline std::string midiFile(int type, int division, const std::vector<std::string>& tracks) {
    std::string file = midiHeader(type, static_cast<int>(tracks.size()), division);
    for (const auto& track : tracks) file += chunk("MTrk", track + bytes({0, 0xff, 0x2f, 0}));
    return file;
}
