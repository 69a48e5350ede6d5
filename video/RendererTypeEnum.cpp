#include "video/RendererTypeEnum.h"

namespace Quorvex::Platform::Video {

// The lookup lives in one translation unit: equal literals of two units need not share an address.
const char* RendererTypeName(RendererTypeEnum type) {
    for (const Keyword<RendererTypeEnum>& keyword : Keywords<RendererTypeEnum>::table)
        if (keyword.value == type)
            return keyword.text;
    throw Exception("unknown renderer type");
}

} // namespace Quorvex::Platform::Video
