#include "tests/codecs/PngReference.h"

#include <csetjmp>
#include <cstring>

#include <png.h>

namespace {

struct Input {
    const std::uint8_t* next;
    std::size_t left;
};

void ReadInput(png_structp png, png_bytep destination, std::size_t byteCount) {
    auto* const input = static_cast<Input*>(png_get_io_ptr(png));
    if (byteCount > input->left)
        png_error(png, "end");
    std::memcpy(destination, input->next, byteCount);
    input->next += byteCount;
    input->left -= byteCount;
}

void OnError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

bool ReadAll(png_structp png, png_infop info, Input* input) {
    if (setjmp(png_jmpbuf(png)) != 0)
        return false;
    png_set_read_fn(png, input, ReadInput);
    png_read_png(png, info, PNG_TRANSFORM_EXPAND | PNG_TRANSFORM_PACKING, nullptr);
    return true;
}

PngReference Collected(png_structp png, png_infop info) {
    PngReference result;
    result.isDecoded = true;
    result.isWide = png_get_bit_depth(png, info) == 16;
    result.width = png_get_image_width(png, info);
    result.height = png_get_image_height(png, info);
    const std::size_t channels = png_get_channels(png, info);
    result.bitsPerPixel = std::uint32_t{png_get_channels(png, info)} * png_get_bit_depth(png, info);
    const bool isColor = channels >= 3;
    for (std::uint32_t y = 0; y < result.height; ++y) {
        const png_bytep row = png_get_rows(png, info)[y];
        const auto sample = [&](std::size_t i) {
            return static_cast<std::uint16_t>(result.isWide ? row[2 * i] * 256 + row[2 * i + 1] : row[i]);
        };
        for (std::size_t i = 0; i < result.width * channels; i += channels) {
            const auto opaque = static_cast<std::uint16_t>(result.isWide ? 65535 : 255);
            result.samples.insert(result.samples.end(),
                                  {sample(isColor ? i + 2 : i), sample(isColor ? i + 1 : i), sample(i),
                                   channels % 2 == 0 ? sample(i + channels - 1) : opaque});
        }
    }
    return result;
}

} // namespace

PngReference DecodePngByLibrary(const std::vector<std::uint8_t>& file) {
    Input input{file.data(), file.size()};
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, OnError, OnWarning);
    png_infop info = png_create_info_struct(png);
    PngReference result;
    if (ReadAll(png, info, &input))
        result = Collected(png, info);
    png_destroy_read_struct(&png, &info, nullptr);
    return result;
}

PngReference DecodePngSimplified(const std::vector<std::uint8_t>& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    PngReference result;
    if (!png_image_begin_read_from_memory(&image, file.data(), file.size()))
        return result;
    image.format = PNG_FORMAT_BGRA;
    std::vector<std::uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr))
        return result;
    return {true, false, image.width, image.height, 0, {bytes.begin(), bytes.end()}};
}
