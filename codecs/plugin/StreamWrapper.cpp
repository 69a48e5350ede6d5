#include "codecs/plugin/StreamWrapper.h"

namespace ET::Img {

using VarnolitePlugin::Result;

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Seek(std::uint32_t low, std::uint32_t high) {
    return Contain([&] { m_stream->seek(std::uint64_t{high} << 32 | low); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Size(std::uint64_t* size) {
    return Contain([&] { *size = m_stream->size(); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Tell(std::uint64_t* position) {
    return Contain([&] { *position = m_stream->tell(); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Read(void* buffer, std::uint32_t byteCount) {
    return Contain([&] { m_stream->read(buffer, byteCount); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Clone(VarnolitePlugin::IQuorvexStream** stream) {
    *stream = nullptr;
    return Contain([&] {
        Quorvex::SharedPtr<Quorvex::Stream> clone(m_stream->Clone().release());
        *stream = new IStreamCPPAsCOMWrapper(std::move(clone));
    });
}

} // namespace ET::Img
