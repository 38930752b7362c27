// Relaxed atomic access to plain words of records that two threads may touch.
#pragma once

#include <cstddef>
#include <cstdint>

namespace state {

// The records are file formats, so their fields are plain; every access from code that may run
// beside another thread goes through these.
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

// Unless the word has become another than `was`.
template <typename Word>
void exchangeWord(Word& word, Word was, Word value) {
    __atomic_compare_exchange(&word, &was, &value, false, __ATOMIC_RELAXED, __ATOMIC_RELAXED);
}

// Copy `size` bytes. What other threads may touch, the source or the target, is aligned for 32-bit
// words; the other side need not be.
void loadBytes(void* to, const void* from, std::size_t size);
void storeBytes(void* to, const void* from, std::size_t size);

}  // namespace state
