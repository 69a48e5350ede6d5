// PNG files in memory to BGRA of 8 and 16 bits, beside libpng's own transforms to the same layout. The pictures have
// the statistics of photographs: detail that falls off with its frequency, and a little noise. Items are pixels.

#include "bench/Pairs.h"
#include "bench/Photograph.h"
#include "codecs/png/PNGDecoder.h"
#include "data/Image.h"
#include "data/MemoryStream.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include <png.h>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint32_t width = 4000, height = 3000;
constexpr std::uint32_t depths[] = {8, 16};

/// Rows as the format orders them.
Bytes SamplesOf(std::uint32_t depth) {
    const std::uint32_t bytes = depth / 8;
    Bytes samples(std::size_t(width) * height * 3 * bytes);
    for (std::uint32_t c = 0; c < 3; ++c) {
        Photograph photograph(c + 1);
        for (std::size_t i = 0; i < std::size_t(width) * height; ++i) {
            const float value =
                photograph.At(static_cast<std::uint32_t>(i % width), static_cast<std::uint32_t>(i / width));
            const auto sample = static_cast<std::uint32_t>(std::clamp(value, 0.0f, 255.0f) * 257.0f);
            std::uint8_t* const place = samples.data() + (i * 3 + c) * bytes;
            place[0] = static_cast<std::uint8_t>(sample >> 8);
            // The sensors behind 16 bits have about 12.
            if (bytes == 2)
                place[1] = static_cast<std::uint8_t>(sample & 0xF0);
        }
    }
    return samples;
}

void Append(png_structp png, png_bytep data, std::size_t size) {
    auto* const file = static_cast<Bytes*>(png_get_io_ptr(png));
    file->insert(file->end(), data, data + size);
}

Bytes Encode(std::uint32_t depth) {
    Bytes file;
    Bytes samples = SamplesOf(depth);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    if (setjmp(png_jmpbuf(png)) != 0)
        std::abort();
    png_set_write_fn(png, &file, Append, nullptr);
    png_set_IHDR(png, info, width, height, static_cast<int>(depth), PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const std::size_t rowBytes = png_get_rowbytes(png, info);
    for (std::uint32_t y = 0; y < height; ++y)
        png_write_row(png, samples.data() + y * rowBytes);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return file;
}

const Bytes& FileOf(std::uint32_t depth) {
    static Bytes files[std::size(depths)];
    Bytes& file = files[depth / 16];
    if (file.empty())
        file = Encode(depth);
    return file;
}

/// Without pixels yet.
SharedPtr<Data::ImageBase> NewImage(std::uint32_t depth) {
    SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Data::ColorBGRA<std::uint8_t>>>();
    if (depth == 16)
        image = MakeShared<Data::Image<Data::ColorBGRA<std::uint16_t>>>();
    return image;
}

void Decode(benchmark::State& state, std::uint32_t depth) {
    const Bytes& file = FileOf(depth);
    for (auto _ : state) {
        ET::Img::PNGDecoder decoder(MakeShared<MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size())));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        const SharedPtr<Data::ImageBase> image = NewImage(depth);
        image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
        benchmark::DoNotOptimize(decoder.Load(image, 0).get());
    }
    state.SetItemsProcessed(state.iterations() * width * height);
}

struct Input {
    const std::uint8_t* next;
};

void Take(png_structp png, png_bytep destination, std::size_t byteCount) {
    auto* const input = static_cast<Input*>(png_get_io_ptr(png));
    std::copy_n(input->next, byteCount, destination);
    input->next += byteCount;
}

void DecodePeer(benchmark::State& state, std::uint32_t depth) {
    const Bytes& file = FileOf(depth);
    for (auto _ : state) {
        Input input{file.data()};
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        if (setjmp(png_jmpbuf(png)) != 0)
            std::abort();
        png_set_read_fn(png, &input, Take);
        png_read_info(png, info);
        png_set_bgr(png);
        png_set_filler(png, depth == 8 ? 0xFF : 0xFFFF, PNG_FILLER_AFTER);
        if (depth == 16)
            png_set_swap(png);
        png_read_update_info(png, info);
        const SharedPtr<Data::ImageBase> image = NewImage(depth);
        auto* const bits = static_cast<std::uint8_t*>(image->Allocate(width, height, 0, 0));
        const std::size_t rowBytes = image->AllocatedWidth * std::size_t(4) * (depth / 8);
        for (std::uint32_t y = 0; y < height; ++y)
            png_read_row(png, bits + y * rowBytes, nullptr);
        png_read_end(png, nullptr);
        png_destroy_read_struct(&png, &info, nullptr);
    }
    state.SetItemsProcessed(state.iterations() * width * height);
}

} // namespace

int main(int argc, char** argv) {
    for (const std::uint32_t depth : depths) {
        const std::string name = "PNG RGB " + std::to_string(depth) + " bit";
        RegisterPair(
            name, [depth](benchmark::State& state) { Decode(state, depth); },
            [depth](benchmark::State& state) { DecodePeer(state, depth); });
    }
    RunRegistered(argc, argv);
}
