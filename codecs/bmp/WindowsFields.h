#pragma once

/// The fields that generations of the Windows headers share, in file order: X(prefix, type, name, text) with the prefix
/// of the generation, which is all that the names differ by, and the explanation in HeaderTexts.
#define QUORVEX_BITMAP_INFO_FIELDS(X, prefix)                                                                          \
    X(prefix, std::uint32_t, Size, size)                                                                               \
    X(prefix, std::int32_t, Width, width)                                                                              \
    X(prefix, std::int32_t, Height, height)                                                                            \
    X(prefix, std::uint16_t, Planes, planes)                                                                           \
    X(prefix, std::uint16_t, BitCount, bitCount)                                                                       \
    X(prefix, std::uint32_t, Compression, compression)                                                                 \
    X(prefix, std::uint32_t, SizeImage, sizeImage)                                                                     \
    X(prefix, std::int32_t, XPelsPerMeter, xPelsPerMeter)                                                              \
    X(prefix, std::int32_t, YPelsPerMeter, yPelsPerMeter)                                                              \
    X(prefix, std::uint32_t, ClrUsed, clrUsed)                                                                         \
    X(prefix, std::uint32_t, ClrImportant, clrImportant)

#define QUORVEX_BITMAP_COLOR_MASK_FIELDS(X, prefix)                                                                    \
    X(prefix, std::uint32_t, RedMask, redMask)                                                                         \
    X(prefix, std::uint32_t, GreenMask, greenMask)                                                                     \
    X(prefix, std::uint32_t, BlueMask, blueMask)

#define QUORVEX_BITMAP_ALPHA_MASK_FIELD(X, prefix) X(prefix, std::uint32_t, AlphaMask, alphaMask)

/// All that the normal form of the headers keeps: what the later generations begin with.
#define QUORVEX_BITMAP_NORMAL_FIELDS(X, prefix)                                                                        \
    QUORVEX_BITMAP_INFO_FIELDS(X, prefix)                                                                              \
    QUORVEX_BITMAP_COLOR_MASK_FIELDS(X, prefix)                                                                        \
    QUORVEX_BITMAP_ALPHA_MASK_FIELD(X, prefix)

#define QUORVEX_BITMAP_GAMMA_FIELDS(X, prefix)                                                                         \
    X(prefix, std::uint32_t, GammaRed, gammaRed)                                                                       \
    X(prefix, std::uint32_t, GammaGreen, gammaGreen)                                                                   \
    X(prefix, std::uint32_t, GammaBlue, gammaBlue)
