#include <windows.h>

#include <ole2.h>

#include <iterator>
#include <utility>

#include "tests/component/automation.h"

namespace sylvex::test {
namespace {

constexpr CLSID kReporter = {0x3d5f2a61, 0x8c1e, 0x4b7a, {0x9e, 0x02, 0x61, 0x5d, 0xa4, 0x0b, 0x7c, 0x38}};
constexpr wchar_t kProgram[] = L"Quenmark.Error";
constexpr DISPID kErrorHandler = 1;

}  // namespace

/// The class of reporting objects, and its only object.
class ReportLog::Factory final : public IClassFactory, public IDispatch {
public:
    std::wstring lines;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        *found = nullptr;
        if (id == IID_IUnknown || id == IID_IClassFactory) *found = static_cast<IClassFactory*>(this);
        if (id == IID_IDispatch) *found = static_cast<IDispatch*>(this);
        return *found ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override { return QueryInterface(id, object); }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* members) override
    {
        *members = lstrcmpiW(names[0], L"ErrorHandler") == 0 ? kErrorHandler : kErrorHandler + 1;
        return S_OK;
    }
    // Component, version, module, procedure, line, number, description, variables; the last argument comes first.
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override
    {
        if (member != kErrorHandler) {
            if (result) V_VT(result) = VT_BSTR, V_BSTR(result) = SysAllocString(L"Continue");
            return S_OK;
        }
        const auto text = [&](UINT index) { return Value(arguments->rgvarg[index]).Text(); };
        lines += (lines.empty() ? L"" : L"; ") + text(5) + L"." + text(4) + L" " + text(2);
        return S_OK;
    }
};

ReportLog::ReportLog() : m_factory(new Factory)
{
    wchar_t id[64];
    StringFromGUID2(kReporter, id, static_cast<int>(std::size(id)));
    const std::wstring key = std::wstring(kProgram) + L"\\CLSID";
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, REG_SZ, id,
                    static_cast<DWORD>((std::wstring(id).size() + 1) * sizeof(wchar_t)));
    CoRegisterClassObject(kReporter, static_cast<IClassFactory*>(m_factory), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE,
                          &m_registration);
}

ReportLog::~ReportLog()
{
    CoRevokeClassObject(m_registration);
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kProgram);
    delete m_factory;
}

std::wstring ReportLog::Take()
{
    return std::exchange(m_factory->lines, std::wstring());
}

}  // namespace sylvex::test
