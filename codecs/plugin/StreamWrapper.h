#pragma once

#include "codecs/plugin/ComObject.h"
#include "data/Stream.h"
#include "foundation/SharedPtr.h"

namespace ET::Img {

/// A stream of the program as a plug-in sees it. What the stream raises becomes a failing result.
class IStreamCPPAsCOMWrapper final : public Plugin::ComObject<VarnolitePlugin::IQuorvexStream> {
public:
    using Result = VarnolitePlugin::Result;

    explicit IStreamCPPAsCOMWrapper(Quorvex::SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {}

    Result VARNOLITE_CALL Seek(std::uint32_t low, std::uint32_t high) override;
    Result VARNOLITE_CALL Size(std::uint64_t* size) override;
    Result VARNOLITE_CALL Tell(std::uint64_t* position) override;
    Result VARNOLITE_CALL Read(void* buffer, std::uint32_t byteCount) override;
    Result VARNOLITE_CALL Clone(VarnolitePlugin::IQuorvexStream** stream) override;

private:
    ~IStreamCPPAsCOMWrapper() override = default;

    Quorvex::SharedPtr<Quorvex::Stream> m_stream;
};

} // namespace ET::Img
