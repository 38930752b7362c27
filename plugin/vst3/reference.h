// Counted references to objects of the interface, ours and the host's.
#pragma once

#include <atomic>
#include <cstring>
#include <utility>

#include "plugin/vst3/base.h"

namespace vst3 {

inline bool isSame(const TUID id, const Uid& other) {
    return std::memcmp(id, other.data(), other.size()) == 0;
}

// One reference, taken over from who gives it.
template <typename Interface>
class Ref {
  public:
    Ref() = default;
    explicit Ref(Interface* taken) : object_(taken) {}
    ~Ref() { reset(); }
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Ref& operator=(Ref&& other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    void reset() {
        if (Interface* const object = std::exchange(object_, nullptr)) object->release();
    }
    Interface* get() const { return object_; }
    Interface* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }

  private:
    Interface* object_ = nullptr;
};

// A further reference; the object may be null.
template <typename Interface>
Ref<Interface> shared(Interface* object) {
    if (object) object->addRef();
    return Ref<Interface>(object);
}

// The object under another interface; null when it has none, or is null itself.
template <typename Interface>
Ref<Interface> query(FUnknown* object) {
    void* found = nullptr;
    if (!object || object->queryInterface(Interface::kIid.data(), &found) != kResultOk) return {};
    return Ref<Interface>(static_cast<Interface*>(found));
}

// The count of an object that dies with its last reference.
class ReferenceCount {
  public:
    uint32 add() { return ++count_; }
    uint32 remove() { return --count_; }

  private:
    std::atomic<uint32> count_{1};
};

// Writes a new reference to `object` as Interface if the id is that one's.
template <typename Interface, typename Object>
bool answers(Object* object, const TUID id, void** found) {
    if (!isSame(id, Interface::kIid)) return false;
    Interface* const answer = object;
    answer->addRef();
    *found = answer;
    return true;
}

}  // namespace vst3
