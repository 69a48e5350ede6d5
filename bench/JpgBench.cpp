// JPEG files in memory to 8-bit BGRA, beside libjpeg-turbo's own library to the same layout on one thread. The pictures
// have the statistics of photographs: detail that falls off with its frequency, and a little noise. Items are pixels.

#include "bench/JpgStages.h"
#include "bench/Pairs.h"
#include "bench/Photograph.h"
#include "codecs/jpg/JPGDecoder.h"
#include "data/Image.h"
#include "data/MemoryStream.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

using namespace Quorvex;

namespace {

using Bytes = std::vector<std::uint8_t>;
using Pixel = Data::ColorBGRA<std::uint8_t>;

struct Recipe {
    std::uint32_t width;
    std::uint32_t height;
    int components;
    int factor; ///< Of the luminance, in both directions.
    bool isProgressive;
    bool hasRestarts; ///< One for each row of MCUs.
};

constexpr Recipe recipes[] = {
    {6000, 4000, 3, 2, false, false}, {6000, 4000, 3, 2, false, true},  {6000, 4000, 3, 1, false, false},
    {6000, 4000, 3, 2, true, false},  {4000, 2000, 1, 1, false, false},
};
constexpr const char* names[] = {"JPG 4:2:0", "JPG 4:2:0, restarts", "JPG 4:4:4", "JPG progressive", "JPG grey"};

Bytes SamplesOf(const Recipe& recipe) {
    Bytes samples(std::size_t(recipe.width) * recipe.height * static_cast<unsigned>(recipe.components));
    for (int c = 0; c < recipe.components; ++c) {
        Photograph photograph(static_cast<std::uint32_t>(c) + 1);
        std::size_t place = static_cast<std::size_t>(c);
        for (std::uint32_t y = 0; y < recipe.height; ++y)
            for (std::uint32_t x = 0; x < recipe.width; ++x, place += static_cast<std::size_t>(recipe.components))
                samples[place] = static_cast<std::uint8_t>(std::clamp(photograph.At(x, y), 0.0f, 255.0f));
    }
    return samples;
}

Bytes Encode(const Recipe& recipe) {
    Bytes samples = SamplesOf(recipe);
    jpeg_compress_struct state{};
    jpeg_error_mgr errors{};
    state.err = jpeg_std_error(&errors);
    jpeg_create_compress(&state);
    unsigned char* memory = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&state, &memory, &size);
    state.image_width = recipe.width;
    state.image_height = recipe.height;
    state.input_components = recipe.components;
    state.in_color_space = recipe.components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&state);
    jpeg_set_quality(&state, 85, TRUE);
    state.comp_info[0].h_samp_factor = state.comp_info[0].v_samp_factor = recipe.factor;
    state.restart_in_rows = recipe.hasRestarts ? 1 : 0;
    if (recipe.isProgressive)
        jpeg_simple_progression(&state);
    jpeg_start_compress(&state, TRUE);
    const std::size_t rowBytes = std::size_t(recipe.width) * static_cast<unsigned>(recipe.components);
    for (JSAMPROW row = samples.data(); state.next_scanline < recipe.height; row += rowBytes)
        jpeg_write_scanlines(&state, &row, 1);
    jpeg_finish_compress(&state);
    jpeg_destroy_compress(&state);
    Bytes file(memory, memory + size);
    std::free(memory);
    return file;
}

const Bytes& FileOf(std::int64_t index) {
    static Bytes files[std::size(recipes)];
    Bytes& file = files[index];
    if (file.empty())
        file = Encode(recipes[index]);
    return file;
}

void CountPixels(benchmark::State& state, const Recipe& recipe) {
    state.SetItemsProcessed(state.iterations() * recipe.width * recipe.height);
}

void Decode(benchmark::State& state, std::int64_t index) {
    const Bytes& file = FileOf(index);
    for (auto _ : state) {
        ET::Img::JPGDecoder decoder(MakeShared<MemoryStream>(file.data(), static_cast<std::uint32_t>(file.size())));
        const ET::Img::ImageInfo info = decoder.GetInfo(0);
        const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
        image->Allocate(info.Width, info.Height, info.AllocatedWidth, info.AllocatedHeight);
        benchmark::DoNotOptimize(decoder.Load(image, 0).get());
    }
    CountPixels(state, recipes[index]);
}

void DecodePeer(benchmark::State& state, std::int64_t index) {
    const Bytes& file = FileOf(index);
    for (auto _ : state) {
        jpeg_decompress_struct peer{};
        jpeg_error_mgr errors{};
        peer.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&peer);
        jpeg_mem_src(&peer, file.data(), static_cast<unsigned long>(file.size()));
        jpeg_read_header(&peer, TRUE);
        peer.out_color_space = JCS_EXT_BGRX;
        jpeg_start_decompress(&peer);
        const SharedPtr<Data::ImageBase> image = MakeShared<Data::Image<Pixel>>();
        auto* const bits = static_cast<Pixel*>(image->Allocate(peer.output_width, peer.output_height, 0, 0));
        while (peer.output_scanline < peer.output_height) {
            auto* row = reinterpret_cast<JSAMPROW>(bits + std::size_t(peer.output_scanline) * image->AllocatedWidth);
            jpeg_read_scanlines(&peer, &row, 1);
        }
        jpeg_finish_decompress(&peer);
        jpeg_destroy_decompress(&peer);
    }
    CountPixels(state, recipes[index]);
}

/// Where the time goes; not compared with anything.
void Stages(benchmark::State& state, std::int64_t index) {
    const Bytes& file = FileOf(index);
    JpgStages stages;
    for (auto _ : state)
        stages = MeasureJpgStages(file);
    state.counters["codes"] = stages.codes;
    state.counters["transform"] = stages.transform;
    state.counters["color"] = stages.color;
}

} // namespace

int main(int argc, char** argv) {
    for (std::size_t i = 0; i < std::size(recipes); ++i) {
        const auto index = static_cast<std::int64_t>(i);
        const std::string name = names[i];
        RegisterPair(
            name, [index](benchmark::State& state) { Decode(state, index); },
            [index](benchmark::State& state) { DecodePeer(state, index); });
        if (!recipes[i].isProgressive && !recipes[i].hasRestarts)
            benchmark::RegisterBenchmark((name + "/stages").c_str(),
                                         [index](benchmark::State& state) { Stages(state, index); });
    }
    RunRegistered(argc, argv);
}
