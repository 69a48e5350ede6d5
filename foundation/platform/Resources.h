#pragma once

#include <cstddef>
#include <span>

namespace Quorvex {

/// The bytes of the raw resource of that name in the program, which live as long as the program. A resource that is
/// missing is reported by the name of the call that failed, and raises Exception without text.
std::span<const std::byte> LoadResourceBytes(const char* name);

} // namespace Quorvex
