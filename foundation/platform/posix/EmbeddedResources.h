#pragma once

#include <cstddef>
#include <span>

namespace Quorvex::Platform {

/// A file that was built into the program.
struct EmbeddedResource {
    const char* name;
    std::span<const std::byte> bytes;
};

/// Says what LoadResourceBytes finds. The program calls it once at its start; the table lives as long as the program.
void SetEmbeddedResources(std::span<const EmbeddedResource> resources);

} // namespace Quorvex::Platform
