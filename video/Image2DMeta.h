#pragma once

#include "video/Image2D.h"

namespace Quorvex::Platform::Video {

/// One image for display: the source, and the texture made of it for the context that asked last. A value: a copy
/// shares the source and makes a texture of its own when it is drawn. Window thread only.
class Image2DMeta {
public:
    Image2DMeta() = default;
    Image2DMeta(const Image2DMeta& other);
    Image2DMeta(Image2DMeta&& other) noexcept;
    Image2DMeta& operator=(Image2DMeta other) noexcept;
    ~Image2DMeta();

    /// Shows the image, and makes its texture. Raises Exception "CreateFromMemory: pContext==nullptr" or
    /// "CreateFromMemory: img==nullptr" for a null argument, and what the upload raises; the meta is empty then.
    void CreateFromMemory(const SharedPtr<Context>& context, const SharedPtr<Data::ImageBase>& image);
    /// Uploads the source into the texture again, if there is one.
    void CreateFromMemory();
    /// The texture for the context, made anew if the last one belongs to another context. Null without a source.
    SharedPtr<Image2D> GetImage2D(const SharedPtr<Context>& context);
    /// Drops the texture and keeps the source: the next draw makes it again.
    void DeleteContextObjects();

    bool hasAlpha = false;
    std::uint32_t width = 0;  ///< Visible pixels per row.
    std::uint32_t height = 0; ///< Visible rows.
    double pixelScaleX = 1.0; ///< Display width of one pixel.
    double pixelScaleY = 1.0; ///< Display height of one pixel.
    SharedPtr<Image2D> texture;
    SharedPtr<Data::ImageBase> source;

private:
    Function<void> RepeatUpload();
};

} // namespace Quorvex::Platform::Video
