#include "component/border/border.h"

#include <exception>
#include <new>

#include "platform/runtime_error.h"

namespace sylvex {

namespace {

constexpr std::wstring_view kSource = L"Sylvex";

// Numbered errors travel as FACILITY_CONTROL codes, which automation hosts show as their number.
constexpr HRESULT CodeOf(long number)
{
    return static_cast<HRESULT>(0x800A0000u + (static_cast<unsigned long>(number) & 0xFFFFu));
}

std::wstring Widened(const char* text)
{
    const int length = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (length <= 1) return {};
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), length);
    wide.pop_back();
    return wide;
}

HRESULT SetError(const IID& interfaceId, std::wstring_view description, std::wstring_view source)
{
    ComPtr<ICreateErrorInfo> creator;
    const HRESULT created = CreateErrorInfo(creator.Put());
    if (FAILED(created)) return created;
    creator->SetGUID(interfaceId);
    creator->SetDescription(Bstr(description).Get());
    creator->SetSource(Bstr(source.empty() ? kSource : source).Get());
    const ComPtr<IErrorInfo> error = creator.As<IErrorInfo>();
    return SetErrorInfo(0, error.Get());
}

}  // namespace

HINSTANCE ModuleInstance()
{
    static constexpr wchar_t anchor = L'\0';
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, &anchor,
                       &module);
    return module;
}

std::wstring ModulePath()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(ModuleInstance(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) throw ComError{HRESULT_FROM_WIN32(GetLastError())};
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

HRESULT Fail(const IID& interfaceId, HRESULT result, std::wstring_view description, std::wstring_view source) noexcept
{
    try {
        // Without information of our own the caller would read that of some earlier failure.
        if (FAILED(SetError(interfaceId, description, source))) SetErrorInfo(0, nullptr);
    } catch (...) {
        SetErrorInfo(0, nullptr);
    }
    return result;
}

HRESULT NotImplemented(const IID& interfaceId) noexcept
{
    return Fail(interfaceId, E_NOTIMPL, L"Not implemented");
}

HRESULT FailWithCurrentException(const IID& interfaceId) noexcept
{
    try {
        throw;
    } catch (const RuntimeError& error) {
        return Fail(interfaceId, CodeOf(error.number), error.description, error.source);
    } catch (const ComError& error) {
        SetErrorInfo(0, nullptr);
        return error.result;
    } catch (const std::bad_alloc&) {
        return Fail(interfaceId, E_OUTOFMEMORY, L"Out of memory");
    } catch (const std::exception& error) {
        try {
            return Fail(interfaceId, E_FAIL, Widened(error.what()));
        } catch (...) {
            return E_FAIL;
        }
    } catch (...) {
        return Fail(interfaceId, E_FAIL, L"Unexpected error");
    }
}

void ThrowTypeMismatch()
{
    throw TypeMismatch();
}

ComPtr<IUnknown> IncomingObject(const VARIANT& argument)
{
    if (IsMissing(argument)) return nullptr;
    const Variant value(argument);
    if (value.IsObject()) return ComPtr<IUnknown>(V_UNKNOWN(&value.Get()));
    if (value.Type() != VT_EMPTY && value.Type() != VT_NULL) ThrowTypeMismatch();
    return nullptr;
}

}  // namespace sylvex
