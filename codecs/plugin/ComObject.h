#pragma once

#include "codecs/plugin/VarnolitePlugin.h"
#include "foundation/Exception.h"

#include <atomic>
#include <exception>
#include <utility>

namespace ET::Img::Plugin {

using VarnolitePlugin::Result;

/// An object that the program hands to a plug-in: counts its users, begins with one, and ends itself with the last.
template <class Interface>
class ComObject : public Interface {
public:
    ComObject() = default;
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    Result VARNOLITE_CALL QueryInterface(const VarnolitePlugin::Identifier& identifier, void** object) override {
        if (object == nullptr)
            return VarnolitePlugin::Failure;
        const bool isIt = identifier == Interface::Id || identifier == VarnolitePlugin::IUnknown::Id;
        *object = isIt ? static_cast<Interface*>(this) : nullptr;
        if (!isIt)
            return VarnolitePlugin::NoInterface;
        AddRef();
        return VarnolitePlugin::Success;
    }
    std::uint32_t VARNOLITE_CALL AddRef() override { return ++m_users; }
    std::uint32_t VARNOLITE_CALL Release() override {
        const std::uint32_t left = --m_users;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~ComObject() = default;

    /// Where a plug-in wants its answer. Raises Exception with empty text where it names no place.
    template <class T>
    static T& PlaceOf(T* place) {
        if (place == nullptr)
            throw Quorvex::Exception();
        return *place;
    }

    /// No exception leaves the program this way.
    template <class Action>
    static Result Contain(const Action& action) noexcept {
        try {
            action();
            return VarnolitePlugin::Success;
        } catch (...) {
            return VarnolitePlugin::Failure;
        }
    }

private:
    std::atomic<std::uint32_t> m_users{1};
};

/// A reference to an object, given back at the end.
template <class Interface>
class ComPointer {
public:
    ComPointer() = default;
    /// Takes the caller's reference over.
    explicit ComPointer(Interface* object) : m_object(object) {}
    ComPointer(ComPointer&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~ComPointer() {
        if (m_object == nullptr)
            return;
        try {
            m_object->Release();
        } catch (...) {
            // What a plug-in raises here has nobody left to hear it.
        }
    }

    Interface* get() const { return m_object; }
    Interface* operator->() const { return m_object; }

private:
    Interface* m_object = nullptr;
};

} // namespace ET::Img::Plugin
