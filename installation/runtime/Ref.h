#pragma once

#include "installation/runtime/StandIn.h"

#include <utility>

namespace devinst {

// Holds one reference to a stand-in of this library.
template <typename T>
class Ref {
  public:
    Ref() = default;
    // Takes a reference of its own.
    explicit Ref(T* object) : m_object(object) {
        if (m_object != nullptr)
            m_object->AddReference();
    }
    Ref(const Ref& other) : Ref(other.m_object) {}
    Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Ref() {
        if (m_object != nullptr)
            m_object->ReleaseReference();
    }

    // A new object; takes over the reference that it is born with.
    template <typename... Arguments>
    static Ref Make(Arguments&&... arguments) {
        Ref made;
        made.m_object = new T(std::forward<Arguments>(arguments)...);
        return made;
    }

    T* Get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    // Hands the reference over as an interface pointer: the object's first interface.
    template <typename Interface>
    Interface* Detach() {
        return static_cast<Interface*>(std::exchange(m_object, nullptr)->Identity());
    }

  private:
    T* m_object = nullptr;
};

// The live stand-in of class T that an interface pointer belongs to; empty for any other pointer.
template <typename T>
Ref<T> RefOf(const void* pointer) {
    return Ref<T>(dynamic_cast<T*>(StandInOf(pointer)));
}

} // namespace devinst
