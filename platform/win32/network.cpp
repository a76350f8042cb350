#include "platform/win32/network.h"

#include <algorithm>

#include "platform/win32/handles.h"

namespace sylvex {
namespace {

constexpr DWORD kPatience = 1500;  // milliseconds

using UniqueHandle = std::unique_ptr<void, HandleCloser<&CloseHandle>>;

// The share or drive that the path lies on; empty for a path of this machine.
std::wstring RemoteRootOf(const std::wstring& path)
{
    auto plain = path.substr(0, 512);
    std::replace(plain.begin(), plain.end(), L'/', L'\\');
    if (plain.starts_with(L"\\\\?\\UNC\\")) plain = L"\\" + plain.substr(7);
    if (plain.starts_with(L"\\\\?\\")) plain.erase(0, 4);
    if (plain.starts_with(L"\\\\") && plain.size() > 2 && plain[2] != L'.') {
        const auto server = plain.find(L'\\', 2);
        return plain.substr(0, server == plain.npos ? plain.npos : plain.find(L'\\', server + 1));
    }
    if (plain.size() < 2 || plain[1] != L':') return {};
    const auto root = plain.substr(0, 2) + L'\\';
    return GetDriveTypeW(root.c_str()) == DRIVE_REMOTE ? root : std::wstring();
}

// The thread may outlast the one that asks, and the last user of this module.
DWORD WINAPI Ask(LPVOID parameter)
{
    auto* const module = OwnModule();
    {
        const std::unique_ptr<std::wstring> root(static_cast<std::wstring*>(parameter));
        const QuietDisk quiet;
        GetFileAttributesW(root->c_str());
    }
    FreeLibraryAndExitThread(module, 0);
}

}  // namespace

bool Win32Network::Answers(const std::wstring& path)
{
    auto root = std::make_unique<std::wstring>(RemoteRootOf(path));
    if (root->empty()) return true;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&Ask), &module))
        return true;
    UniqueModule kept(module);
    const UniqueHandle thread(CreateThread(nullptr, 0, &Ask, root.get(), 0, nullptr));
    if (!thread) return true;
    static_cast<void>(root.release());
    static_cast<void>(kept.release());
    return WaitForSingleObject(thread.get(), kPatience) == WAIT_OBJECT_0;
}

}  // namespace sylvex
