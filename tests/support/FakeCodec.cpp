#include "tests/support/FakeCodec.h"

#include <algorithm>
#include <new>
#include <sstream>

namespace Quorvex::App {

using ET::Img::CodecFactory;
using ET::Img::ImageFile;

class FakeCodec::Worker final : public ImageFile::ImplBase {
public:
    Worker(FakeCodec& owner, Stream& stream) : codec(owner) {
        std::string line(static_cast<std::size_t>(stream.size()), '\0');
        stream.read(line.data(), static_cast<std::uint32_t>(line.size()));
        std::istringstream text(line);
        std::string word;
        text >> word;
        if (word != "FAKE")
            throw Exception();
        while (text >> word)
            words[word.substr(0, word.find('='))] = word.find('=') < word.size() ? word.substr(word.find('=') + 1) : "";
    }

    std::uint32_t GetCount() const override { return Remembered("count", 1); }
    std::uint32_t GetDefaultIndex() const override { return Remembered("default", 0); }

    SharedPtr<Data::ImageBase> Load(const SharedPtr<Data::ImageBase>& target, std::uint32_t index) override {
        Info.Width = index + 1;
        Info.Height = 1;
        Info.BitsPerPixel = 8;
        Info.ColorType = Data::ColorTypeEnum::UInt8;
        if (!target)
            return {};
        if (words.contains("hold"))
            codec.WaitUntilReleased();
        Fail();
        *Incomplete = words.contains("incomplete");
        hasForgotten = words.contains("forgetful");
        target->clear(static_cast<std::int32_t>(index + 1));
        return target;
    }

    std::uint32_t Number(const char* word, std::uint32_t otherwise) const {
        const auto found = words.find(word);
        return found == words.end() ? otherwise : static_cast<std::uint32_t>(std::stoul(found->second));
    }

private:
    std::uint32_t Remembered(const char* word, std::uint32_t otherwise) const {
        if (hasForgotten)
            throw Exception();
        return Number(word, otherwise);
    }

    void Fail() const {
        if (words.contains("memory"))
            throw std::bad_alloc();
        if (words.contains("silent"))
            throw Exception();
        if (words.contains("strange"))
            throw 0;
        if (const auto found = words.find("text"); found != words.end())
            throw Exception(found->second.c_str());
    }

    FakeCodec& codec;
    std::map<std::string, std::string> words;
    bool hasForgotten = false;
};

class FakeCodec::FakeDecoder final : public ET::Img::Decoder<Worker> {
public:
    FakeDecoder(FakeCodec& owner, Stream& stream) : Decoder(std::make_unique<Worker>(owner, stream)) {
        Impl->Incomplete = &Incomplete;
        m_orientation = CheckedImpl().Number("orientation", 1);
    }
};

class FakeCodec::Factory final : public CodecFactory {
public:
    explicit Factory(FakeCodec& owner) : codec(owner) {}
    String GetFilePattern() const override { return u"*.fake"; }
    String GetFileTypeText() const override { return u"Fake files (*.fake)"; }
    SharedPtr<ImageFile> CreateDecoder(SharedPtr<Stream> stream) const override {
        ++codec.decoderCount;
        return SharedPtr<ImageFile>(new FakeDecoder(codec, *stream));
    }

    FakeCodec& codec;
};

FakeCodec::FakeCodec() {
    ET::Img::GetCodecRegistry().push_back(SharedPtr<CodecFactory>(new Factory(*this)));
}

FakeCodec::~FakeCodec() {
    auto& registry = ET::Img::GetCodecRegistry();
    std::erase_if(registry, [this](const SharedPtr<CodecFactory>& factory) {
        const auto* fake = dynamic_cast<const Factory*>(factory.get());
        return fake != nullptr && &fake->codec == this;
    });
}

void FakeCodec::Release() {
    const std::lock_guard<std::mutex> guard(mutex);
    isReleased = true;
    released.notify_all();
}

void FakeCodec::WaitUntilReleased() {
    std::unique_lock<std::mutex> guard(mutex);
    released.wait(guard, [this] { return isReleased; });
}

} // namespace Quorvex::App
