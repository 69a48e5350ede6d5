#pragma once

#include "foundation/BilingualText.h"

#include <exception>

namespace Quorvex {

/// The one exception class of the program. Carries a message free of language, or a pair by language; both may be
/// empty, and what() then is the empty text.
class Exception : public std::exception {
public:
    Exception() = default;
    Exception(TextView text) : m_message(text) {}
    Exception(const char* text) : m_message(TextView(text)) {}
    Exception(const String& text) : m_message(text) {}
    explicit Exception(BilingualText texts) : m_messages(std::move(texts)) {}
    /// NAME failed, error code CODE
    Exception(TextView name, std::uint32_t code);
    /// The line and a blank; the name serves the reader of the source alone.
    Exception(int line, TextView name);
    Exception(int line, TextView name, std::uint32_t code);
    Exception(int line, TextView name, TextView text);
    /// The cached text moves to the copy: a copy is what travels on, and the source asks again if it must.
    Exception(const Exception& other);
    Exception& operator=(const Exception&) = delete;

    /// The language-free message in Windows-1252, else the one of the present language. Valid until the next call.
    const char* what() const noexcept override;

    const String& GetMessageText() const { return m_message; }
    const BilingualText& GetMessages() const { return m_messages; }

private:
    String m_message;
    BilingualText m_messages;
    mutable String m_what;
};

} // namespace Quorvex
