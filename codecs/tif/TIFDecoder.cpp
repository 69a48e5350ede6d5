#include "codecs/tif/TIFDecoder.h"

#include "codecs/TargetCheck.h"
#include "codecs/tif/Tags.h"
#include "codecs/tif/TileDecoding.h"
#include "foundation/Exception.h"
#include "foundation/Logger.h"

#include <algorithm>
#include <limits>

namespace ET::Img {

using namespace Tif;

TIFDecoderImpl::TIFDecoderImpl(SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {
    m_file = ReadFile();
    const Header header(*m_file);
    m_directories = WalkDirectories(Numbers(*m_file, header.order), header.firstDirectory);
}

TIFDecoderImpl::~TIFDecoderImpl() = default;

std::unique_ptr<Quorvex::StreamBuffer> TIFDecoderImpl::ReadFile() const {
    // Files with offsets of 64 bits are told by their first bytes, however large they are.
    m_stream->seek(0);
    Quorvex::StreamBuffer mark(
        m_stream->lock(static_cast<std::uint32_t>(std::min<std::uint64_t>(m_stream->size(), markBytes))));
    ReadMark(mark);
    m_stream->seek(0);
    if (m_stream->size() > std::numeric_limits<std::uint32_t>::max())
        throw Quorvex::Exception();
    return std::make_unique<Quorvex::StreamBuffer>(m_stream->lock(static_cast<std::uint32_t>(m_stream->size())));
}

SharedPtr<ImageBase> TIFDecoderImpl::Load(const SharedPtr<ImageBase>& target, std::uint32_t index) {
    if (index >= m_directories.size())
        throw Quorvex::Exception();
    std::unique_ptr<Quorvex::StreamBuffer> file = m_file ? std::move(m_file) : ReadFile();
    file->Seek(0);
    const Header header(*file);
    const Directory directory(Numbers(*file, header.order), m_directories[index]);
    const Layout layout(directory);
    Info = layout.GetImageInfo(directory);
    m_orientation = OrientationOf(directory);
    if (!target) {
        // The pixels are wanted next; after them nothing keeps the memory.
        m_file = std::move(file);
        return {};
    }

    CheckTarget(*target, Info);
    SetPixelAspect(directory, *target);
    ReportIgnoredSamples(layout);
    target->HasAlpha = layout.isAlphaTold ? 1 : 0;
    const TileOutcome outcome = DecodeTiles(directory, layout, *target, m_workerCount);
    if (!outcome.isWhole)
        *Incomplete = true;
    ReportDamage(outcome.reason);
    return target;
}

void TIFDecoderImpl::SetPixelAspect(const Directory& directory, ImageBase& target) const {
    const std::optional<double> x = directory.Rational(Tag::XResolution), y = directory.Rational(Tag::YResolution);
    if (x && y)
        target.SetPixelAspect(*x, *y);
}

void TIFDecoderImpl::ReportIgnoredSamples(const Layout& layout) const {
    if (!layout.hasIgnoredSamples || !m_logger)
        return;
    m_logger->Log({Quorvex::String("TIFF: Die Pixel haben weitere Werte, die nicht angezeigt werden"),
                   Quorvex::String("TIFF: The pixels have more samples, which are not shown")});
}

void TIFDecoderImpl::ReportDamage(const Quorvex::String& reason) const {
    if (reason.IsEmpty() || !m_logger)
        return;
    m_logger->Log({Quorvex::String(u"TIFF: Ein Teil des Bildes ist beschädigt: ") + reason,
                   Quorvex::String("TIFF: A part of the image is damaged: ") + reason});
}

SharedPtr<ImageBase> TIFDecoder::Load(const SharedPtr<ImageBase>& target, std::uint32_t index) {
    SharedPtr<ImageBase> image = CheckedImpl().Load(target, index);
    m_orientation = CheckedImpl().GetOrientation();
    return image;
}

} // namespace ET::Img
