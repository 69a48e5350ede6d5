#pragma once

#include "codecs/CodecFactory.h"
#include "codecs/Decoder.h"
#include "codecs/jpg/ScanDecoder.h"

namespace ET::Img {

/// The worker behind a JPGDecoder.
class JPGDecoderImpl final : public ImageFile::ImplBase {
public:
    explicit JPGDecoderImpl(SharedPtr<Quorvex::Stream> stream) : m_stream(std::move(stream)) {}

    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

    /// As the Exif tag numbers it; known after the headers were read.
    std::uint16_t GetOrientation() const { return m_orientation; }

    /// What a file that embeds this one says about it: 2 for red, green and blue, 5 for four inks, and MCUs per restart
    /// interval.
    void SetPhotometric(std::uint16_t photometric) { m_hints.photometric = photometric; }
    void SetRestartInterval(std::uint16_t restartInterval) { m_outerRestartInterval = restartInterval; }
    /// Threads for scans and for the last stage; 0: one for each processor.
    void SetWorkerCount(std::uint32_t workerCount) { m_workerCount = workerCount; }

private:
    /// What a marker's segment means for the walk through the file.
    enum class Next { Continue, EndOfHeaders, EndOfFile };

    void Reset();
    Next ReadMarker(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target);
    Next ReadFrameHeader(Quorvex::StreamBuffer& buffer, Jpg::FrameKind kind, const SharedPtr<ImageBase>& target);
    void AdmitFrame(std::uint32_t fileBytes);
    bool TakesTooLong(const Jpg::ScanHeader& header);
    Next ReadScan(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target);
    void ReadExif(Quorvex::StreamBuffer& buffer);
    void ReadAdobe(Quorvex::StreamBuffer& buffer);
    bool WalkScans(Quorvex::StreamBuffer& buffer, const SharedPtr<ImageBase>& target);
    Jpg::ScanContext ContextFor(ImageBase& target);

    SharedPtr<Quorvex::Stream> m_stream;
    Jpg::Frame m_frame;
    Jpg::Tables m_tables;
    Jpg::ColorHints m_hints;
    std::uint64_t m_blocksLeft = 0; ///< That scans may still go over.
    std::uint16_t m_outerRestartInterval = 0;
    std::uint16_t m_restartInterval = 0;
    std::uint16_t m_orientation = 1;
    std::uint32_t m_workerCount = 0;
    bool m_hasScan = false;
    bool m_keepsCoefficients = false;
    bool m_isTargetSet = false; ///< All of its pixels.
};

/// JPEG files of ITU T.81 with Huffman codes: baseline, progressive and lossless, of one to four components. Delivers
/// 8-bit BGRA, and 16-bit BGRA for samples of more than 8 bits. Holds the stream as long as it lives.
class JPGDecoder final : public Decoder<JPGDecoderImpl> {
public:
    explicit JPGDecoder(SharedPtr<Quorvex::Stream> stream)
        : Decoder(std::make_unique<JPGDecoderImpl>(std::move(stream))) {}

    SharedPtr<ImageBase> Load(const SharedPtr<ImageBase>& target, std::uint32_t index) override;

    void SetPhotometric(std::uint16_t photometric) { CheckedImpl().SetPhotometric(photometric); }
    void SetRestartInterval(std::uint16_t interval) { CheckedImpl().SetRestartInterval(interval); }
    void SetWorkerCount(std::uint32_t workerCount) { CheckedImpl().SetWorkerCount(workerCount); }
};

class JPGDecoderFactory final : public DecoderFactory<JPGDecoder, JPGDecoderFactory> {
public:
    static constexpr const char16_t* filePattern = u"*.jpg;*.jff;*.jfi;*.jfif;*.jif;*.jpe;*.jpeg;*.jps;*.thm";
    static constexpr const char16_t* germanText =
        u"JPG-Dateien (*.jpg;*.jff;*.jfi;*.jfif;*.jif;*.jpe;*.jpeg;*.jps;*.thm)";
    static constexpr const char16_t* englishText =
        u"JPG files (*.jpg;*.jff;*.jfi;*.jfif;*.jif;*.jpe;*.jpeg;*.jps;*.thm)";
};

} // namespace ET::Img
