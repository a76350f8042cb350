#include "component/com/com.h"

#include <atomic>
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

std::atomic<long> lockCount{0};

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

Bstr::Bstr(std::wstring_view text) : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
{
    if (!m_text) throw std::bad_alloc();
}

BSTR* Bstr::Put()
{
    SysFreeString(Detach());
    return &m_text;
}

std::wstring_view Bstr::View() const
{
    return ViewOf(m_text);
}

std::wstring_view ViewOf(BSTR text)
{
    return {text ? text : L"", SysStringLen(text)};
}

Variant::Variant(bool value) : Variant()
{
    V_VT(&m_value) = VT_BOOL;
    V_BOOL(&m_value) = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(long value) : Variant()
{
    V_VT(&m_value) = VT_I4;
    V_I4(&m_value) = value;
}

Variant::Variant(std::wstring_view text) : Variant()
{
    V_BSTR(&m_value) = Bstr(text).Detach();
    V_VT(&m_value) = VT_BSTR;
}

Variant::Variant(IDispatch* object) : Variant()
{
    V_VT(&m_value) = VT_DISPATCH;
    V_DISPATCH(&m_value) = object;
    if (object) object->AddRef();
}

Variant::Variant(const VARIANT& source) : Variant()
{
    // Some SDK headers leave out the const of the source, which is only read.
    const HRESULT copied = Guarded([&] { return VariantCopyInd(&m_value, const_cast<VARIANT*>(&source)); });
    if (FAILED(copied)) throw ComError{copied};
}

VARIANT* Variant::Put()
{
    VariantClear(&m_value);
    // Whoever sets the type first must find no old value below it.
    m_value = {};
    return &m_value;
}

VARIANT Variant::Detach()
{
    return std::exchange(m_value, VARIANT{});
}

bool IsMissing(const VARIANT& argument)
{
    return V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND;
}

void ModuleLock::Add()
{
    ++lockCount;
}
void ModuleLock::Release()
{
    --lockCount;
}
long ModuleLock::Count()
{
    return lockCount;
}

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
    switch (value.Type()) {
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return ComPtr<IUnknown>(V_UNKNOWN(&value.Get()));
        case VT_EMPTY:
        case VT_NULL:
            return nullptr;
        default:
            ThrowTypeMismatch();
    }
}

}  // namespace sylvex
