#include "codecs/bmp/Os2Headers.h"

#include "codecs/bmp/NormalHeader.h"

namespace ET::Img {

namespace {

template <class T, class U>
void CopyIfKnown(const Quorvex::UninitializedProperty<T>& source, Quorvex::Property<U>& destination) {
    if (source.IsKnown())
        destination.Set(static_cast<U>(source.Get()));
}

} // namespace

void OS2_BITMAPINFOHEADER::CopyTo(NormalHeader& normal) const {
    normal.width = cx;
    normal.height = cy;
    normal.fields.biSize.Set(cbFix);
    normal.fields.biWidth.Set(cx);
    normal.fields.biHeight.Set(cy);
    normal.fields.biPlanes.Set(cPlanes);
    normal.fields.biBitCount.Set(cBitCount);
}

void OS2_BITMAPINFOHEADER2::LoadRemaining(Quorvex::Stream& stream) {
    // The sizes that a header of this family can have all end between two fields.
    const std::uint64_t end = stream.tell() - sizeof(std::uint32_t) + cbFix;
    const auto& entries = GetEntries();
    for (std::size_t i = 1; i < entries.size() && stream.tell() < end; ++i)
        entries[i]->LoadValueFromStream(stream);
}

void OS2_BITMAPINFOHEADER2::CopyTo(NormalHeader& normal) const {
    normal.width = cx;
    normal.height = cy;
    normal.fields.biSize.Set(cbFix);
    normal.fields.biWidth.Set(static_cast<std::int32_t>(cx.Get()));
    normal.fields.biHeight.Set(static_cast<std::int32_t>(cy.Get()));
    normal.fields.biPlanes.Set(cPlanes);
    normal.fields.biBitCount.Set(cBitCount);
    CopyIfKnown(ulCompression, normal.fields.biCompression);
    CopyIfKnown(cbImage, normal.fields.biSizeImage);
    CopyIfKnown(cxResolution, normal.fields.biXPelsPerMeter);
    CopyIfKnown(cyResolution, normal.fields.biYPelsPerMeter);
    CopyIfKnown(cclrUsed, normal.fields.biClrUsed);
    CopyIfKnown(cclrImportant, normal.fields.biClrImportant);
}

} // namespace ET::Img
