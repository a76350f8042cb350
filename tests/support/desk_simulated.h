#pragma once

#include "tests/simulated/simulated_desktop.h"
#include "tests/support/desk.h"

namespace sylvex {

/// A simulated desktop furnished like a small machine: an empty floppy drive A:, a disk C: with My Documents, Windows
/// and Temp, a CD drive D:, types for txt and zip, and the words that the shell has for its roots.
class SimulatedDesk final : public Desk {
public:
    SimulatedDesk();
    Platform& Get() override { return desktop.Get(); }
    const std::wstring& Base() const override { return m_base; }
    WindowHandle NewWindow() override { return desktop.windows.NewWindow(); }
    WindowHandle NewList() override { return desktop.windows.NewList().Handle(); }
    std::wstring TakeMessages() override;

    SimulatedDesktop desktop;

private:
    void MakeFolderAt(const std::wstring& path) override { desktop.disk.AddFolder(path); }
    void MakeFileAt(const std::wstring& path, std::uint64_t size) override { desktop.disk.AddFile(path, size); }
    void RemoveAt(const std::wstring& path) override { desktop.disk.Remove(path); }
    std::wstring m_base = L"C:\\Scratch";
};

}  // namespace sylvex
