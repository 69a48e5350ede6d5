#pragma once

// The parts that are the same in every plug-in, for who wants them: counting users, the class factory, and the exported
// function. Derive a class from VarnolitePlugin::Decoder and name it in VARNOLITE_PLUGIN.

#include "codecs/plugin/VarnolitePlugin.h"

#include <atomic>
#include <new>

namespace VarnolitePlugin {

/// Counts the users of an object, beginning with one, and ends it with the last.
template <class Interface>
class Counted : public Interface {
public:
    Result VARNOLITE_CALL QueryInterface(const Identifier& identifier, void** object) override {
        *object = nullptr;
        if (!(identifier == Interface::Id || identifier == IUnknown::Id))
            return NoInterface;
        *object = static_cast<Interface*>(this);
        AddRef();
        return Success;
    }
    std::uint32_t VARNOLITE_CALL AddRef() override { return ++m_users; }
    std::uint32_t VARNOLITE_CALL Release() override {
        const std::uint32_t left = --m_users;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~Counted() = default;

private:
    std::atomic<std::uint32_t> m_users{1};
};

/// A decoder of files with one image each, which keeps the stream. What differs by format is Open, GetInfo and Load.
class Decoder : public Counted<IDecoder> {
public:
    Result VARNOLITE_CALL Open(IQuorvexStream* stream) override {
        stream->AddRef();
        m_stream = stream;
        return Success;
    }
    Result VARNOLITE_CALL Reserved() override { return NotImplemented; }
    Result VARNOLITE_CALL GetCount(std::uint32_t* count) override {
        *count = 1;
        return Success;
    }
    Result VARNOLITE_CALL GetDefaultIndex(std::uint32_t* index) override {
        *index = 0;
        return Success;
    }
    Result VARNOLITE_CALL SetLogger(ICOMLogger* logger) override {
        logger->AddRef();
        if (m_logger != nullptr)
            m_logger->Release();
        m_logger = logger;
        return Success;
    }

protected:
    ~Decoder() override {
        if (m_stream != nullptr)
            m_stream->Release();
        if (m_logger != nullptr)
            m_logger->Release();
    }

    IQuorvexStream* m_stream = nullptr;
    ICOMLogger* m_logger = nullptr; ///< Null where nobody wants messages.
};

/// Hands over a new object of the class as the interface with the identifier.
template <class Object>
Result Make(const Identifier& identifier, void** place) {
    *place = nullptr;
    auto* const object = new (std::nothrow) Object;
    if (object == nullptr)
        return Failure;
    const Result result = object->QueryInterface(identifier, place);
    object->Release();
    return result;
}

/// Makes objects of the class D.
template <class D>
class ClassFactory final : public Counted<IClassFactory> {
public:
    Result VARNOLITE_CALL CreateInstance(IUnknown* outer, const Identifier& identifier, void** object) override {
        *object = nullptr;
        return outer == nullptr ? Make<D>(identifier, object) : NoAggregation;
    }
    Result VARNOLITE_CALL LockServer(std::int32_t) override { return Success; }

    static Result GetClassObject(const Identifier& classIdentifier, const Identifier& identifier, void** object) {
        *object = nullptr;
        return classIdentifier == DecoderClass ? Make<ClassFactory>(identifier, object) : ClassNotAvailable;
    }

private:
    ~ClassFactory() override = default;
};

} // namespace VarnolitePlugin

// GCC and Clang make a function with this attribute an export on every system; for others it can be given from outside.
#ifndef VARNOLITE_EXPORT
#define VARNOLITE_EXPORT __attribute__((visibility("default")))
#endif

#define VARNOLITE_PLUGIN(DecoderName)                                                                                  \
    extern "C" VARNOLITE_EXPORT VarnolitePlugin::Result VARNOLITE_CALL DllGetClassObject(                              \
        const VarnolitePlugin::Identifier& classIdentifier, const VarnolitePlugin::Identifier& identifier,             \
        void** object) {                                                                                               \
        return VarnolitePlugin::ClassFactory<DecoderName>::GetClassObject(classIdentifier, identifier, object);        \
    }
