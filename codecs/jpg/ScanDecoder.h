#pragma once

#include "codecs/jpg/ColorConversion.h"
#include "codecs/jpg/Scan.h"
#include "data/ImageBase.h"

namespace ET::Img::Jpg {

/// The largest number of threads that share a scan.
inline constexpr std::uint32_t largestWorkerCount = 8;

/// What the scans of a frame are decoded with, besides the frame itself.
struct ScanContext {
    Frame& frame;
    const Tables& tables;
    ColorHints hints;
    std::uint32_t restartInterval; ///< MCUs; 0: none.
    /// Threads of a scan and of the last stage; 0: one for each processor. The result does not depend on it.
    std::uint32_t workerCount;
    bool isTargetSet;                 ///< Otherwise a single scan sets the pixels that it does not reach to grey, too.
    Quorvex::Data::ImageBase& target; ///< Its size and type are those of the frame.
};

struct ScanResult {
    std::uint32_t position; ///< In the file, behind the scan.
    bool isIncomplete;
};

/// Whether each MCU of the scan becomes pixels as soon as it is decoded; otherwise its coefficients are kept with the
/// frame until FinishFrame.
bool IsSingleScan(const Frame& frame, const ScanHeader& header);

/// Decodes the entropy-coded data that the buffer stands at. What is damaged is left out and makes the result
/// incomplete. Raises Exception "JPGDecoder failed, " and the reason where the frame cannot be converted to pixels or
/// no thread can be started, and std::bad_alloc.
ScanResult DecodeScan(const ScanContext& context, const ScanHeader& header, const Quorvex::StreamBuffer& buffer);

/// Makes pixels of the kept coefficients. A target that is not of 8 bits stays as it is. Raises as DecodeScan does.
void FinishFrame(const ScanContext& context);

} // namespace ET::Img::Jpg
