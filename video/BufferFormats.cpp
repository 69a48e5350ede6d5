#include "video/BufferFormats.h"

#include "foundation/Exception.h"
#include "foundation/Report.h"

#include <algorithm>

namespace Quorvex::Platform::Video {

BufferFormat ChooseBufferFormat(std::span<const BufferFormat> wanted, const BufferFormats& formats,
                                RendererTypeEnum backend) {
    const auto found =
        std::find_if(wanted.begin(), wanted.end(), [&](BufferFormat format) { return formats.IsSupported(format); });
    if (found != wanted.end())
        return *found;
    const String text = String("No ") + RendererTypeName(backend) + " buffer format!";
    ReportProblem(__LINE__, text);
    throw Exception(text);
}

} // namespace Quorvex::Platform::Video
