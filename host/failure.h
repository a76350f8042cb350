#pragma once

#include <exception>
#include <string>
#include <utility>

namespace sylvex::host {

/// Something that the user asked for and that could not be done.
class Failure : public std::exception {
public:
    /// `message` says what and why in one line, without a full stop.
    explicit Failure(std::wstring message) : m_message(std::move(message)) {}
    const char* what() const noexcept override { return "see Message()"; }
    const std::wstring& Message() const { return m_message; }

private:
    std::wstring m_message;
};

}  // namespace sylvex::host
