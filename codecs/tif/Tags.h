#pragma once

#include <cstdint>

/// The numbers of the tags that decide how an image is decoded (TIFF 6.0; SampleFormat: section 19; the tags for JPEG:
/// section 22; JPEGTables: Technical Note 2).
namespace ET::Img::Tif::Tag {

enum : std::uint16_t {
    ImageWidth = 256,
    ImageLength = 257,
    BitsPerSample = 258,
    Compression = 259,
    PhotometricInterpretation = 262,
    FillOrder = 266,
    StripOffsets = 273,
    Orientation = 274,
    SamplesPerPixel = 277,
    RowsPerStrip = 278,
    StripByteCounts = 279,
    XResolution = 282,
    YResolution = 283,
    PlanarConfiguration = 284,
    T4Options = 292,
    Predictor = 317,
    ColorMap = 320,
    TileWidth = 322,
    TileLength = 323,
    TileOffsets = 324,
    TileByteCounts = 325,
    ExtraSamples = 338,
    SampleFormat = 339,
    JPEGTables = 347,
    JPEGProc = 512,
    JPEGInterchangeFormat = 513,
    JPEGInterchangeFormatLength = 514,
    JPEGRestartInterval = 515,
    JPEGLosslessPredictors = 517,
    JPEGPointTransforms = 518,
    JPEGQTables = 519,
    JPEGDCTables = 520,
    JPEGACTables = 521,
    YCbCrSubSampling = 530,
};

} // namespace ET::Img::Tif::Tag
