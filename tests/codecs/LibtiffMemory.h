#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <tiffio.h>

/// A file in memory as libtiff wants to have it.
struct LibtiffMemory {
    std::vector<std::uint8_t> bytes;
    std::size_t position = 0;
};

using Libtiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

/// From the start of the file. Null where libtiff refuses it.
Libtiff OpenLibtiff(LibtiffMemory& file, const char* mode);
