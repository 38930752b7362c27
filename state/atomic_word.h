// Relaxed atomic access to the plain words of records that two threads share.
#pragma once

#include <cstddef>
#include <cstdint>

namespace state {

// The records are file formats, so their fields are not std::atomic. Access them through these
// functions whenever another thread may be running.
template <typename Word>
Word loadWord(const Word& word) {
    Word value;
    __atomic_load(&word, &value, __ATOMIC_RELAXED);
    return value;
}

template <typename Word>
void storeWord(Word& word, Word value) {
    __atomic_store(&word, &value, __ATOMIC_RELAXED);
}

// Stores `value` only if the word still equals `was`.
template <typename Word>
void exchangeWord(Word& word, Word was, Word value) {
    __atomic_compare_exchange(&word, &was, &value, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED);
}

// Copy `size` bytes. The shared side (the source of loadBytes, the target of storeBytes) must be
// aligned for 32-bit words.
void loadBytes(void* to, const void* from, std::size_t size);
void storeBytes(void* to, const void* from, std::size_t size);

}  // namespace state
