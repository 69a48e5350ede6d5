#pragma once

#include "data/ImageBase.h"
#include "foundation/Function.h"
#include "video/BufferFormats.h"

namespace Quorvex::Platform::Video {

class CombinedShader;
class Image2D;
class Image2DMeta;
class IWindowSurface;
class OffscreenBuffer;
class PixelShader;
class Renderer;
class VertexBuffer2D;
class VertexShader;

/// One graphics device: a small fixed-function pipeline that draws textured, coloured quads in pixel coordinates into a
/// window's surface or an offscreen buffer. It creates every device object, and all of them are gone before it is: a
/// child keeps its context alive. The targets keep a child, and thereby the context itself; a user ends its drawing
/// with ResetTarget, or the circle stays. All calls come from the thread that owns the windows, but for the image
/// factories, which decoders call on their worker.
class Context : public EnableSharedPtrFromThis {
public:
    class ContextChild;

    Context();
    /// Reports "Context::~Context" if children are left, and cuts them loose.
    virtual ~Context();

    /// A surface for the window; a context serves several. WANTED stands in order of preference. ON_RECREATE is called
    /// when the device was rebuilt. Raises Exception if the backend cannot start.
    virtual SharedPtr<Renderer> CreateRenderer(SharedPtr<IWindowSurface> window, std::span<const BufferFormat> wanted,
                                               Function<void> onRecreate) = 0;

    // One factory per sample type, in the order of ColorTypeEnum: width x height pixels in rows of at least
    // requestedRowLength pixels and at least requestedRows rows, both rounded as TextureSideLength says. A backend may
    // give an image class of its own. Raises as ImageBase::Allocate does.
#define QUORVEX_FACTORY(value, name, sample)                                                                           \
    virtual SharedPtr<Data::ImageBase> CreateImage##name(                                                              \
        std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength, std::uint32_t requestedRows);
    QUORVEX_SAMPLE_TYPES(QUORVEX_FACTORY)
#undef QUORVEX_FACTORY

    /// REPEAT_UPLOAD is called when the device has lost the texture's content.
    virtual SharedPtr<Image2D> CreateImage2D(const Image2DMeta& image, Function<void> repeatUpload) = 0;
    /// Texturing on, with this texture; it must live until it is unbound.
    virtual void BindImage2D(const SharedPtr<Image2D>& image);
    virtual void BindImage(Image2D* image) = 0;
    /// Texturing off.
    virtual void UnbindImage() = 0;

    virtual SharedPtr<PixelShader> CreatePixelShader() = 0;
    virtual SharedPtr<VertexShader> CreateVertexShader() = 0;
    virtual SharedPtr<CombinedShader> CreateCombinedShader() = 0;
    /// A null shader, and one without a pixel program, raises Exception "<Name>Renderer::BindShader(...) -> ...".
    virtual void BindShader(const SharedPtr<CombinedShader>& shader) = 0;
    virtual void UnbindShader() = 0;

    /// Drawing goes to the buffer; the other target is cleared.
    virtual void SetOffscreenTarget(SharedPtr<OffscreenBuffer> target);
    /// Drawing goes to the window's surface; the other target is cleared.
    virtual void SetRenderTarget(SharedPtr<Renderer> target);
    /// Clears both. Drawing is an error from here on.
    virtual void ResetTarget();

    /// A buffer for that many quads.
    virtual SharedPtr<VertexBuffer2D> CreateVertexBuffer2D(std::uint32_t quadCount) = 0;
    /// Draws one quad: a device does so from the buffer's own RenderRange.
    virtual void RenderVertexBufferRange(VertexBuffer2D& buffer, std::uint32_t quadIndex);
    virtual SharedPtr<OffscreenBuffer> CreateOffscreenBuffer(std::uint32_t width, std::uint32_t height) = 0;

    /// The factory for the type. Raises Exception "unknown color type" for a value outside the list.
    SharedPtr<Data::ImageBase> CreateImage(Data::ColorTypeEnum::Value type, std::uint32_t width, std::uint32_t height,
                                           std::uint32_t requestedRowLength = 0, std::uint32_t requestedRows = 0);
    /// Pixels along one side of the texture for that many pixels of an image: the next power of two on a device that
    /// has no others. Raises Exception with empty text where that leaves 32 bits.
    std::uint32_t TextureSideLength(std::uint32_t length) const;

    std::uint32_t GetChildCount() const {
        return childCount;
    }
    SharedPtr<Context> SharedPtrFromThis() {
        return EnableSharedPtrFromThis::SharedPtrFromThis(this);
    }

protected:
    /// Walk the children from head to tail; a child may end, or create another one, within its call. Children that come
    /// to be during a walk are not visited by it.
    void LoseDevice();
    void ResetDevice();

public:
    SharedPtr<Renderer> renderTarget; ///< At most one of the two targets is set.
    SharedPtr<OffscreenBuffer> offscreenTarget;

    // Clip rectangle in target pixels, right and bottom exclusive; BeginPaint sets it. Software alone honours it.
    std::int32_t clipLeft = 0;
    std::int32_t clipTop = 0;
    std::int32_t clipRight = 0;
    std::int32_t clipBottom = 0;

    bool blendingEnabled = false;
    bool hasEdgeClamp = false;                        ///< OpenGL: an edge-clamp extension exists.
    bool hasVertexBufferObjects = false;              ///< Vertex buffers live on the device.
    bool hasNonPowerOfTwoTextures = false;            ///< Textures of any size.
    bool hasConditionalNonPowerOfTwoTextures = false; ///< Direct3D9: any size, under the device's conditions.
    /// Straight colour, 0..1, that BeginPaint clears to after multiplying it with its alpha.
    Data::ColorBGRA<float> clearColor{1.0f, 1.0f, 1.0f, 1.0f};
    std::int32_t translateX = 0; ///< Pixels added to all vertex positions.
    std::int32_t translateY = 0;

private:
    void WalkChildren(void (ContextChild::*notify)());
    void Append(ContextChild& child);
    void Unlink(ContextChild& child);

    ContextChild* head = nullptr;
    ContextChild* tail = nullptr;
    std::uint32_t childCount = 0;
    // The walk in progress: the child after the current one, and the last one to visit.
    ContextChild* walkNext = nullptr;
    ContextChild* walkLast = nullptr;
};

/// A device object: linked into its context from construction to destruction.
class Context::ContextChild {
public:
    /// SHARED_CONTEXT is the same context, so that the child keeps it alive; null for a child that must not.
    ContextChild(Context* owner, SharedPtr<Context> sharedContext);
    ContextChild(const ContextChild&) = delete;
    ContextChild& operator=(const ContextChild&) = delete;
    virtual ~ContextChild();

    /// The device has gone: what lies in its memory must be released.
    virtual void OnDeviceLost() {}
    /// The device is back: what lay in its memory must be made again.
    virtual void OnDeviceReset() {}

    const SharedPtr<Context>& GetContext() const { return context; }

private:
    friend class Context;

    ContextChild* prev = nullptr;
    ContextChild* next = nullptr;
    SharedPtr<Context> context;
    Context* listOwner; ///< Null once the context has ended before its child.
};

} // namespace Quorvex::Platform::Video
