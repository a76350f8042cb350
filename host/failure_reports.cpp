#include "host/failure_reports.h"

#include <iterator>
#include <utility>

#include "com/dispatch.h"
#include "com/object.h"
#include "com/variant.h"

namespace sylvex::host {
namespace {

constexpr CLSID kClass = {0x2f9d7c60, 0x1b8e, 0x4c33, {0x8a, 0x5d, 0x77, 0x0e, 0xc4, 0x93, 0x61, 0xb2}};
constexpr wchar_t kName[] = L"Quenmark.Error";
constexpr wchar_t kUserClasses[] = L"Software\\Classes\\";
constexpr long kPassedOn = 65535;
constexpr const wchar_t* kMembers[] = {L"ErrorHandler", L"Action"};
enum Member : DISPID { kErrorHandler = 1, kAction };
/// Arguments from the last one, which automation hands over first.
enum Argument : UINT { kDescription = 1, kNumber = 2, kLine = 3, kProcedure = 4, kModule = 5, kArguments = 8 };

std::wstring KeyBelow(HKEY root)
{
    return (root == HKEY_CURRENT_USER ? kUserClasses : L"") + std::wstring(kName);
}

std::wstring TextOf(const VARIANT& value)
{
    Variant text;
    text.SetTo(value, VT_BSTR);
    return std::wstring(text.Text());
}

std::wstring LineOf(const VARIANT* values)
{
    const std::wstring where =
        TextOf(values[kModule]) + L"." + TextOf(values[kProcedure]) + L", line " + TextOf(values[kLine]);
    const std::wstring number = TextOf(values[kNumber]);
    // Its caller has nothing to add but where it was.
    if (number == std::to_wstring(kPassedOn)) return L"   called by " + where;
    return where + L": error " + number + L", " + TextOf(values[kDescription]);
}

}  // namespace

/// The class of reporters, and its only object.
class FailureReports::Reporter final : public CountedObject<IClassFactory, PlainDispatch> {
public:
    explicit Reporter(Listener listener) : m_listener(std::move(listener)) {}

    STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override
    {
        return outer ? CLASS_E_NOAGGREGATION : QueryInterface(id, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* members) override
    {
        return FindName(kMembers, names, count, members);
    }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result, EXCEPINFO*,
                        UINT*) override
    {
        if (member == kErrorHandler && arguments && arguments->cArgs == kArguments) {
            m_listener(LineOf(arguments->rgvarg));
            return S_OK;
        }
        if (member != kAction || !result) return DISP_E_MEMBERNOTFOUND;
        V_VT(result) = VT_BSTR;
        V_BSTR(result) = SysAllocString(L"Continue");
        return S_OK;
    }

private:
    Listener m_listener;
};

FailureReports::FailureReports(Listener listener) : m_reporter(Make<Reporter>(std::move(listener)))
{
    CLSID present;
    // A name that was left behind by a host that crashed leads to this class.
    if (SUCCEEDED(CLSIDFromProgID(kName, &present)) && present != kClass) return;
    RegisterName();
    if (IsOurs())
        CoRegisterClassObject(kClass, static_cast<IClassFactory*>(m_reporter.Get()), CLSCTX_INPROC_SERVER,
                              REGCLS_MULTIPLEUSE, &m_class);
}

FailureReports::~FailureReports()
{
    if (m_class != 0) CoRevokeClassObject(m_class);
    // Somebody else may have registered a reporter meanwhile.
    if (m_root && IsOurs()) RegDeleteTreeW(m_root, KeyBelow(m_root).c_str());
}

bool FailureReports::IsOurs()
{
    CLSID present;
    return SUCCEEDED(CLSIDFromProgID(kName, &present)) && present == kClass;
}

void FailureReports::RegisterName()
{
    wchar_t id[39];
    StringFromGUID2(kClass, id, static_cast<int>(std::size(id)));
    // For the user where that counts, otherwise for the machine, which not everybody may.
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_CLASSES_ROOT}) {
        const std::wstring key = KeyBelow(root) + L"\\CLSID";
        if (RegSetKeyValueW(root, key.c_str(), nullptr, REG_SZ, id, sizeof id) != ERROR_SUCCESS) continue;
        m_root = root;
        if (IsOurs()) return;
        RegDeleteTreeW(root, KeyBelow(root).c_str());
        m_root = nullptr;
    }
}

}  // namespace sylvex::host
