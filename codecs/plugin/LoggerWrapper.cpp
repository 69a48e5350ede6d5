#include "codecs/plugin/LoggerWrapper.h"

namespace ET::Img {

using Quorvex::String;
using VarnolitePlugin::Result;

Result VARNOLITE_CALL ILoggerCPPAsCOMWrapper::Log(const char16_t* german, const char16_t* english) {
    return Contain([&] { m_logger->Log({String(german), String(english)}); });
}

Result VARNOLITE_CALL ILoggerCPPAsCOMWrapper::LogText(const char16_t* text) {
    return Contain([&] { m_logger->LogText(String(text)); });
}

} // namespace ET::Img
