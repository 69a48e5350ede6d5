#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

/// A picture that somebody else decoded.
struct ReferencePicture {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::vector<std::uint32_t> pixels; ///< Rows from the top, AARRGGBB, alpha straight.
};

/// Empty where the file is no PNG that can be read.
std::optional<ReferencePicture> ReadReferencePicture(const std::filesystem::path& path);
