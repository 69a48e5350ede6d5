#include "foundation/platform/Resources.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"
#include "foundation/platform/posix/EmbeddedResources.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

namespace Quorvex {

namespace {
// There are no resources in the file format of programs here; whoever links them in says where they are.
std::span<const Platform::EmbeddedResource> embeddedResources;
} // namespace

namespace Platform {

void SetEmbeddedResources(std::span<const EmbeddedResource> resources) {
    embeddedResources = resources;
}

} // namespace Platform

std::span<const std::byte> LoadResourceBytes(const char* name) {
    const auto found = std::find_if(embeddedResources.begin(), embeddedResources.end(),
                                    [&](const auto& resource) { return std::string_view(resource.name) == name; });
    if (found != embeddedResources.end())
        return found->bytes;
    ReportFailure(__LINE__, "FindResource", ENOENT);
    throw Exception();
}

} // namespace Quorvex
