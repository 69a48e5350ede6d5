#pragma once

#include "codecs/ImageFile.h"
#include "foundation/Exception.h"

namespace ET::Img {

/// What all decoders have in common around the worker T of their format, an ImageFile::ImplBase. A format derives from
/// it, hands its worker over, and overrides what differs.
template <class T>
class Decoder : public ImageFile {
public:
    explicit Decoder(std::unique_ptr<T> implementation) : ImageFile(std::move(implementation)) {}

    void SetLogger(SharedPtr<Quorvex::ILogger> logger) override { CheckedImpl().SetLogger(std::move(logger)); }

    ImageInfo GetInfo(std::uint32_t index) override {
        T& implementation = CheckedImpl();
        implementation.Load(SharedPtr<ImageBase>(), index);
        return implementation.Info;
    }

    bool IsIncomplete() const override { return Incomplete; }
    std::uint32_t GetCount() const override { return CheckedImpl().GetCount(); }
    std::uint32_t GetDefaultIndex() const override { return CheckedImpl().GetDefaultIndex(); }
    SharedPtr<Quorvex::CompositeOfProperties> GetProperties() const override { return {}; }

    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override {
        return CheckedImpl().Load(target, index);
    }

protected:
    T& CheckedImpl() const {
        if (Impl == nullptr)
            throw Quorvex::Exception();
        return static_cast<T&>(*Impl);
    }
};

} // namespace ET::Img
