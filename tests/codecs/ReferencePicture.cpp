#include "tests/codecs/ReferencePicture.h"

#include <png.h>

std::optional<ReferencePicture> ReadReferencePicture(const std::filesystem::path& path) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, path.string().c_str()))
        return {};
    image.format = PNG_FORMAT_BGRA;
    ReferencePicture picture{image.width, image.height, std::vector<std::uint32_t>(image.width * image.height)};
    if (!png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr))
        return {};
    return picture;
}
