#include "video/software/Image2D.h"

#include "video/Image2DMeta.h"
#include "video/software/SoftwareContext.h"

namespace Quorvex::Platform::Video::Software {

Image2D::~Image2D() {
    // The context knows the bound image by its address alone.
    if (GetContext())
        static_cast<SoftwareContext&>(*GetContext()).ForgetImage(this);
}

void Image2D::CreateFromMemory(const Image2DMeta& image) {
    source = image.source;
}

} // namespace Quorvex::Platform::Video::Software
