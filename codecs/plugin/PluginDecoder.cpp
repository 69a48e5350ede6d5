#include "codecs/plugin/PluginDecoder.h"

#include "codecs/TargetCheck.h"
#include "codecs/plugin/LoggerWrapper.h"
#include "codecs/plugin/SampleRange.h"
#include "codecs/plugin/StreamWrapper.h"
#include "data/Dispatch.h"
#include "data/ImageUserRepresentationFromMinMaxValues.h"
#include "foundation/Numbers.h"
#include "foundation/platform/Time.h"

#include <limits>

namespace ET::Img {

using Plugin::Call;
using Plugin::ComPointer;
using Plugin::SampleRange;
using Quorvex::Data::LockMode;

namespace {

// Images are counted with a sign from 1 on.
void CheckNumber(std::uint32_t number) {
    if (number >= std::numeric_limits<std::int32_t>::max())
        throw Quorvex::Exception();
}

/// A number that a plug-in answers with.
template <class Action>
std::uint32_t Ask(const Action& action) {
    std::uint32_t number = 0;
    Call([&] { return action(&number); });
    CheckNumber(number);
    return number;
}

void LogRange(Quorvex::ILogger& logger, const SampleRange& range, std::uint64_t nanoseconds) {
    const double milliseconds = static_cast<double>(nanoseconds) / 1e6;
    logger.LogForBothLanguages(Quorvex::String("Minimum/Maximum: ") + Quorvex::FloatToString(range.minimum) + " / " +
                               Quorvex::FloatToString(range.maximum) + " (" + Quorvex::FixedToString(milliseconds, 3) +
                               " ms)");
}

} // namespace

IDecoderCOMAsCPPWrapperImpl::IDecoderCOMAsCPPWrapperImpl(SharedPtr<Plugin::PluginLibrary> library,
                                                         SharedPtr<Quorvex::Stream> stream)
    : m_library(std::move(library)), m_decoder(m_library->CreateDecoder()) {
    const ComPointer<VarnolitePlugin::IQuorvexStream> wrapper(new IStreamCPPAsCOMWrapper(std::move(stream)));
    Call([&] { return m_decoder->Open(wrapper.get()); });
}

std::uint32_t IDecoderCOMAsCPPWrapperImpl::GetCount() const {
    return Ask([&](std::uint32_t* count) { return m_decoder->GetCount(count); });
}

std::uint32_t IDecoderCOMAsCPPWrapperImpl::GetDefaultIndex() const {
    return Ask([&](std::uint32_t* index) { return m_decoder->GetDefaultIndex(index); });
}

ImageInfo IDecoderCOMAsCPPWrapperImpl::GetInfo(std::uint32_t index) {
    // The last image of a file that claims to have none.
    CheckNumber(index);
    VarnolitePlugin::ImageInfo info{};
    Call([&] { return m_decoder->GetInfo(index, &info); });
    Info = {.Width = info.width,
            .Height = info.height,
            .BitsPerPixel = info.bitsPerPixel,
            .AllocatedWidth = info.allocatedWidth,
            .AllocatedHeight = info.allocatedHeight,
            .ColorType = static_cast<Quorvex::Data::ColorTypeEnum::Value>(info.colorType)};
    return Info;
}

SharedPtr<ImageBase> IDecoderCOMAsCPPWrapperImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t index) {
    if (!target)
        return {};
    CheckTarget(*target, Info);
    Quorvex::Data::Dispatch(target->ColorType, "unknown color type", [&](auto tag) {
        const auto lock = decltype(tag)::Traits::LockIn(*target, LockMode::ReadWrite);
        Call([&] { return m_decoder->Load(index, lock.Data, lock.AllocatedWidth, lock.AllocatedHeight); });
    });
    const std::uint64_t start = Quorvex::Platform::GetMonotonicNanoseconds();
    const std::optional<SampleRange> range = Plugin::FindSampleRange(*target);
    if (!range)
        return target;
    if (m_logger)
        LogRange(*m_logger, *range, Quorvex::Platform::GetMonotonicNanoseconds() - start);
    using Representation = Quorvex::Data::ImageUserRepresentationFromMinMaxValues;
    target->SetImageUserRepresentation(
        SharedPtr<Representation>(new Representation(target->ColorType, range->minimum, range->maximum)));
    return target;
}

void IDecoderCOMAsCPPWrapperImpl::SetLogger(SharedPtr<Quorvex::ILogger> logger) {
    m_logger = logger;
    if (!logger)
        return;
    const ComPointer<VarnolitePlugin::ICOMLogger> wrapper(new ILoggerCPPAsCOMWrapper(std::move(logger)));
    Call([&] { return m_decoder->SetLogger(wrapper.get()); });
}

} // namespace ET::Img
