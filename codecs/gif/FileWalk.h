#pragma once

#include "codecs/gif/Frame.h"

namespace ET::Img::Gif {

/// A walk through the blocks of a GIF file from one frame to the next (GIF89a appendix B). Extensions are passed over,
/// and so are bytes between the blocks that begin none. Holds the file's bytes in memory.
class FileWalk {
public:
    /// Reads the headers from the start of the stream, which must outlive the walk. Raises Exception "unknown GIF
    /// version", "250 missing global color map" for version 87a and "324 missing global color map" for 89a, and with
    /// empty text where the file ends before.
    explicit FileWalk(Quorvex::Stream& stream);

    /// Goes on to the next frame; false at the trailer. Raises Exception with empty text where the file ends before.
    bool Next();
    const Frame& GetFrame() const { return m_frame; }
    std::vector<std::uint8_t> ReadCodesOfFrame() { return ReadCodes(m_file, m_frame); }

private:
    Quorvex::StreamBuffer m_file;
    ColorTable m_colors;
    Frame m_frame;
};

} // namespace ET::Img::Gif
