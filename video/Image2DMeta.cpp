#include "video/Image2DMeta.h"

namespace Quorvex::Platform::Video {

Image2DMeta::Image2DMeta(const Image2DMeta& other)
    : hasAlpha(other.hasAlpha), width(other.width), height(other.height), pixelScaleX(other.pixelScaleX),
      pixelScaleY(other.pixelScaleY), source(other.source) {}

Image2DMeta::Image2DMeta(Image2DMeta&& other) noexcept
    : hasAlpha(other.hasAlpha), width(other.width), height(other.height), pixelScaleX(other.pixelScaleX),
      pixelScaleY(other.pixelScaleY), texture(std::move(other.texture)), source(std::move(other.source)) {
    if (texture)
        texture->SetRepeatUpload(RepeatUpload());
}

Image2DMeta& Image2DMeta::operator=(Image2DMeta other) noexcept {
    DeleteContextObjects();
    hasAlpha = other.hasAlpha;
    width = other.width;
    height = other.height;
    pixelScaleX = other.pixelScaleX;
    pixelScaleY = other.pixelScaleY;
    source = std::move(other.source);
    texture = std::move(other.texture);
    if (texture)
        texture->SetRepeatUpload(RepeatUpload());
    return *this;
}

Image2DMeta::~Image2DMeta() {
    DeleteContextObjects();
}

void Image2DMeta::CreateFromMemory(const SharedPtr<Context>& context, const SharedPtr<Data::ImageBase>& image) {
    if (!context)
        throw Exception("CreateFromMemory: pContext==nullptr");
    if (!image)
        throw Exception("CreateFromMemory: img==nullptr");
    DeleteContextObjects();
    source = image;
    hasAlpha = image->HasAlpha != 0;
    width = image->GetWidth();
    height = image->GetHeight();
    pixelScaleX = image->PixelScaleX;
    pixelScaleY = image->PixelScaleY;
    try {
        GetImage2D(context);
    } catch (...) {
        // Kept, the image would fail again with every frame.
        *this = Image2DMeta();
        throw;
    }
}

void Image2DMeta::CreateFromMemory() {
    if (texture)
        texture->CreateFromMemory(*this);
}

SharedPtr<Image2D> Image2DMeta::GetImage2D(const SharedPtr<Context>& context) {
    if (!source || (texture && texture->GetContext() == context))
        return texture;
    DeleteContextObjects();
    SharedPtr<Image2D> created = context->CreateImage2D(*this, RepeatUpload());
    created->CreateFromMemory(*this);
    texture = std::move(created);
    return texture;
}

void Image2DMeta::DeleteContextObjects() {
    // Somebody else may hold the texture still; it must not call back into an object that has let go of it.
    if (texture)
        texture->SetRepeatUpload({});
    texture.reset();
}

Function<void> Image2DMeta::RepeatUpload() {
    Function<void> upload;
    upload.Bind(this, static_cast<void (Image2DMeta::*)()>(&Image2DMeta::CreateFromMemory));
    return upload;
}

} // namespace Quorvex::Platform::Video
