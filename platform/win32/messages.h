#pragma once

#include "platform/messages.h"

namespace sylvex {

/// The platform's own boxes.
class Win32MessageBoxes : public MessageBoxes {
public:
    int Show(WindowHandle owner, const std::wstring& text, const std::wstring& caption, unsigned style) override;
};

/// Reports to the automation object that is registered for it; whatever goes wrong with it stays here.
class Win32Reporter : public Reporter {
public:
    std::optional<std::wstring> Report(const ErrorReport& report) override;
};

}  // namespace sylvex
