#pragma once

#include "codecs/plugin/ComObject.h"
#include "foundation/Logger.h"
#include "foundation/SharedPtr.h"

namespace ET::Img {

/// A logger of the program as a plug-in sees it.
class ILoggerCPPAsCOMWrapper final : public Plugin::ComObject<VarnolitePlugin::ICOMLogger> {
public:
    using Result = VarnolitePlugin::Result;

    explicit ILoggerCPPAsCOMWrapper(Quorvex::SharedPtr<Quorvex::ILogger> logger) : m_logger(std::move(logger)) {}

    Result VARNOLITE_CALL Log(const char16_t* german, const char16_t* english) override;
    Result VARNOLITE_CALL LogText(const char16_t* text) override;

private:
    ~ILoggerCPPAsCOMWrapper() override = default;

    Quorvex::SharedPtr<Quorvex::ILogger> m_logger;
};

} // namespace ET::Img
