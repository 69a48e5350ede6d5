#include "codecs/plugin/StreamWrapper.h"

namespace ET::Img {

using VarnolitePlugin::Result;

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Seek(std::uint32_t low, std::uint32_t high) {
    return Contain([&] { m_stream->seek(std::uint64_t{high} << 32 | low); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Size(std::uint64_t* size) {
    return Contain([&] { PlaceOf(size) = m_stream->size(); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Tell(std::uint64_t* position) {
    return Contain([&] { PlaceOf(position) = m_stream->tell(); });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Read(void* buffer, std::uint32_t byteCount) {
    return Contain([&] {
        if (byteCount != 0)
            PlaceOf(static_cast<std::uint8_t*>(buffer));
        m_stream->read(buffer, byteCount);
    });
}

Result VARNOLITE_CALL IStreamCPPAsCOMWrapper::Clone(VarnolitePlugin::IQuorvexStream** stream) {
    return Contain([&] {
        PlaceOf(stream) = nullptr;
        Quorvex::SharedPtr<Quorvex::Stream> clone(m_stream->Clone().release());
        *stream = new IStreamCPPAsCOMWrapper(std::move(clone));
    });
}

} // namespace ET::Img
