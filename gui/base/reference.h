// Reference counting: an object lives until its last reference is released.
#pragma once

#include <atomic>
#include <cstdint>
#include <utility>

namespace VSTGUI {

class IReference {
  public:
    virtual ~IReference() noexcept = default;
    virtual void remember() = 0;
    virtual void forget() = 0;
};

// A new object has one reference, which belongs to its creator. The last forget() deletes it.
template <typename Counter>
class ReferenceCounted : virtual public IReference {
  public:
    ReferenceCounted() = default;
    // A copy is a separate object and starts with its own count.
    ReferenceCounted(const ReferenceCounted&) {}
    ReferenceCounted& operator=(const ReferenceCounted&) { return *this; }

    void remember() override { ++references_; }
    void forget() override {
        if (--references_ > 0) return;
        beforeDelete();
        delete this;
    }
    virtual int32_t getNbReference() const { return references_; }
    // Runs while the object is still complete.
    virtual void beforeDelete() {}

  private:
    Counter references_{1};
};

using AtomicReferenceCounted = ReferenceCounted<std::atomic<int32_t>>;
using NonAtomicReferenceCounted = ReferenceCounted<int32_t>;

class CBaseObject : public AtomicReferenceCounted {};

// Holds one reference; converts to the raw pointer.
template <class T>
class SharedPointer {
  public:
    SharedPointer() = default;
    SharedPointer(T* object, bool remember = true) : object_(object) {
        if (object_ && remember) object_->remember();
    }
    SharedPointer(const SharedPointer& other) : SharedPointer(other.object_) {}
    SharedPointer(SharedPointer&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}
    template <class U>
    SharedPointer(const SharedPointer<U>& other) : SharedPointer(other.get()) {}
    ~SharedPointer() noexcept {
        if (object_) object_->forget();
    }

    SharedPointer& operator=(SharedPointer other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    T* get() const { return object_; }
    operator T*() const { return object_; }
    T* operator->() const { return object_; }

  private:
    T* object_ = nullptr;
};

// Takes over the caller's reference.
template <class T>
SharedPointer<T> owned(T* object) {
    return SharedPointer<T>(object, false);
}

// Adds a reference.
template <class T>
SharedPointer<T> shared(T* object) {
    return SharedPointer<T>(object);
}

template <class T, typename... Arguments>
SharedPointer<T> makeOwned(Arguments&&... arguments) {
    return owned(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace VSTGUI
