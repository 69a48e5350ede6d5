#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"
#include "data/StreamBuffer.h"

#include <memory>
#include <vector>

namespace ET::Img {

namespace Tif {
struct Layout;
class Directory;
} // namespace Tif

/// The worker behind a TIFDecoder. Each directory of the file is an image.
class TIFDecoderImpl final : public ImageFile::ImplBase {
public:
    /// Raises Exception "invalid byte order" and "unknown tiff version", and without text where the file ends too
    /// early.
    explicit TIFDecoderImpl(SharedPtr<Quorvex::Stream> stream);
    ~TIFDecoderImpl() override;

    std::uint32_t GetCount() const override { return static_cast<std::uint32_t>(m_directories.size()); }
    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;
    void SetLogger(SharedPtr<Quorvex::ILogger> logger) override { m_logger = std::move(logger); }

    /// As the Exif tag numbers it; known after the headers were read.
    std::uint32_t GetOrientation() const { return m_orientation; }
    /// Threads that share the tiles; 0: one for each processor.
    void SetWorkerCount(std::uint32_t workerCount) { m_workerCount = workerCount; }

private:
    std::unique_ptr<Quorvex::StreamBuffer> ReadFile() const;
    void SetPixelAspect(const Tif::Directory& directory, ImageBase& target) const;
    void ReportIgnoredSamples(const Tif::Layout& layout) const;
    void ReportDamage(const Quorvex::String& reason) const;

    SharedPtr<Quorvex::Stream> m_stream;
    std::unique_ptr<Quorvex::StreamBuffer> m_file; ///< Until the pixels are decoded; null then.
    SharedPtr<Quorvex::ILogger> m_logger;
    std::vector<std::uint32_t> m_directories; ///< Their offsets.
    std::uint32_t m_orientation = 1;
    std::uint32_t m_workerCount = 0;
};

/// Baseline and extended TIFF of both byte orders, uncompressed, and compressed with CCITT's codes of one and two
/// dimensions, LZW, PackBits and JPEG. Delivers the sample type of the file where it can be shown, and colours as BGRA.
/// Holds the stream as long as it lives.
class TIFDecoder final : public Decoder<TIFDecoderImpl> {
public:
    explicit TIFDecoder(SharedPtr<Quorvex::Stream> stream)
        : Decoder(std::make_unique<TIFDecoderImpl>(std::move(stream))) {}

    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

    void SetWorkerCount(std::uint32_t workerCount) { CheckedImpl().SetWorkerCount(workerCount); }
};

class TIFDecoderFactory final : public DecoderFactory<TIFDecoder, TIFDecoderFactory> {
public:
    static constexpr const char16_t* filePattern = u"*.tif;*.tiff";
    static constexpr const char16_t* germanText = u"TIF-Dateien (*.tif;*.tiff)";
    static constexpr const char16_t* englishText = u"TIF files (*.tif;*.tiff)";
};

} // namespace ET::Img
