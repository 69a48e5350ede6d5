#include "foundation/Exception.h"

#include "foundation/Numbers.h"

namespace Quorvex {

namespace {

String FailureText(TextView name, std::uint32_t code) {
    return String(name) + " failed, error code " + IntegerToString(std::uint64_t{code});
}

} // namespace

Exception::Exception(TextView name, std::uint32_t code) : m_message(FailureText(name, code)) {}

Exception::Exception(int line, TextView) : m_message(IntegerToString(std::int32_t{line}) + " ") {}

Exception::Exception(int line, TextView name, std::uint32_t code)
    : m_message(IntegerToString(std::int32_t{line}) + " " + FailureText(name, code)) {}

Exception::Exception(int line, TextView name, TextView text)
    : m_message(IntegerToString(std::int32_t{line}) + " " + name + " failed, " + text) {}

// The constructors do not raise for what they are told about, since the caller is failing already; only memory may run
// out.
Exception::Exception(const Exception& other)
    : std::exception(other), m_message(other.m_message), m_messages(other.m_messages), m_what(std::move(other.m_what)) {
}

// Built at each call: the language may have changed since the last one, and the former text is replaced only after the
// new one was made.
const char* Exception::what() const noexcept {
    try {
        m_what = (m_message.IsEmpty() ? InCurrentLanguage(m_messages) : m_message).ToANSI();
        return m_what.Narrow();
    } catch (const std::exception&) {
        // A text that cannot be shown in Windows-1252, or no memory for it: whoever catches this can still go on.
        return "";
    }
}

} // namespace Quorvex
