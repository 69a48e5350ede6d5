#pragma once

#include "foundation/String.h"

#include <string>
#include <string_view>

namespace Quorvex::Platform {

/// Texts of the system are bytes, by custom UTF-8; the program's are UTF-16. Bytes that are no UTF-8 become the lone
/// surrogates U+DC80 to U+DCFF, which stand for the bytes 0x80 to 0xFF and turn back into them, so that every name of
/// the file system survives the way through the program (the escape of Python's PEP 383). Other lone surrogates are
/// written as if they were characters: two different names stay different.
std::string NativeFromWide(std::u16string_view text);
/// Takes what String::ToWide takes.
std::string NativeFromWide(const String& text);

/// The empty text where there are no bytes, UTF-16 otherwise.
String WideFromNative(std::string_view bytes);

} // namespace Quorvex::Platform
