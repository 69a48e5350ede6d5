#pragma once

#include "codecs/DecodeWithFactory.h"

namespace ET::Img {

/// Opens the file, decodes one image of it with the decoder that its name asks for, and closes the file: the returned
/// decoder lives on for its counts, flags and properties only. Stores the file's last-write time as the platform counts
/// it, if asked, as soon as the file is open. Raises Exception with empty text if the file cannot be opened, and
/// otherwise what DecodeByExtension raises. Any thread.
SharedPtr<ImageFile> LoadFileByExtension(const Quorvex::String& fileName, const LoadTarget& target, std::int32_t& index,
                                         SharedPtr<ImageBase>& image, std::uint64_t* lastWriteTime = nullptr);

/// The same with whatever decoder accepts the content; raises what DecodeByContent raises.
SharedPtr<ImageFile> LoadFileByContent(const Quorvex::String& fileName, const LoadTarget& target, std::int32_t& index,
                                       SharedPtr<ImageBase>& image, std::uint64_t* lastWriteTime = nullptr);

} // namespace ET::Img
