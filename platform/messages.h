#pragma once

#include <optional>
#include <string>

#include "platform/types.h"

namespace sylvex {

/// Style words and answers of the platform's message box.
constexpr unsigned kBoxOk = 0;
constexpr unsigned kBoxRetryCancel = 5;
constexpr unsigned kBoxCritical = 16;

/// The platform's modal message box.
class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    /// Shows the box and waits; gives the button pressed. An empty caption is the host program's name.
    virtual int Show(WindowHandle owner, const std::wstring& text, const std::wstring& caption, unsigned style) = 0;
};

/// What is told of one failing procedure.
struct ErrorReport {
    std::wstring component;
    std::wstring version;  ///< major.minor.revision
    std::wstring module;
    std::wstring procedure;
    long line = 0;
    long number = 0;
    std::wstring description;
    std::wstring variables;
};

/// The external object that takes error reports.
class Reporter {
public:
    virtual ~Reporter() = default;
    /// Hands over the report; nothing when no such object could be created, otherwise what it answers as its action.
    virtual std::optional<std::wstring> Report(const ErrorReport& report) = 0;
};

}  // namespace sylvex
