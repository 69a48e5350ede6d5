#pragma once

namespace ET::Img::HeaderTexts {

// What the tree of header fields says about a field, in English with simple markup, shared by the generations of the
// Windows headers. The values are those of the Windows SDK's wingdi.h.

inline constexpr char infoHeader[] = "The dimensions and the colour format of a device-independent bitmap.";
inline constexpr char v2Header[] = "The dimensions and the colour format of a device-independent bitmap, with the "
                                   "masks of the three colours in the header itself.";
inline constexpr char v3Header[] = "The dimensions and the colour format of a device-independent bitmap, with the "
                                   "masks of the three colours and of alpha in the header itself.";
inline constexpr char v4Header[] = "The dimensions and the colour format of a device-independent bitmap, with masks "
                                   "and the colour space of the pixels.";
inline constexpr char v5Header[] = "The dimensions and the colour format of a device-independent bitmap, with masks, "
                                   "the colour space of the pixels, the rendering intent and an optional profile.";

inline constexpr char size[] = "The number of bytes required by the structure.";
inline constexpr char width[] = "The width of the bitmap, in pixels.";
inline constexpr char height[] =
    "The height of the bitmap, in pixels.<br />If the value is positive, the bitmap is bottom-up: the first row in the "
    "file is the lowest of the image. If it is negative, the bitmap is top-down and may not be run-length encoded.";
inline constexpr char planes[] = "The number of planes for the target device. This value must be set to 1.";
inline constexpr char bitCount[] =
    "The number of bits per pixel.<br /><table>"
    "<tr><td>1</td><td>Two colours from the palette.</td></tr>"
    "<tr><td>2</td><td>At most 4 colours from the palette.</td></tr>"
    "<tr><td>4</td><td>At most 16 colours from the palette.</td></tr>"
    "<tr><td>8</td><td>At most 256 colours from the palette.</td></tr>"
    "<tr><td>16</td><td>Masks tell the bits of each colour; 5 bits each by default.</td></tr>"
    "<tr><td>24</td><td>One byte each for blue, green and red.</td></tr>"
    "<tr><td>32</td><td>Masks tell the bits of each colour; 8 bits each by default.</td></tr></table>";
inline constexpr char compression[] = "How the pixels are stored.<br /><table>"
                                      "<tr><td>0</td><td>BI_RGB: not compressed.</td></tr>"
                                      "<tr><td>1</td><td>BI_RLE8: runs of 8-bit pixels.</td></tr>"
                                      "<tr><td>2</td><td>BI_RLE4: runs of 4-bit pixels.</td></tr>"
                                      "<tr><td>3</td><td>BI_BITFIELDS: not compressed, with three masks.</td></tr>"
                                      "<tr><td>4</td><td>BI_JPEG: the image is a JPEG file.</td></tr>"
                                      "<tr><td>5</td><td>BI_PNG: the image is a PNG file.</td></tr>"
                                      "<tr><td>6</td><td>BI_ALPHABITFIELDS: not compressed, with four masks.</td></tr>"
                                      "</table>";
inline constexpr char sizeImage[] =
    "The size of the image, in bytes.<br />The value may be 0 for a bitmap that is not compressed.";
inline constexpr char xPelsPerMeter[] = "The horizontal resolution of the target device, in pixels per metre.";
inline constexpr char yPelsPerMeter[] = "The vertical resolution of the target device, in pixels per metre.";
inline constexpr char clrUsed[] = "The number of colours in the palette that the bitmap uses.<br />If the value is 0, "
                                  "it uses as many as the number of bits per pixel allows.";
inline constexpr char clrImportant[] =
    "The number of colours that are needed to display the bitmap.<br />If the value is 0, all are needed.";

inline constexpr char redMask[] = "The bits of each pixel that hold red.";
inline constexpr char greenMask[] = "The bits of each pixel that hold green.";
inline constexpr char blueMask[] = "The bits of each pixel that hold blue.";
inline constexpr char alphaMask[] = "The bits of each pixel that hold alpha. The value is 0 if there is no alpha.";

inline constexpr char v4ColorSpace[] =
    "The colour space of the bitmap.<br /><table>"
    "<tr><td>0</td><td>LCS_CALIBRATED_RGB: end points and gamma values are given in this header.</td></tr>"
    "<tr><td>0x73524742</td><td>LCS_sRGB: the sRGB colour space.</td></tr>"
    "<tr><td>0x57696E20</td><td>LCS_WINDOWS_COLOR_SPACE: the default colour space of the system.</td></tr></table>";
inline constexpr char v5ColorSpace[] =
    "The colour space of the bitmap.<br /><table>"
    "<tr><td>0</td><td>LCS_CALIBRATED_RGB: end points and gamma values are given in this header.</td></tr>"
    "<tr><td>0x73524742</td><td>LCS_sRGB: the sRGB colour space.</td></tr>"
    "<tr><td>0x57696E20</td><td>LCS_WINDOWS_COLOR_SPACE: the default colour space of the system.</td></tr>"
    "<tr><td>0x4C494E4B</td><td>PROFILE_LINKED: bV5ProfileData points to the file name of a profile.</td></tr>"
    "<tr><td>0x4D424544</td><td>PROFILE_EMBEDDED: bV5ProfileData points to a profile in this file.</td></tr></table>";
inline constexpr char endpoints[] = "The x, y and z coordinates of the three colours of the colour space.<br />The "
                                    "value is ignored unless the colour space is LCS_CALIBRATED_RGB.";
inline constexpr char gammaRed[] = "Toned response curve for red.";
inline constexpr char gammaGreen[] = "Toned response curve for green.";
inline constexpr char gammaBlue[] = "Toned response curve for blue.";
inline constexpr char intent[] =
    "The rendering intent of the bitmap.<br /><table>"
    "<tr><td>1</td><td>LCS_GM_BUSINESS: graph or saturation. Keeps saturation; for charts.</td></tr>"
    "<tr><td>2</td><td>LCS_GM_GRAPHICS: proof or relative colorimetric. For graphic designs and named "
    "colours.</td></tr>"
    "<tr><td>4</td><td>LCS_GM_IMAGES: picture or perceptual. Keeps contrast; for photographs.</td></tr>"
    "<tr><td>8</td><td>LCS_GM_ABS_COLORIMETRIC: match or absolute colorimetric. Keeps the white point.</td></tr>"
    "</table>";
inline constexpr char profileData[] =
    "The offset, in bytes, from the start of this header to the start of the profile data.";
inline constexpr char profileSize[] = "The size, in bytes, of the embedded profile data.";
inline constexpr char reserved[] = "This member has been reserved. Its value should be set to 0.";

inline constexpr char redEndpoint[] = "The xyz coordinates of red endpoint.";
inline constexpr char greenEndpoint[] = "The xyz coordinates of green endpoint.";
inline constexpr char blueEndpoint[] = "The xyz coordinates of blue endpoint.";
inline constexpr char xCoordinate[] = "The x coordinate in fix point (2.30).";
inline constexpr char yCoordinate[] = "The y coordinate in fix point (2.30).";
inline constexpr char zCoordinate[] = "The z coordinate in fix point (2.30).";

} // namespace ET::Img::HeaderTexts
