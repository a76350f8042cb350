#include "host/side_by_side.h"

namespace sylvex::host {
namespace {

std::wstring ProgramFolder()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace

SideBySide::SideBySide()
{
    const std::wstring folder = ProgramFolder();
    const std::wstring manifest = folder + L"SylvexControl.manifest";
    if (GetFileAttributesW(manifest.c_str()) == INVALID_FILE_ATTRIBUTES) return;
    ACTCTXW description{};
    description.cbSize = sizeof description;
    description.lpSource = manifest.c_str();
    description.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
    description.lpAssemblyDirectory = folder.c_str();
    m_context = CreateActCtxW(&description);
    if (m_context != INVALID_HANDLE_VALUE) ActivateActCtx(m_context, &m_cookie);
}

SideBySide::~SideBySide()
{
    if (m_context == INVALID_HANDLE_VALUE) return;
    if (m_cookie != 0) DeactivateActCtx(0, m_cookie);
    ReleaseActCtx(m_context);
}

}  // namespace sylvex::host
