#pragma once

#include "tests/codecs/LzwWriter.h"

/// How decoding ended: what came out, and whether that was as much as wanted.
struct LzwOutcome {
    std::vector<std::uint8_t> bytes;
    bool isWhole = false;
};

/// A plain decoder, with a table of whole strings, bit by bit.
LzwOutcome ReferenceLzw(const std::vector<std::uint8_t>& source, std::uint32_t codeSize, CodeWriter::Format format,
                        std::size_t wanted);
