#pragma once

#include "data/ColorBGRA.h"

#include <cstdint>

namespace ET::Img {

/// Gives pixels of three bytes, blue, green, red, an alpha of 255. Reads exactly 3 * count bytes. Chooses the fastest
/// form that the processor has; all forms give the same bytes.
void ExpandBgr(const std::uint8_t* source, Quorvex::Data::ColorBGRA<std::uint8_t>* destination, std::uint32_t count);

/// The forms by themselves, for tests and benchmarks.
namespace ExpandBgrForms {

using Form = void (*)(const std::uint8_t* source, Quorvex::Data::ColorBGRA<std::uint8_t>* destination,
                      std::uint32_t count);

void Plain(const std::uint8_t* source, Quorvex::Data::ColorBGRA<std::uint8_t>* destination, std::uint32_t count);
/// Null where this processor lacks the instructions.
Form Ssse3();
Form Avx2();

} // namespace ExpandBgrForms

} // namespace ET::Img
