#include "tests/codecs/PngRecipe.h"

#include <algorithm>
#include <cstdlib>
#include <random>

#include <zlib.h>

using Bytes = PngRecipe::Bytes;

namespace {

void Append32(Bytes& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift));
}

std::uint32_t Read32(const Bytes& bytes, std::size_t position) {
    return std::uint32_t{bytes[position]} << 24 | std::uint32_t{bytes[position + 1]} << 16 |
           std::uint32_t{bytes[position + 2]} << 8 | bytes[position + 3];
}

std::uint32_t Checksum(const std::uint8_t* nameAndData, std::size_t byteCount) {
    return static_cast<std::uint32_t>(crc32(crc32(0, nullptr, 0), nameAndData, static_cast<uInt>(byteCount)));
}

/// First column and row, and distances, of a pass; PNG (ISO/IEC 15948), 8.2.
struct Pass {
    std::uint32_t x, y, stepX, stepY;
};
constexpr Pass adam7[] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                          {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
constexpr Pass progressive[] = {{0, 0, 1, 1}};

Bytes PackedRow(const std::vector<std::uint32_t>& samples, std::uint32_t depth) {
    Bytes row((samples.size() * depth + 7) / 8);
    for (std::size_t i = 0; i < samples.size() * depth; ++i) {
        const std::uint32_t bit = samples[i / depth] >> (depth - 1 - i % depth) & 1;
        row[i / 8] = static_cast<std::uint8_t>(row[i / 8] | bit << (7 - i % 8));
    }
    return row;
}

std::uint8_t Predicted(int filter, int left, int above, int corner) {
    const int estimate = left + above - corner;
    const int a = std::abs(estimate - left), b = std::abs(estimate - above), c = std::abs(estimate - corner);
    switch (filter) {
    case 1:
        return static_cast<std::uint8_t>(left);
    case 2:
        return static_cast<std::uint8_t>(above);
    case 3:
        return static_cast<std::uint8_t>((left + above) / 2);
    case 4:
        return static_cast<std::uint8_t>(a <= b && a <= c ? left : b <= c ? above : corner);
    default:
        return 0;
    }
}

void AppendFiltered(Bytes& data, const Bytes& row, const Bytes& above, int filter, std::size_t pixelBytes) {
    data.push_back(static_cast<std::uint8_t>(filter));
    for (std::size_t i = 0; i < row.size(); ++i) {
        const bool hasLeft = i >= pixelBytes;
        const std::uint8_t predicted =
            Predicted(filter, hasLeft ? row[i - pixelBytes] : 0, above[i], hasLeft ? above[i - pixelBytes] : 0);
        data.push_back(static_cast<std::uint8_t>(row[i] - predicted));
    }
}

/// All passes with their filters, which take turns.
Bytes FilteredData(const PngRecipe& recipe) {
    const std::vector<std::uint32_t> samples = recipe.Samples();
    const std::uint32_t channels = recipe.GetChannels();
    const std::size_t pixelBytes = std::max(1u, channels * recipe.depth / 8);
    Bytes data;
    const Pass* const first = recipe.isInterlaced ? adam7 : progressive;
    for (const Pass* pass = first; pass != first + (recipe.isInterlaced ? std::size(adam7) : 1); ++pass) {
        Bytes above;
        int filter = 0;
        for (std::uint32_t y = pass->y; y < recipe.height && pass->x < recipe.width; y += pass->stepY) {
            std::vector<std::uint32_t> ofRow;
            for (std::uint32_t x = pass->x; x < recipe.width; x += pass->stepX)
                for (std::uint32_t c = 0; c < channels; ++c)
                    ofRow.push_back(samples[(std::size_t{y} * recipe.width + x) * channels + c]);
            const Bytes row = PackedRow(ofRow, recipe.depth);
            above.resize(row.size());
            AppendFiltered(data, row, above, filter++ % 5, pixelBytes);
            above = row;
        }
    }
    return data;
}

/// A sample of fewer bits spread over 8.
std::uint16_t Widened(std::uint32_t sample, std::uint32_t depth) {
    return static_cast<std::uint16_t>(depth < 8 ? sample * 255 / ((1u << depth) - 1) : sample);
}

} // namespace

namespace PngChunks {

const Bytes signature = {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A};

Bytes Chunk(const std::string& name, const Bytes& data) {
    Bytes chunk;
    Append32(chunk, static_cast<std::uint32_t>(data.size()));
    chunk.insert(chunk.end(), name.begin(), name.end());
    chunk.insert(chunk.end(), data.begin(), data.end());
    Append32(chunk, Checksum(chunk.data() + 4, chunk.size() - 4));
    return chunk;
}

Bytes Header(std::uint32_t width, std::uint32_t height, std::uint32_t depth, std::uint32_t colorType,
             bool isInterlaced) {
    Bytes data;
    Append32(data, width);
    Append32(data, height);
    const std::uint8_t rest[] = {static_cast<std::uint8_t>(depth), static_cast<std::uint8_t>(colorType), 0, 0,
                                 static_cast<std::uint8_t>(isInterlaced ? 1 : 0)};
    data.insert(data.end(), std::begin(rest), std::end(rest));
    return Chunk("IHDR", data);
}

Bytes Deflated(const Bytes& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    Bytes result(size);
    compress(result.data(), &size, data.data(), static_cast<uLong>(data.size()));
    result.resize(size);
    return result;
}

Bytes WithRightChecksums(Bytes file) {
    for (std::size_t position = signature.size(); position + 12 <= file.size();) {
        const std::size_t length = Read32(file, position);
        if (length > file.size() - position - 12)
            break;
        Bytes sum;
        Append32(sum, Checksum(file.data() + position + 4, length + 4));
        std::copy(sum.begin(), sum.end(), file.begin() + static_cast<std::ptrdiff_t>(position + 8 + length));
        position += length + 12;
    }
    return file;
}

std::size_t PositionOf(const Bytes& file, const std::string& name) {
    const auto found = std::search(file.begin(), file.end(), name.begin(), name.end());
    return static_cast<std::size_t>(found - file.begin()) - 4;
}

Bytes Joined(std::initializer_list<Bytes> parts) {
    Bytes whole;
    for (const Bytes& part : parts)
        whole.insert(whole.end(), part.begin(), part.end());
    return whole;
}

} // namespace PngChunks

std::uint32_t PngRecipe::GetChannels() const {
    constexpr std::uint32_t ofType[] = {1, 0, 3, 1, 2, 0, 4};
    return ofType[colorType];
}

std::vector<std::uint32_t> PngRecipe::Samples() const {
    std::mt19937 random(seed);
    std::vector<std::uint32_t> samples(std::size_t{width} * height * GetChannels());
    for (std::uint32_t& sample : samples)
        sample = random() & ((1u << depth) - 1);
    return samples;
}

Bytes PngRecipe::Palette() const {
    std::mt19937 random(seed + 1);
    Bytes palette;
    for (std::uint32_t i = 0; colorType == 3 && i < 3u << depth; ++i)
        palette.push_back(static_cast<std::uint8_t>(random()));
    return palette;
}

Bytes PngRecipe::Transparency() const {
    if (!hasTransparency)
        return {};
    std::mt19937 random(seed + 2);
    Bytes data;
    if (colorType == 3) {
        for (std::uint32_t i = 0; i < 1u << depth >> 1; ++i)
            data.push_back(static_cast<std::uint8_t>(random()));
        return data;
    }
    const std::vector<std::uint32_t> samples = Samples();
    for (std::uint32_t c = 0; c < GetChannels(); ++c) {
        data.push_back(static_cast<std::uint8_t>(samples[c] >> 8));
        data.push_back(static_cast<std::uint8_t>(samples[c]));
    }
    return data;
}

Bytes PngRecipe::Build() const {
    using namespace PngChunks;
    Bytes file = Joined({signature, Header(width, height, depth, colorType, isInterlaced)});
    if (colorType == 3)
        file = Joined({file, Chunk("PLTE", Palette())});
    if (hasTransparency)
        file = Joined({file, Chunk("tRNS", Transparency())});
    file = Joined({file, extraChunks});
    const Bytes data = Deflated(FilteredData(*this));
    const std::size_t part = idatBytes != 0 ? idatBytes : data.size();
    for (std::size_t i = 0; i < data.size(); i += part) {
        const auto from = data.begin() + static_cast<std::ptrdiff_t>(i);
        const auto to = data.begin() + static_cast<std::ptrdiff_t>(std::min(i + part, data.size()));
        const Bytes chunk = Chunk("IDAT", Bytes(from, to));
        file.insert(file.end(), chunk.begin(), chunk.end());
    }
    return Joined({file, Chunk("IEND", {})});
}

std::vector<std::uint16_t> PngRecipe::Expected() const {
    const std::vector<std::uint32_t> samples = Samples();
    const Bytes palette = Palette(), transparency = Transparency();
    const std::uint32_t channels = GetChannels();
    const std::uint16_t opaque = depth == 16 ? 65535 : 255;
    std::vector<std::uint16_t> expected;
    for (std::size_t i = 0; i < samples.size(); i += channels) {
        const std::uint32_t* const pixel = samples.data() + i;
        if (colorType == 3) {
            const std::size_t index = *pixel;
            const std::uint16_t alpha = index < transparency.size() ? std::uint16_t{transparency[index]} : opaque;
            expected.insert(expected.end(),
                            {palette[3 * index + 2], palette[3 * index + 1], palette[3 * index], alpha});
            continue;
        }
        const bool isColor = colorType == 2 || colorType == 6;
        for (const std::uint32_t channel : {isColor ? 2u : 0u, isColor ? 1u : 0u, 0u})
            expected.push_back(Widened(pixel[channel], depth));
        std::uint16_t alpha = opaque;
        if (colorType == 4 || colorType == 6)
            alpha = static_cast<std::uint16_t>(pixel[channels - 1]);
        else if (hasTransparency && std::equal(pixel, pixel + channels, samples.data()))
            alpha = 0;
        expected.push_back(alpha);
    }
    return expected;
}

std::string PngRecipe::Describe() const {
    return std::to_string(width) + " x " + std::to_string(height) + ", type " + std::to_string(colorType) + ", " +
           std::to_string(depth) + " bits" + (isInterlaced ? ", interlaced" : "") + (hasTransparency ? ", tRNS" : "");
}

std::vector<PngRecipe> AllPngRecipes(std::uint32_t width, std::uint32_t height) {
    constexpr struct {
        std::uint32_t colorType, depth;
    } kinds[] = {{0, 1}, {0, 2}, {0, 4}, {0, 8}, {0, 16}, {2, 8}, {2, 16}, {3, 1},
                 {3, 2}, {3, 4}, {3, 8}, {4, 8}, {4, 16}, {6, 8}, {6, 16}};
    std::vector<PngRecipe> recipes;
    for (const auto& kind : kinds)
        for (const bool isInterlaced : {false, true})
            for (const bool hasTransparency : {false, true}) {
                if (hasTransparency && kind.colorType >= 4)
                    continue;
                PngRecipe recipe{.width = width, .height = height, .depth = kind.depth, .colorType = kind.colorType};
                recipe.isInterlaced = isInterlaced;
                recipe.hasTransparency = hasTransparency;
                recipe.seed = static_cast<std::uint32_t>(recipes.size()) + width * 131 + height;
                recipes.push_back(recipe);
            }
    return recipes;
}
