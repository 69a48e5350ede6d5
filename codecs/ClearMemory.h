#pragma once

#include <cstddef>

namespace ET::Img {

/// Makes the bytes 0. Writes only where that changes anything: memory fresh from the system reads as 0 and stays
/// unused, so that an image that is large in its header alone costs no memory.
void ClearMemory(void* memory, std::size_t bytes);

} // namespace ET::Img
