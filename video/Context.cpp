#include "video/Context.h"

#include "data/Image.h"
#include "foundation/Report.h"
#include "video/Image2D.h"
#include "video/OffscreenBuffer.h"
#include "video/Renderer.h"
#include "video/VertexBuffer2D.h"

#include <algorithm>
#include <bit>

namespace Quorvex::Platform::Video {

Context::Context() = default;

Context::~Context() {
    if (head != nullptr)
        ReportProblem(__LINE__, "Context::~Context");
    // A child that outlives its context must not write into the list when it ends.
    for (ContextChild* child = head; child != nullptr; child = child->next)
        child->listOwner = nullptr;
}

#define QUORVEX_FACTORY(value, name, sample)                                                                           \
    SharedPtr<Data::ImageBase> Context::CreateImage##name(                                                             \
        std::uint32_t width, std::uint32_t height, std::uint32_t requestedRowLength, std::uint32_t requestedRows) {    \
        SharedPtr<Data::ImageBase> image(new Data::Image<sample>());                                                   \
        image->Allocate(width, height, TextureSideLength(std::max(requestedRowLength, width)),                         \
                        TextureSideLength(std::max(requestedRows, height)));                                           \
        return image;                                                                                                  \
    }
QUORVEX_SAMPLE_TYPES(QUORVEX_FACTORY)
#undef QUORVEX_FACTORY

SharedPtr<Data::ImageBase> Context::CreateImage(Data::ColorTypeEnum::Value type, std::uint32_t width,
                                                std::uint32_t height, std::uint32_t requestedRowLength,
                                                std::uint32_t requestedRows) {
    using Factory = SharedPtr<Data::ImageBase> (Context::*)(std::uint32_t, std::uint32_t, std::uint32_t, std::uint32_t);
#define QUORVEX_FACTORY(value, name, sample) &Context::CreateImage##name,
    static constexpr Factory factories[] = {QUORVEX_SAMPLE_TYPES(QUORVEX_FACTORY)};
#undef QUORVEX_FACTORY
    const std::size_t index = type;
    if (index >= std::size(factories))
        throw Exception("unknown color type");
    return (this->*factories[index])(width, height, requestedRowLength, requestedRows);
}

std::uint32_t Context::TextureSideLength(std::uint32_t length) const {
    if (hasNonPowerOfTwoTextures || hasConditionalNonPowerOfTwoTextures || length == 0)
        return length;
    if (length > 0x80000000)
        throw Exception();
    return std::bit_ceil(length);
}

void Context::BindImage2D(const SharedPtr<Image2D>& image) {
    BindImage(image.get());
}

void Context::SetOffscreenTarget(SharedPtr<OffscreenBuffer> target) {
    renderTarget.reset();
    offscreenTarget = std::move(target);
}

void Context::SetRenderTarget(SharedPtr<Renderer> target) {
    offscreenTarget.reset();
    renderTarget = std::move(target);
}

void Context::ResetTarget() {
    renderTarget.reset();
    offscreenTarget.reset();
}

void Context::RenderVertexBufferRange(VertexBuffer2D& buffer, std::uint32_t quadIndex) {
    buffer.RenderRange(quadIndex);
}

void Context::LoseDevice() {
    WalkChildren(&ContextChild::OnDeviceLost);
}

void Context::ResetDevice() {
    WalkChildren(&ContextChild::OnDeviceReset);
}

void Context::WalkChildren(void (ContextChild::*notify)()) {
    // Objects end and come to be in these calls: the place in the list is kept where Unlink can correct it.
    walkNext = head;
    walkLast = tail;
    while (walkNext != nullptr) {
        ContextChild& child = *walkNext;
        walkNext = &child == walkLast ? nullptr : child.next;
        (child.*notify)();
    }
    walkLast = nullptr;
}

void Context::Append(ContextChild& child) {
    child.prev = tail;
    (tail != nullptr ? tail->next : head) = &child;
    tail = &child;
    ++childCount;
}

void Context::Unlink(ContextChild& child) {
    if (walkNext == &child)
        walkNext = &child == walkLast ? nullptr : child.next;
    if (walkLast == &child)
        walkLast = child.prev;
    (child.prev != nullptr ? child.prev->next : head) = child.next;
    (child.next != nullptr ? child.next->prev : tail) = child.prev;
    --childCount;
}

Context::ContextChild::ContextChild(Context* owner, SharedPtr<Context> sharedContext)
    : context(std::move(sharedContext)), listOwner(owner) {
    owner->Append(*this);
}

Context::ContextChild::~ContextChild() {
    if (listOwner != nullptr)
        listOwner->Unlink(*this);
}

} // namespace Quorvex::Platform::Video
