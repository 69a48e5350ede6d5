#pragma once

#include "codecs/tif/TiffDirectory.h"

#include <cstddef>

namespace ET::Img::Tif {

/// Takes count samples of the given depth out of the bytes of a row, each into the low bits of a word.
template <class Word>
using SampleLoad = void (*)(const std::uint8_t* bytes, Word* words, std::size_t count, std::uint32_t bits);

/// The loop for samples of that depth, up to that of the word. Depths of whole bytes follow the byte order of the file;
/// others are packed from the highest bit of a byte on, whatever the order is.
template <class Word>
SampleLoad<Word> GetSampleLoad(std::uint32_t bits, ByteOrder order);

extern template SampleLoad<std::uint8_t> GetSampleLoad(std::uint32_t, ByteOrder);
extern template SampleLoad<std::uint16_t> GetSampleLoad(std::uint32_t, ByteOrder);
extern template SampleLoad<std::uint32_t> GetSampleLoad(std::uint32_t, ByteOrder);
extern template SampleLoad<std::uint64_t> GetSampleLoad(std::uint32_t, ByteOrder);

} // namespace ET::Img::Tif
