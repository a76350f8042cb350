#pragma once

#include "platform/platform.h"
#include "platform/win32/box_tools.h"
#include "platform/win32/drag.h"
#include "platform/win32/filesystem.h"
#include "platform/win32/images.h"
#include "platform/win32/messages.h"
#include "platform/win32/network.h"
#include "platform/win32/regional.h"
#include "platform/win32/shell.h"
#include "platform/win32/system.h"
#include "platform/win32/timers.h"
#include "platform/win32/windows.h"

namespace sylvex {

/// Owns the services of the real platform; must outlive every control that was given them.
class Win32Platform {
public:
    Win32Platform() : Win32Platform(nullptr) {}
    /// `boxes` takes the place of the platform's own message boxes and outlives this object; null: none does.
    explicit Win32Platform(MessageBoxes* boxes)
        : m_platform{m_files,    m_shell,    m_regional, m_system,
                     m_windows,  m_images,   m_timers,   boxes ? *boxes : m_boxes,
                     m_reporter, m_boxTools, m_network,  m_drag}
    {
    }
    Win32Platform(const Win32Platform&) = delete;
    Win32Platform& operator=(const Win32Platform&) = delete;

    Platform& Get() { return m_platform; }

private:
    Win32FileSystem m_files;
    Win32Shell m_shell;
    Win32Regional m_regional;
    Win32System m_system;
    Win32Windows m_windows;
    Win32Images m_images;
    Win32Timers m_timers;
    Win32MessageBoxes m_boxes;
    Win32Reporter m_reporter;
    Win32BoxTools m_boxTools;
    Win32Network m_network;
    Win32Drag m_drag;
    Platform m_platform;
};

}  // namespace sylvex
