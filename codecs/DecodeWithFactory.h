#pragma once

#include "codecs/CodecFactory.h"

namespace Quorvex::Platform::Video {
class Context;
}

namespace ET::Img {

/// Where a load's results go, and with what means.
struct LoadTarget {
    /// Creates the image, so that a decoder writes straight into memory that the renderer can use. Never null.
    SharedPtr<Quorvex::Platform::Video::Context> context;
    /// Receives the decoder's messages; may be null.
    SharedPtr<Quorvex::ILogger> logger;
    /// The decoders to choose from; null: those of the process.
    const CodecRegistry* registry = nullptr;
};

/// Index values with a meaning of their own; all others are one-based.
namespace ImageIndex {
inline constexpr std::int32_t Default = 0;
inline constexpr std::int32_t Last = -1;
} // namespace ImageIndex

/// The core of a load: makes the decoder, asks it for the image it will deliver, creates that image and decodes into
/// it. The index is one-based or one of ImageIndex, and is replaced by the one that was used. The stream must stand at
/// its start. Raises what the decoder raises on bad headers, Exception "unknown color type" where it asks for no sample
/// type of the list, Exception with empty text where it delivers no image, and std::bad_alloc.
SharedPtr<ImageFile> DecodeWithFactory(const CodecFactory& factory, const SharedPtr<Quorvex::Stream>& stream,
                                       const LoadTarget& target, std::int32_t& index, SharedPtr<ImageBase>& image);

/// Decodes with the first factory whose pattern matches the name, and tries no other. Without a match: Exception with
/// empty text.
SharedPtr<ImageFile> DecodeByExtension(const Quorvex::String& fileName, const SharedPtr<Quorvex::Stream>& stream,
                                       const LoadTarget& target, std::int32_t& index, SharedPtr<ImageBase>& image);

/// Tries all factories in turn; a failure of one, memory exhausted included, leads to the next. Exception with empty
/// text when none succeeds; index and image are then as they were at entry, and null.
SharedPtr<ImageFile> DecodeByContent(const SharedPtr<Quorvex::Stream>& stream, const LoadTarget& target,
                                     std::int32_t& index, SharedPtr<ImageBase>& image);

} // namespace ET::Img
