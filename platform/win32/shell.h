#pragma once

#include "platform/shell.h"

namespace sylvex {

/// The machine's shell. Its calls want a thread on which COM has been initialised.
class Win32Shell : public Shell {
public:
    std::wstring DisplayName(const std::wstring& path) override;
    OwnedIcon FileIcon(const std::wstring& path) override;
    OwnedIcon IconInFile(const std::wstring& file, int index) override;
    void DestroyIcon(IconHandle icon) noexcept override;
    int SystemIconIndex(const std::wstring& path) override;
    int SystemIconIndexOfType(const std::wstring& name, std::uint32_t attributes) override;
    ImageListHandle SystemImageList(bool small) override;
    std::wstring SpecialFolder(int number) override;
    std::wstring ResourceString(const std::wstring& module, unsigned id) override;
    FileOperationResult Operate(unsigned function, unsigned flags, const std::wstring& from,
                                const std::wstring& to) override;
    int MoveLink(const std::wstring& from, const std::wstring& to) override;
};

}  // namespace sylvex
