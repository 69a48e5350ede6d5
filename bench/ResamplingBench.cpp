// Resampling to a window of 1600 x 1067, each kind beside a library that does the same work. The names are
// "Work/us" and "Work/peer"; items are destination pixels for magnification and source pixels for reduction.

#include "data/Image.h"
#include "video/software/FastResampling.h"
#include "video/software/SoftwareResampling.h"

#include <benchmark/benchmark.h>
#include <opencv2/imgproc.hpp>
#include <pixman.h>

#include <cstring>
#include <random>

using namespace Quorvex;
using namespace Quorvex::Platform::Video;
using namespace Quorvex::Platform::Video::Software;

namespace {

using Mode = EnumResamplingMode;

constexpr std::int32_t imageWidth = 6000, imageHeight = 4000; // 24 MP
constexpr std::int32_t windowWidth = 1600, windowHeight = 1067;
constexpr std::int32_t regionWidth = 400, regionHeight = 267; // What the window shows at 400 %.
constexpr std::int32_t zoom = 4;
constexpr int peerThreads = 2;

template <class Sample>
const Data::ImageBase& Noise() {
    static const SharedPtr<Data::ImageBase> image = [] {
        SharedPtr<Data::ImageBase> made(new Data::Image<Sample>());
        auto* const samples = static_cast<Sample*>(made->Allocate(imageWidth, imageHeight, 0, 0));
        std::mt19937_64 random(1);
        const std::size_t bytes = std::size_t(made->AllocatedWidth) * made->AllocatedHeight * sizeof(Sample);
        for (std::size_t i = 0; i < bytes; i += sizeof(std::uint64_t)) {
            const std::uint64_t bits = random();
            std::memcpy(reinterpret_cast<std::byte*>(samples) + i, &bits, sizeof(bits));
        }
        return made;
    }();
    return *image;
}

template <class Sample>
cv::Mat PeerView(int type) {
    const auto pixels = Data::SampleTraits<Sample>::LockIn(Noise<Sample>(), Data::LockMode::ReadOnly);
    return cv::Mat(imageHeight, imageWidth, type, const_cast<Sample*>(pixels.Data),
                   pixels.AllocatedWidth * sizeof(Sample));
}

std::vector<Color>& Window() {
    static std::vector<Color> pixels(std::size_t(windowWidth) * windowHeight);
    return pixels;
}

ImageRect RectOf(Mode mode, std::int32_t left, std::int32_t width, std::int32_t height) {
    ImageRect rect;
    rect.x0 = left;
    rect.x1 = left + width;
    rect.y1 = height;
    rect.mode = mode;
    return rect;
}

void CountPixels(benchmark::State& state, std::int64_t pixels) {
    state.SetItemsProcessed(state.iterations() * pixels);
}

template <class Sample>
void Render(benchmark::State& state, Mode mode, std::int32_t width, std::int32_t height, std::int64_t pixels) {
    const Data::ImageBase& image = Noise<Sample>();
    const PixelTarget target{Window().data(), windowWidth, windowHeight};
    const ImageRect rect = RectOf(mode, 0, width, height);
    FastResampling resampling;
    for (auto _ : state) {
        resampling.Render(target, image, rect, target.Whole());
        benchmark::ClobberMemory();
    }
    CountPixels(state, pixels);
}

template <class Sample>
void Reduce(benchmark::State& state) {
    Render<Sample>(state, Mode::Area, windowWidth, windowHeight, std::int64_t(imageWidth) * imageHeight);
}

template <class Sample, int type>
void ReducePeer(benchmark::State& state) {
    cv::setNumThreads(peerThreads);
    const cv::Mat source = PeerView<Sample>(type);
    cv::Mat destination;
    for (auto _ : state) {
        cv::resize(source, destination, cv::Size(windowWidth, windowHeight), 0, 0, cv::INTER_AREA);
        benchmark::ClobberMemory();
    }
    CountPixels(state, std::int64_t(imageWidth) * imageHeight);
}

void Magnify(benchmark::State& state, Mode mode) {
    Render<Color>(state, mode, imageWidth * zoom, imageHeight * zoom, std::int64_t(windowWidth) * windowHeight);
}

void MagnifyPeer(benchmark::State& state, int interpolation) {
    cv::setNumThreads(peerThreads);
    const cv::Mat region = PeerView<Color>(CV_8UC4)(cv::Rect(0, 0, regionWidth, regionHeight));
    cv::Mat destination;
    for (auto _ : state) {
        cv::resize(region, destination, cv::Size(windowWidth, windowHeight), 0, 0, interpolation);
        benchmark::ClobberMemory();
    }
    CountPixels(state, std::int64_t(windowWidth) * windowHeight);
}

void NearestPeer(benchmark::State& state) {
    const auto pixels = Data::SampleTraits<Color>::LockIn(Noise<Color>(), Data::LockMode::ReadOnly);
    const auto bitsOf = [](const Color* color) { return reinterpret_cast<std::uint32_t*>(const_cast<Color*>(color)); };
    pixman_image_t* const source = pixman_image_create_bits(PIXMAN_a8r8g8b8, regionWidth, regionHeight,
                                                            bitsOf(pixels.Data), int(pixels.AllocatedWidth) * 4);
    pixman_image_t* const window =
        pixman_image_create_bits(PIXMAN_a8r8g8b8, windowWidth, windowHeight, bitsOf(Window().data()), windowWidth * 4);
    pixman_transform_t transform;
    pixman_transform_init_scale(&transform, pixman_double_to_fixed(1.0 / zoom), pixman_double_to_fixed(1.0 / zoom));
    pixman_image_set_transform(source, &transform);
    pixman_image_set_filter(source, PIXMAN_FILTER_NEAREST, nullptr, 0);
    for (auto _ : state) {
        pixman_image_composite32(PIXMAN_OP_SRC, source, nullptr, window, 0, 0, 0, 0, 0, 0, windowWidth, windowHeight);
        benchmark::ClobberMemory();
    }
    CountPixels(state, std::int64_t(windowWidth) * windowHeight);
    pixman_image_unref(source);
    pixman_image_unref(window);
}

/// The view moves by 3 columns to and fro over an image one half larger than the window.
void Scroll(benchmark::State& state) {
    const Data::ImageBase& image = Noise<Color>();
    SoftwareResampling resampling;
    std::int32_t left = -300;
    for (auto _ : state) {
        left = left == -300 ? -303 : -300;
        ImageRect rect = RectOf(Mode::Area, left, windowWidth * 3 / 2, windowHeight * 3 / 2);
        rect.unchanged = true;
        resampling.UpdateScaledBuffer(image, rect, windowWidth, windowHeight);
        benchmark::ClobberMemory();
    }
    CountPixels(state, std::int64_t(windowWidth) * windowHeight);
}

void ScrollPeer(benchmark::State& state) {
    const std::vector<Color>& source = Window();
    std::vector<Color> destination(source.size());
    for (auto _ : state) {
        std::memcpy(static_cast<void*>(destination.data()), source.data(), source.size() * sizeof(Color));
        benchmark::ClobberMemory();
    }
    CountPixels(state, std::int64_t(windowWidth) * windowHeight);
}

BENCHMARK(Reduce<Color>)->Name("Area, BGRA8/us")->UseRealTime();
BENCHMARK(ReducePeer<Color, CV_8UC4>)->Name("Area, BGRA8/peer")->UseRealTime();
BENCHMARK(Reduce<std::uint16_t>)->Name("Area, grey 16/us")->UseRealTime();
BENCHMARK(ReducePeer<std::uint16_t, CV_16UC1>)->Name("Area, grey 16/peer")->UseRealTime();
BENCHMARK_CAPTURE(Magnify, cubic, Mode::Cubic)->Name("Cubic/us")->UseRealTime();
BENCHMARK_CAPTURE(MagnifyPeer, cubic, cv::INTER_CUBIC)->Name("Cubic/peer")->UseRealTime();
BENCHMARK_CAPTURE(Magnify, linear, Mode::Linear)->Name("Linear/us")->UseRealTime();
BENCHMARK_CAPTURE(MagnifyPeer, linear, cv::INTER_LINEAR)->Name("Linear/peer")->UseRealTime();
BENCHMARK_CAPTURE(Magnify, nearest, Mode::Nearest)->Name("Nearest/us")->UseRealTime();
BENCHMARK(NearestPeer)->Name("Nearest/peer")->UseRealTime();
BENCHMARK(Scroll)->Name("Scroll by 3 columns/us")->UseRealTime();
BENCHMARK(ScrollPeer)->Name("Scroll by 3 columns/peer")->UseRealTime();

} // namespace
