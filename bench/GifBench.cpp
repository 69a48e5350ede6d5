// GIF files of 4 megapixels in memory to 8-bit BGRA, beside giflib, whose indexes go through the colour table to the
// same layout. A photograph in 256 greys has short strings, a drawing in 8 colours long ones. Items are pixels.

#include "bench/Pairs.h"
#include "bench/Photograph.h"
#include "codecs/gif/GIFDecoder.h"
#include "data/Image.h"
#include "data/MemoryStream.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include <gif_lib.h>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;
using Pixel = Data::ColorBGRA<std::uint8_t>;

constexpr std::uint32_t width = 2500, height = 1600;

struct Recipe {
    const char* name;
    int colors;
    bool isInterlaced;
};

constexpr Recipe recipes[] = {
    {"GIF photograph", 256, false}, {"GIF photograph, interlaced", 256, true}, {"GIF drawing", 8, false}};

void Require(bool condition) {
    if (!condition)
        std::abort();
}

/// The rows from the top.
Bytes IndexesOf(const Recipe& recipe) {
    Bytes indexes(std::size_t(width) * height);
    Photograph photograph(1);
    const float step = 256.0f / static_cast<float>(recipe.colors);
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        const float value = photograph.At(static_cast<std::uint32_t>(i % width), static_cast<std::uint32_t>(i / width));
        indexes[i] = static_cast<std::uint8_t>(std::clamp(value, 0.0f, 255.0f) / step);
    }
    return indexes;
}

int Append(GifFileType* gif, const GifByteType* bytes, int size) {
    auto* const file = static_cast<Bytes*>(gif->UserData);
    file->insert(file->end(), bytes, bytes + size);
    return size;
}

Bytes Encode(const Recipe& recipe) {
    Bytes indexes = IndexesOf(recipe);
    std::vector<GifColorType> greys;
    for (int i = 0; i < recipe.colors; ++i) {
        const auto grey = static_cast<GifByteType>(i * 255 / (recipe.colors - 1));
        greys.push_back({grey, grey, grey});
    }
    Bytes file;
    GifFileType* const gif = EGifOpen(&file, Append, nullptr);
    ColorMapObject* const colors = GifMakeMapObject(recipe.colors, greys.data());
    Require(EGifPutScreenDesc(gif, width, height, 8, 0, colors) == GIF_OK);
    Require(EGifPutImageDesc(gif, 0, 0, width, height, recipe.isInterlaced, nullptr) == GIF_OK);
    // In whatever order the rows come, their codes are as good.
    for (std::uint32_t y = 0; y < height; ++y)
        Require(EGifPutLine(gif, indexes.data() + std::size_t(y) * width, width) == GIF_OK);
    GifFreeMapObject(colors);
    Require(EGifCloseFile(gif, nullptr) == GIF_OK);
    return file;
}

const Bytes& FileOf(std::size_t index) {
    static Bytes files[std::size(recipes)];
    Bytes& file = files[index];
    if (file.empty())
        file = Encode(recipes[index]);
    return file;
}

void CountPixels(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * width * height);
}

void Decode(benchmark::State& state, std::size_t index) {
    const Bytes& file = FileOf(index);
    for (auto _ : state) {
        ET::Img::GIFDecoder decoder(MakeShared<MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size())));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
        image->Allocate(info.Width, info.Height, 0, 0);
        benchmark::DoNotOptimize(decoder.Load(image, 0).get());
        Require(!decoder.IsIncomplete());
    }
    CountPixels(state);
}

struct Source {
    const Bytes& bytes;
    std::size_t position;

    static int Read(GifFileType* gif, GifByteType* target, int count) {
        Source& source = *static_cast<Source*>(gif->UserData);
        const std::size_t size = std::min(static_cast<std::size_t>(count), source.bytes.size() - source.position);
        std::copy_n(source.bytes.data() + source.position, size, target);
        source.position += size;
        return static_cast<int>(size);
    }
};

void DecodePeer(benchmark::State& state, std::size_t index) {
    const Bytes& file = FileOf(index);
    for (auto _ : state) {
        Source source{file, 0};
        GifFileType* const gif = DGifOpen(&source, Source::Read, nullptr);
        Require(DGifSlurp(gif) == GIF_OK);
        const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
        auto* row = static_cast<Pixel*>(image->Allocate(width, height, 0, 0));
        Pixel colors[256];
        for (int i = 0; i < gif->SColorMap->ColorCount; ++i) {
            const GifColorType& color = gif->SColorMap->Colors[i];
            colors[i] = {color.Blue, color.Green, color.Red, 255};
        }
        const GifByteType* next = gif->SavedImages[0].RasterBits;
        for (std::uint32_t y = 0; y < height; ++y, row += image->AllocatedWidth, next += width)
            for (std::uint32_t x = 0; x < width; ++x)
                row[x] = colors[next[x]];
        DGifCloseFile(gif, nullptr);
    }
    CountPixels(state);
}

} // namespace

int main(int argc, char** argv) {
    RegisterPairs(recipes, Decode, DecodePeer);
    RunRegistered(argc, argv);
}
