#include "codecs/tif/Layout.h"

#include "codecs/tif/ColorMap.h"
#include "codecs/tif/Tags.h"
#include "foundation/Exception.h"

#include <algorithm>
#include <bit>

namespace ET::Img::Tif {

using Quorvex::Data::ColorTypeEnum;

namespace {

void Require(bool condition) {
    if (!condition)
        throw Quorvex::Exception();
}

std::uint32_t Required(const std::optional<std::uint32_t>& value) {
    Require(value && *value != 0);
    return *value;
}

/// A number for each sample, or fewer that stand for all.
std::vector<std::uint32_t> OfSamples(const Directory& directory, std::uint16_t tag, std::uint32_t samples) {
    std::vector<std::uint32_t> numbers = directory.Integers(tag);
    numbers.resize(std::min<std::size_t>(numbers.size(), samples));
    return numbers;
}

SampleFormat FormatOf(std::uint32_t number) {
    constexpr std::uint32_t unsignedInteger = 1, signedInteger = 2, floatingPoint = 3, undefined = 4;
    Require(number >= unsignedInteger && number <= undefined);
    return number == signedInteger   ? SampleFormat::Signed
           : number == floatingPoint ? SampleFormat::Float
                                     : SampleFormat::Unsigned;
}

/// Programs that wrote old JPEG left the tag out, and took colours for granted.
std::uint32_t DefaultSamples(const Directory& directory, std::uint32_t compression) {
    if (compression != Compression::OldJpeg)
        return 1;
    const std::uint32_t photometric = directory.Integer(Tag::PhotometricInterpretation).value_or(Photometric::YCbCr);
    return photometric == Photometric::Rgb || photometric == Photometric::YCbCr ? 3 : 1;
}

/// Old fax programs leave out that ink is 1.
std::uint32_t DefaultPhotometric(const Layout& layout) {
    if (layout.samples >= 3)
        return Photometric::Rgb;
    return layout.IsFax() ? Photometric::WhiteIsZero : Photometric::BlackIsZero;
}

// The grey types lie in the order of the table, the colour types behind them in the same order.
ColorTypeEnum::Value TypeOf(SampleFormat format, std::uint32_t channelBits, bool isColor) {
    static_assert(ColorTypeEnum::SInt64 == 3 && ColorTypeEnum::UInt8 == 4 && ColorTypeEnum::Float32 == 8 &&
                  ColorTypeEnum::BGRASInt8 == 10);
    const auto size = static_cast<std::uint32_t>(std::countr_zero(channelBits)) - 3;
    std::uint32_t grey = ColorTypeEnum::SInt8 + size;
    if (format == SampleFormat::Unsigned)
        grey = ColorTypeEnum::UInt8 + size;
    else if (format == SampleFormat::Float)
        grey = ColorTypeEnum::Float32 + size - 2;
    return static_cast<ColorTypeEnum::Value>(isColor ? ColorTypeEnum::BGRASInt8 + grey : grey);
}

} // namespace

Layout::Layout(const Directory& directory) : order(directory.GetNumbers().GetOrder()) {
    width = Required(directory.Integer(Tag::ImageWidth));
    height = Required(directory.Integer(Tag::ImageLength));
    compression = directory.Integer(Tag::Compression).value_or(Compression::None);
    // Coefficients and runs are no samples, whatever a program has left in the tag.
    predictor = IsJpeg() || IsFax() ? 1 : directory.Integer(Tag::Predictor).value_or(1);
    constexpr std::uint32_t losslessProcess = 14;
    isOldLossless = compression == Compression::OldJpeg && directory.Integer(Tag::JPEGProc) == losslessProcess;
    isFillReversed = directory.Integer(Tag::FillOrder).value_or(1) == 2;
    ReadSamples(directory);
    ReadPhotometric(directory);
    ReadExtraSamples(directory);
    ReadChroma(directory);
    Check();
}

void Layout::ReadSamples(const Directory& directory) {
    samples = directory.Integer(Tag::SamplesPerPixel).value_or(DefaultSamples(directory, compression));
    Require(samples >= 1 && samples <= 0xFFFF);
    isPlanar = samples > 1 && directory.Integer(Tag::PlanarConfiguration).value_or(1) != 1;
    const std::vector<std::uint32_t> depths = OfSamples(directory, Tag::BitsPerSample, samples);
    bits = !depths.empty() ? depths[0] : IsJpeg() ? 8 : 1;
    Require(std::all_of(depths.begin(), depths.end(), [&](std::uint32_t depth) { return depth == bits; }));
    const std::vector<std::uint32_t> formats = OfSamples(directory, Tag::SampleFormat, samples);
    format = formats.empty() ? SampleFormat::Unsigned : FormatOf(formats[0]);
    if (std::any_of(formats.begin(), formats.end(), [&](std::uint32_t number) { return FormatOf(number) != format; }))
        throw Quorvex::Exception("different values of SampleFormat are not supported");
}

void Layout::ReadPhotometric(const Directory& directory) {
    photometric = directory.Integer(Tag::PhotometricInterpretation).value_or(DefaultPhotometric(*this));
    // Programs that wrote old JPEG named the colours that they had begun with, or none; libtiff takes them so too. What
    // lies in planes, and what is to lose nothing, was not converted.
    const bool isConverted = compression == Compression::OldJpeg && samples == 3 && !isPlanar && !isOldLossless;
    if (photometric == Photometric::Rgb && isConverted)
        photometric = Photometric::YCbCr;
    switch (photometric) {
    case Photometric::Cmyk:
    case Photometric::YCbCr:
    case Photometric::CieLab:
    case Photometric::Palette:
        colorSamples = photometric == Photometric::Cmyk ? 4 : photometric == Photometric::Palette ? 1 : 3;
        isColor = true;
        // Inks and indices have no sign, and that of a* and b* is no matter of the format.
        if (format == SampleFormat::Signed)
            format = SampleFormat::Unsigned;
        break;
    default:
        colorSamples = samples == 3 || samples == 4 || (samples > 4 && photometric == Photometric::Rgb) ? 3 : 1;
        isColor = colorSamples == 3 || samples == 2;
        break;
    }
}

void Layout::ReadExtraSamples(const Directory& directory) {
    if (samples <= colorSamples)
        return;
    constexpr std::uint32_t associated = 1, unassociated = 2;
    const std::vector<std::uint32_t> extra = OfSamples(directory, Tag::ExtraSamples, samples);
    const std::uint32_t count = samples - colorSamples;
    // The list is about the last samples of a pixel: those of a grey one that is shown in colours begin among them.
    const auto first = extra.begin() + (std::ssize(extra) - std::min<std::ptrdiff_t>(count, std::ssize(extra)));
    const auto alpha =
        std::find_if(first, extra.end(), [](std::uint32_t kind) { return kind == associated || kind == unassociated; });
    // The alpha of a pixel has no place in a grey image.
    if (isColor && alpha != extra.end()) {
        alphaSample = samples - static_cast<std::uint32_t>(extra.end() - alpha);
        isPremultiplied = *alpha == associated;
        isAlphaTold = true;
    } else if (isColor && extra.empty() && count == 1) {
        alphaSample = colorSamples;
    }
    hasIgnoredSamples = count > (alphaSample ? 1u : 0u);
}

void Layout::ReadChroma(const Directory& directory) {
    const std::vector<std::uint32_t> factors = directory.Integers(Tag::YCbCrSubSampling);
    if (factors.size() >= 2) {
        chromaHorizontal = factors[0];
        chromaVertical = factors[1];
    }
}

void Layout::Check() const {
    Require(bits >= 1 && bits <= 64 && samples >= colorSamples);
    if (format == SampleFormat::Float)
        Require(bits == 16 || bits == 24 || bits == 32 || bits == 64);
    if (photometric == Photometric::Palette)
        Require(format == SampleFormat::Unsigned && bits <= 16);
    if (photometric == Photometric::CieLab)
        Require(format == SampleFormat::Unsigned && (bits == 8 || bits == 16));
    if (photometric == Photometric::YCbCr) {
        const auto isFactor = [](std::uint32_t factor) { return factor == 1 || factor == 2 || factor == 4; };
        Require(isFactor(chromaHorizontal) && isFactor(chromaVertical));
    }
    if (IsFax())
        Require(bits == 1 && SamplesInTile() == 1);
    Require(predictor >= 1 && predictor <= 3);
    if (predictor == 3)
        Require(format == SampleFormat::Float);
}

std::uint32_t Layout::ChannelBits() const {
    if (format == SampleFormat::Float)
        return bits == 64 ? 64 : 32;
    return std::max(8u, std::bit_ceil(bits));
}

ImageInfo Layout::GetImageInfo(const Directory& directory) const {
    ImageInfo info;
    info.Width = width;
    info.Height = height;
    info.BitsPerPixel = bits * samples;
    const std::uint32_t channelBits =
        photometric == Photometric::Palette ? ReadColorMap(directory, bits).channelBits : ChannelBits();
    info.ColorType = TypeOf(format, channelBits, isColor);
    return info;
}

} // namespace ET::Img::Tif
