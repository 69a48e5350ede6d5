#pragma once

#include "foundation/EnableSharedPtrFromThis.h"

#include <concepts>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace Quorvex {

/// A pointer with an atomic count in a control block. The block knows how the object is to be destroyed, so a pointer
/// to a base destroys the derived object correctly. The object itself gets no protection from it.
template <class T, class Deleter = std::default_delete<T>>
class SharedPtr {
public:
    using element_type = T;

    SharedPtr() = default;
    SharedPtr(std::nullptr_t) {}

    /// Takes the object over; deletes it if the block cannot be made. An object that hands out pointers to itself
    /// learns its block here, at its first adoption.
    explicit SharedPtr(T* object) {
        if (object == nullptr)
            return;
        std::unique_ptr<T, Deleter> guard(object);
        m_block = new Data(object);
        m_object = guard.release();
        if constexpr (std::is_base_of_v<EnableSharedPtrFromThis, T>)
            Announce();
    }

    SharedPtr(const SharedPtr& other) : m_object(other.m_object), m_block(other.m_block) { Acquire(); }
    SharedPtr(SharedPtr&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr)), m_block(std::exchange(other.m_block, nullptr)) {}

    template <class U, class D>
    requires std::convertible_to<U*, T*> SharedPtr(const SharedPtr<U, D>& other)
        : m_object(other.m_object), m_block(other.m_block) {
        Acquire();
    }
    template <class U, class D>
    requires std::convertible_to<U*, T*> SharedPtr(SharedPtr<U, D>&& other)
    noexcept : m_object(std::exchange(other.m_object, nullptr)), m_block(std::exchange(other.m_block, nullptr)) {}

    ~SharedPtr() { Release(); }

    SharedPtr& operator=(SharedPtr other) noexcept {
        std::swap(m_object, other.m_object);
        std::swap(m_block, other.m_block);
        return *this;
    }

    T* get() const { return m_object; }
    T* operator->() const { return m_object; }
    T& operator*() const requires(!std::is_void_v<T>) { return *m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    void reset() { *this = SharedPtr(); }

    template <class U, class D>
    bool operator==(const SharedPtr<U, D>& other) const {
        return m_object == other.get();
    }
    bool operator==(std::nullptr_t) const { return m_object == nullptr; }

    /// The same object under another static type; null where the object is not of that type.
    template <class U>
    SharedPtr<U> DynamicCast() const {
        auto* object = dynamic_cast<U*>(m_object);
        return object != nullptr ? SharedPtr<U>(object, m_block) : SharedPtr<U>();
    }

private:
    template <class, class>
    friend class SharedPtr;
    friend class EnableSharedPtrFromThis;

    /// Keeps the pointer as it was adopted: a base of several bases lies at another address than its object.
    class Data final : public Internal::DataBase {
    public:
        explicit Data(T* object) : m_adopted(object) {}
        void destroy(void*) override { Deleter()(m_adopted); }

    private:
        T* m_adopted;
    };

    SharedPtr(T* object, Internal::DataBase* block) : m_object(object), m_block(block) { Acquire(); }

    void Announce() {
        try {
            m_object->SetSmartPointerFromThis(m_block);
        } catch (...) {
            // The object belongs to another pointer already; it must not be deleted a second time.
            delete m_block;
            throw;
        }
    }

    void Acquire() {
        if (m_block != nullptr)
            m_block->Add();
    }

    void Release() {
        if (m_block != nullptr && m_block->Subtract()) {
            m_block->destroy(const_cast<std::remove_cv_t<T>*>(m_object));
            delete m_block;
        }
    }

    T* m_object = nullptr;
    Internal::DataBase* m_block = nullptr;
};

template <class Self>
SharedPtr<Self> EnableSharedPtrFromThis::SharedPtrFromThis(Self* self) const {
    return SharedPtr<Self>(self, CheckedBlock());
}

template <class T, class... Arguments>
SharedPtr<T> MakeShared(Arguments&&... arguments) {
    return SharedPtr<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace Quorvex
