#pragma once

#include <initializer_list>
#include <memory>
#include <string>

#include "platform/platform.h"

namespace sylvex {

/// A desktop to run a scenario on, simulated or real, with a scratch folder that is empty at first and goes away with
/// the desk. Names are relative to that folder.
class Desk {
public:
    virtual ~Desk() = default;
    virtual Platform& Get() = 0;
    /// The scratch folder, without a separator at its end. It lies on a fixed drive.
    virtual const std::wstring& Base() const = 0;

    /// A window of the host to put a control in, and a list view of the host, visible and empty; both go with the desk.
    virtual WindowHandle NewWindow() = 0;
    virtual WindowHandle NewList() = 0;

    /// The texts of the message boxes since the last call, each in brackets. Boxes close by themselves, with OK.
    virtual std::wstring TakeMessages() = 0;

    /// Makes a folder, and those above it; gives its path.
    std::wstring MakeFolder(const std::wstring& name);
    /// Makes a file of `size` bytes, and the folders above it; gives its path.
    std::wstring MakeFile(const std::wstring& name, std::uint64_t size = 0);
    /// Makes one entry a name: a folder for one that ends in a separator, otherwise an empty file.
    void Make(std::initializer_list<std::wstring> names);
    /// Whether an entry of this name exists.
    bool Has(const std::wstring& name);
    /// Removes a file or a folder with all in it.
    void Remove(const std::wstring& name) { RemoveAt(PathOf(name)); }
    /// The path of a name, whether it exists or not.
    std::wstring PathOf(const std::wstring& name) const { return Base() + L"\\" + name; }

private:
    virtual void MakeFolderAt(const std::wstring& path) = 0;
    virtual void MakeFileAt(const std::wstring& path, std::uint64_t size) = 0;
    virtual void RemoveAt(const std::wstring& path) = 0;
};

/// The desk of the platform that this program was linked for.
std::unique_ptr<Desk> MakeDesk();

}  // namespace sylvex
