// TIFF files in memory to images, beside libtiff to rows of the same samples (JPEG: to its RGBA raster), and beside a
// plain copy where nothing is compressed. The peers work on one thread. Items are pixels.

#include "bench/Pairs.h"
#include "codecs/tif/TIFDecoder.h"
#include "data/Image.h"
#include "data/MemoryStream.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include <tiffio.h>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;

struct File {
    Bytes bytes;
    std::size_t position = 0;
};

File& Of(thandle_t handle) {
    return *static_cast<File*>(handle);
}

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

Tiff Open(File& file, const char* mode) {
    file.position = 0;
    const auto read = [](thandle_t handle, void* target, tmsize_t size) {
        File& f = Of(handle);
        const std::size_t count = std::min(static_cast<std::size_t>(size), f.bytes.size() - f.position);
        std::memcpy(target, f.bytes.data() + f.position, count);
        f.position += count;
        return static_cast<tmsize_t>(count);
    };
    const auto write = [](thandle_t handle, void* source, tmsize_t size) {
        File& f = Of(handle);
        f.bytes.resize(std::max(f.bytes.size(), f.position + static_cast<std::size_t>(size)));
        std::memcpy(f.bytes.data() + f.position, source, static_cast<std::size_t>(size));
        f.position += static_cast<std::size_t>(size);
        return size;
    };
    const auto seek = [](thandle_t handle, toff_t offset, int whence) -> toff_t {
        File& f = Of(handle);
        f.position = (whence == SEEK_CUR ? f.position : whence == SEEK_END ? f.bytes.size() : 0) + offset;
        return f.position;
    };
    const auto map = [](thandle_t handle, void** base, toff_t* size) {
        *base = Of(handle).bytes.data();
        *size = Of(handle).bytes.size();
        return 1;
    };
    return Tiff(TIFFClientOpen(
                    "memory", mode, &file, read, write, seek, [](thandle_t) { return 0; },
                    [](thandle_t handle) -> toff_t { return Of(handle).bytes.size(); }, map,
                    [](thandle_t, void*, toff_t) {}),
                &TIFFClose);
}

struct Recipe {
    const char* name;
    std::uint32_t width, height;
    std::uint16_t samples, bits, format, compression, predictor;
    std::uint32_t tileSize;
};

constexpr Recipe recipes[] = {
    {"TIF RGB16 LZW", 4000, 3000, 3, 16, 1, 5, 1, 0},
    {"TIF RGB16 LZW, predictor", 4000, 3000, 3, 16, 1, 5, 2, 0},
    {"TIF float32", 4000, 3000, 1, 32, 3, 1, 1, 0},
    {"TIF JPEG tiles", 6000, 4000, 3, 8, 1, 7, 1, 256},
};

/// A picture with courses of several lengths and noise in its lower bits.
Bytes RowOf(const Recipe& recipe, std::uint32_t y, std::mt19937& random) {
    Bytes row;
    for (std::uint32_t x = 0; x < recipe.width; ++x)
        for (std::uint32_t s = 0; s < recipe.samples; ++s) {
            const double value =
                0.5 + 0.3 * std::sin(x * 0.01 + s) * std::cos(y * 0.013) + 0.1 * std::sin(x * 0.11 + y * 0.07);
            const float number = static_cast<float>(value);
            const auto word =
                static_cast<std::uint16_t>(static_cast<std::uint32_t>(value * 65535) / 64 * 64 + random() % 64);
            const auto byte = static_cast<std::uint8_t>(value * 250 + random() % 5);
            const void* const sample = recipe.format == 3  ? static_cast<const void*>(&number)
                                       : recipe.bits == 16 ? static_cast<const void*>(&word)
                                                           : static_cast<const void*>(&byte);
            const auto* const bytes = static_cast<const std::uint8_t*>(sample);
            row.insert(row.end(), bytes, bytes + recipe.bits / 8);
        }
    return row;
}

Bytes Encode(const Recipe& recipe) {
    File file;
    {
        const Tiff tiff = Open(file, "w");
        TIFF* const t = tiff.get();
        TIFFSetField(t, TIFFTAG_IMAGEWIDTH, recipe.width);
        TIFFSetField(t, TIFFTAG_IMAGELENGTH, recipe.height);
        TIFFSetField(t, TIFFTAG_BITSPERSAMPLE, recipe.bits);
        TIFFSetField(t, TIFFTAG_SAMPLESPERPIXEL, recipe.samples);
        TIFFSetField(t, TIFFTAG_SAMPLEFORMAT, recipe.format);
        TIFFSetField(t, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        TIFFSetField(t, TIFFTAG_COMPRESSION, recipe.compression);
        const bool isJpeg = recipe.compression == COMPRESSION_JPEG;
        TIFFSetField(t, TIFFTAG_PHOTOMETRIC,
                     isJpeg                ? PHOTOMETRIC_YCBCR
                     : recipe.samples == 3 ? PHOTOMETRIC_RGB
                                           : PHOTOMETRIC_MINISBLACK);
        if (isJpeg)
            TIFFSetField(t, TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        if (recipe.predictor != 1)
            TIFFSetField(t, TIFFTAG_PREDICTOR, recipe.predictor);
        std::mt19937 random(1);
        if (recipe.tileSize == 0) {
            TIFFSetField(t, TIFFTAG_ROWSPERSTRIP, 16);
            for (std::uint32_t y = 0; y < recipe.height; ++y)
                TIFFWriteScanline(t, RowOf(recipe, y, random).data(), y, 0);
        } else {
            TIFFSetField(t, TIFFTAG_TILEWIDTH, recipe.tileSize);
            TIFFSetField(t, TIFFTAG_TILELENGTH, recipe.tileSize);
            Bytes rows;
            for (std::uint32_t y = 0; y < recipe.height; ++y) {
                const Bytes row = RowOf(recipe, y, random);
                rows.insert(rows.end(), row.begin(), row.end());
            }
            const std::size_t pixelBytes = recipe.samples * (recipe.bits / 8u);
            for (std::uint32_t top = 0; top < recipe.height; top += recipe.tileSize)
                for (std::uint32_t left = 0; left < recipe.width; left += recipe.tileSize) {
                    Bytes tile(pixelBytes * recipe.tileSize * recipe.tileSize);
                    for (std::uint32_t y = 0; y < std::min(recipe.tileSize, recipe.height - top); ++y)
                        std::memcpy(tile.data() + y * recipe.tileSize * pixelBytes,
                                    rows.data() + (std::size_t(top + y) * recipe.width + left) * pixelBytes,
                                    std::min(recipe.tileSize, recipe.width - left) * pixelBytes);
                    TIFFWriteTile(t, tile.data(), left, top, 0, 0);
                }
        }
    }
    return file.bytes;
}

Bytes& FileOf(std::size_t index) {
    static Bytes files[std::size(recipes)];
    if (files[index].empty())
        files[index] = Encode(recipes[index]);
    return files[index];
}

void CountPixels(benchmark::State& state, const Recipe& recipe) {
    state.SetItemsProcessed(state.iterations() * recipe.width * recipe.height);
}

void Decode(benchmark::State& state, std::size_t index) {
    const Bytes& file = FileOf(index);
    for (auto _ : state) {
        ET::Img::TIFDecoder decoder(MakeShared<MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size())));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        const SharedPtr<Data::ImageBase> image = Data::CreateImage(info.ColorType, info.Width, info.Height);
        benchmark::DoNotOptimize(decoder.Load(image, 0).get());
        if (decoder.IsIncomplete())
            state.SkipWithError("incomplete");
    }
    CountPixels(state, recipes[index]);
}

/// Rows as they are stored; tiles of JPEG as colours, which is what a viewer needs.
void DecodeWithLibtiff(File& file, const Recipe& recipe) {
    const Tiff tiff = Open(file, "r");
    if (recipe.tileSize != 0) {
        std::vector<std::uint32_t> raster(std::size_t(recipe.width) * recipe.height);
        TIFFReadRGBAImageOriented(tiff.get(), recipe.width, recipe.height, raster.data(), ORIENTATION_TOPLEFT, 1);
        benchmark::DoNotOptimize(raster.data());
        return;
    }
    const auto stripBytes = static_cast<std::size_t>(TIFFStripSize(tiff.get()));
    const std::unique_ptr<std::uint8_t[]> rows(new std::uint8_t[stripBytes * TIFFNumberOfStrips(tiff.get())]);
    for (std::uint32_t strip = 0; strip < TIFFNumberOfStrips(tiff.get()); ++strip)
        TIFFReadEncodedStrip(tiff.get(), strip, rows.get() + strip * stripBytes, static_cast<tmsize_t>(stripBytes));
    benchmark::DoNotOptimize(rows.get());
}

void DecodePeer(benchmark::State& state, std::size_t index) {
    const Recipe& recipe = recipes[index];
    File file{FileOf(index)};
    const std::size_t bytes = std::size_t(recipe.width) * recipe.height * sizeof(float);
    for (auto _ : state) {
        if (recipe.compression != COMPRESSION_NONE) {
            DecodeWithLibtiff(file, recipe);
            continue;
        }
        // What any reader has to do at least.
        const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<float>>();
        void* const pixels = image->Allocate(recipe.width, recipe.height, 0, 0);
        std::memcpy(pixels, file.bytes.data() + 8, bytes);
        benchmark::DoNotOptimize(pixels);
        benchmark::ClobberMemory();
    }
    CountPixels(state, recipe);
}

} // namespace

int main(int argc, char** argv) {
    RegisterPairs(recipes, Decode, DecodePeer);
    RunRegistered(argc, argv);
}
