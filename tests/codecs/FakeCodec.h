#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"

#include <functional>

/// A format of the tests' own: a file is its letter, and the decoder does as it is told.
struct FakeBehaviour {
    char letter = 'F';
    std::uint32_t count = 1;
    std::uint32_t defaultIndex = 0;
    std::uint32_t colorType = Quorvex::Data::ColorTypeEnum::UInt8;
    bool givesNoImage = false;
    std::function<void()> inConstructor{};
    std::function<void()> inHeaderPass{};
    std::function<void()> inPixels{};
};

/// What happened to the decoders of one factory, in order.
using FakeHistory = std::vector<std::string>;

class FakeImpl final : public ET::Img::ImageFile::ImplBase {
public:
    FakeImpl(Quorvex::SharedPtr<Quorvex::Stream> stream, const FakeBehaviour& behaviour, FakeHistory& history)
        : m_stream(std::move(stream)), m_behaviour(behaviour), m_history(history) {}

    std::uint32_t GetCount() const override { return m_behaviour.count; }
    std::uint32_t GetDefaultIndex() const override { return m_behaviour.defaultIndex; }
    void SetLogger(Quorvex::SharedPtr<Quorvex::ILogger>) override { m_history.push_back("logger"); }

    Quorvex::SharedPtr<Quorvex::Data::ImageBase> Load(const Quorvex::SharedPtr<Quorvex::Data::ImageBase>& target,
                                                      std::uint32_t index) override {
        m_history.push_back((target ? "decode " : "header ") + std::to_string(index) + " at " +
                            std::to_string(m_stream->tell()));
        char letter = 0;
        m_stream->read(&letter, 1);
        if (letter != m_behaviour.letter)
            throw Quorvex::Exception("not this format");
        if (m_behaviour.inHeaderPass)
            m_behaviour.inHeaderPass();
        Info = {8, 4, 3, 70, 9, static_cast<Quorvex::Data::ColorTypeEnum::Value>(m_behaviour.colorType)};
        if (!target || m_behaviour.givesNoImage)
            return {};
        if (m_behaviour.inPixels)
            m_behaviour.inPixels();
        return target;
    }

private:
    Quorvex::SharedPtr<Quorvex::Stream> m_stream;
    const FakeBehaviour& m_behaviour;
    FakeHistory& m_history;
};

class FakeDecoder final : public ET::Img::Decoder<FakeImpl> {
public:
    using Decoder::Decoder;
};

class FakeFactory final : public ET::Img::CodecFactory {
public:
    FakeFactory(const char16_t* pattern, FakeBehaviour fakeBehaviour)
        : behaviour(std::move(fakeBehaviour)), m_pattern(pattern) {}

    Quorvex::String GetFilePattern() const override { return m_pattern; }
    Quorvex::String GetFileTypeText() const override { return u"Fake files"; }
    Quorvex::SharedPtr<ET::Img::ImageFile> CreateDecoder(Quorvex::SharedPtr<Quorvex::Stream> stream) const override {
        history.push_back("create");
        if (behaviour.inConstructor)
            behaviour.inConstructor();
        return Quorvex::SharedPtr<FakeDecoder>(
            new FakeDecoder(std::make_unique<FakeImpl>(std::move(stream), behaviour, history)));
    }

    FakeBehaviour behaviour;
    mutable FakeHistory history;

private:
    Quorvex::String m_pattern;
};
