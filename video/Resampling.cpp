#include "video/Resampling.h"

#include "video/RendererTypeEnum.h"

namespace Quorvex::Platform::Video {

void Resampling::Draw(Renderer& renderer, Image2DMeta& image, const ImageRect& rect) {
    // A file may hold an image without rows or columns: nothing of it is to be seen, which is no failure.
    if (image.source && (image.width == 0 || image.height == 0))
        return;
    if (renderer.GetName() == RendererTypeName(RendererTypeEnum::Software))
        software.Draw(renderer, image.source, rect);
    else
        hardware.Draw(renderer, image, rect);
}

bool Resampling::DeleteContextObjects() {
    hardware.DeleteContextObjects();
    software.DeleteContextObjects();
    return true;
}

} // namespace Quorvex::Platform::Video
