#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// An icon or cursor file to be made from the bytes of its images.
struct IcoRecipe {
    using Bytes = std::vector<std::uint8_t>;

    struct Image {
        std::uint8_t width = 0;
        std::uint8_t height = 0;
        std::uint16_t bitCount = 0;
        Bytes data{};
        std::optional<std::uint32_t> size{};   ///< Default: that of the data.
        std::optional<std::uint32_t> offset{}; ///< Default: one behind the other, in order.
    };

    std::uint16_t reserved = 0;
    std::uint16_t type = 1;
    std::optional<std::uint16_t> count{}; ///< Default: that of the images.
    std::vector<Image> images{};

    Bytes Build() const;
};

/// An icon's bitmap with pixels and mask drawn by lot. Of 32 bits, some alphas are 0 and some 255.
struct IconBitmap {
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    std::uint32_t bits = 32;
    std::uint32_t seed = 1;
    bool hasMask = true;
    /// What the header says: the rows of image and mask together, below 0 where the highest row of the image comes
    /// first. Default: twice the height. Half of it, rounded down, must be the height or the opposite of it.
    std::optional<std::int32_t> rows{};

    /// Header, palette, rows and mask, without a file header.
    std::vector<std::uint8_t> Build() const;
    /// As an entry of its own size and depth.
    IcoRecipe::Image ToImage() const;
    std::string Describe() const;
};
