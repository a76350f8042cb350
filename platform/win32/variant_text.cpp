#include "platform/win32/variant_text.h"

#include <ocidl.h>
#include <oleauto.h>

#include <array>

#include "com/late_call.h"
#include "com/type_info.h"
#include "com/variant.h"

namespace sylvex {
namespace {

constexpr int kDeepest = 6;
constexpr UINT kMostDimensions = 3;
constexpr ULONGLONG kLongestTime = 250;  // milliseconds

/// Keeps an array's elements where they are.
class ArrayLock {
public:
    explicit ArrayLock(SAFEARRAY* array) noexcept : m_array(array), m_result(SafeArrayLock(array)) {}
    ~ArrayLock()
    {
        if (SUCCEEDED(m_result)) SafeArrayUnlock(m_array);
    }
    ArrayLock(const ArrayLock&) = delete;
    ArrayLock& operator=(const ArrayLock&) = delete;
    HRESULT Result() const noexcept { return m_result; }

private:
    SAFEARRAY* m_array;
    HRESULT m_result;
};

constexpr bool IsNumbered(HRESULT result)
{
    return (static_cast<ULONG>(result) & 0xFFFF0000u) == 0x800A0000u;
}

/// The number by which hosts know a failure.
long NumberOf(HRESULT result)
{
    return IsNumbered(result) ? result & 0xFFFF : result;
}

std::wstring ClassOf(ITypeInfo& info)
{
    std::wstring name = NameOf(info);
    // A class's default interface carries the class's name behind an underscore.
    if (name.size() > 1 && name.front() == L'_') name.erase(0, 1);
    return name;
}

std::wstring ClassOf(const ComPtr<IUnknown>& object, const ComPtr<IDispatch>& dispatch)
{
    ComPtr<ITypeInfo> info;
    if (const auto provider = object.As<IProvideClassInfo>()) provider->GetClassInfo(info.Put());
    if (!info && dispatch) dispatch->GetTypeInfo(0, LOCALE_USER_DEFAULT, info.Put());
    return info ? ClassOf(*info) : std::wstring();
}

/// The types of the elements of arrays that do not tell it themselves.
VARTYPE TypeByFeatures(const SAFEARRAY& array, VARTYPE otherwise)
{
    if ((array.fFeatures & FADF_BSTR) != 0) return VT_BSTR;
    if ((array.fFeatures & FADF_UNKNOWN) != 0) return VT_UNKNOWN;
    if ((array.fFeatures & FADF_DISPATCH) != 0) return VT_DISPATCH;
    return (array.fFeatures & FADF_VARIANT) != 0 ? static_cast<VARTYPE>(VT_VARIANT) : otherwise;
}

class Renderer {
public:
    explicit Renderer(ValueText& report) : m_report(report), m_end(GetTickCount64() + kLongestTime) {}

    void Value(const VARIANT& value);
    void Object(IUnknown* object);

private:
    struct Bounds {
        LONG first;
        LONG last;
    };
    using AllBounds = std::array<Bounds, kMostDimensions>;

    void Reference(VARTYPE type, const VARIANT& value);
    void Stored(VARTYPE type, const void* place);
    bool StoredInteger(VARTYPE type, const void* place);
    void StoredDecimal(DECIMAL value);
    void Error(SCODE code);
    void Record(IRecordInfo* info);
    void Array(SAFEARRAY* array, VARTYPE declared);
    bool TakeBounds(SAFEARRAY* array, UINT dimensions, AllBounds& bounds);
    void Elements(SAFEARRAY* array, VARTYPE type, UINT dimensions, const AllBounds& bounds);
    void Members(IDispatch* collection);
    void Failed(HRESULT result) { m_report.Marker(FormattingError(NumberOf(result))); }
    /// Whether a further element, behind so many, is to be shown; says so when not.
    bool GoesOn(std::size_t shown);

    template <class Number>
    static const Number& As(const void* place)
    {
        return *static_cast<const Number*>(place);
    }

    ValueText& m_report;
    const ULONGLONG m_end;
    int m_depth = 0;
};

bool Renderer::GoesOn(std::size_t shown)
{
    const bool goesOn = shown < ValueText::kMostElements && !m_report.IsFull() && GetTickCount64() < m_end;
    if (!goesOn) m_report.Marker(TruncatedAt(shown, L"elements"));
    return goesOn;
}

void Renderer::Value(const VARIANT& value)
{
    if (m_depth == kDeepest) return m_report.Marker(TruncatedAt(kDeepest, L"levels"));
    ++m_depth;
    const VARTYPE type = V_VT(&value) & VT_TYPEMASK;
    if ((V_VT(&value) & VT_BYREF) != 0) {
        Reference(V_VT(&value) & ~VT_BYREF, value);
    } else if ((V_VT(&value) & VT_ARRAY) != 0) {
        Array(V_ARRAY(&value), type);
    } else if (type == VT_RECORD) {
        Record(V_RECORDINFO(&value));
    } else {
        // A decimal takes the place of the whole value.
        Stored(type, type == VT_DECIMAL ? static_cast<const void*>(&value) : &V_UI1(&value));
    }
    --m_depth;
}

void Renderer::Reference(VARTYPE type, const VARIANT& value)
{
    const void* const place = V_BYREF(&value);
    constexpr HRESULT kNotSet = static_cast<HRESULT>(0x800A005B);
    if (!place) return Failed(kNotSet);
    if ((type & VT_ARRAY) != 0) return Array(As<SAFEARRAY*>(place), type & VT_TYPEMASK);
    type == VT_RECORD ? Record(V_RECORDINFO(&value)) : Stored(type, place);
}

/// Numbers without a fraction.
bool Renderer::StoredInteger(VARTYPE type, const void* place)
{
    switch (type) {
        case VT_I1:
            m_report.Number(static_cast<int>(As<signed char>(place)));
            return true;
        case VT_UI1:
            m_report.Number(static_cast<int>(As<BYTE>(place)));
            return true;
        case VT_I2:
            m_report.Number(As<SHORT>(place));
            return true;
        case VT_UI2:
            m_report.Number(As<USHORT>(place));
            return true;
        case VT_INT:
        case VT_I4:
            m_report.Number(As<LONG>(place));
            return true;
        case VT_UINT:
        case VT_UI4:
            m_report.Number(As<ULONG>(place));
            return true;
        case VT_I8:
            m_report.Number(As<LONGLONG>(place));
            return true;
        case VT_UI8:
            m_report.Number(As<ULONGLONG>(place));
            return true;
        default:
            return false;
    }
}

void Renderer::Stored(VARTYPE type, const void* place)
{
    if (StoredInteger(type, place)) return;
    switch (type) {
        case VT_EMPTY:
            return m_report.Marker(L"{Empty}");
        case VT_NULL:
            return m_report.Marker(L"{Null}");
        case VT_R4:
            return m_report.Number(As<float>(place));
        case VT_R8:
            return m_report.Number(As<double>(place));
        case VT_CY:
            return m_report.Amount(Currency{As<CY>(place).int64});
        case VT_DATE:
            return m_report.Moment(Date{As<DATE>(place)});
        case VT_BSTR:
            return m_report.Text(ViewOf(As<BSTR>(place)));
        case VT_BOOL:
            return m_report.Boolean(As<VARIANT_BOOL>(place) != VARIANT_FALSE);
        case VT_DECIMAL:
            return StoredDecimal(As<DECIMAL>(place));
        case VT_HRESULT:
        case VT_ERROR:
            return Error(As<SCODE>(place));
        case VT_VARIANT:
            return Value(As<VARIANT>(place));
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return Object(As<IUnknown*>(place));
        default:
            return m_report.Marker(L"{Type " + std::to_wstring(type) + L"}");
    }
}

void Renderer::StoredDecimal(DECIMAL value)
{
    Bstr text;
    const HRESULT result = VarBstrFromDec(&value, LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, text.Put());
    FAILED(result) ? Failed(result) : m_report.Text(text.View());
}

void Renderer::Error(SCODE code)
{
    if (code == DISP_E_PARAMNOTFOUND) return m_report.Marker(L"{Missing}");
    m_report.Marker(L"Error ");
    m_report.Number(NumberOf(code));
}

void Renderer::Record(IRecordInfo* info)
{
    Bstr name;
    if (info) info->GetName(name.Put());
    m_report.Marker(L"UDT -", name.View());
}

void Renderer::Array(SAFEARRAY* array, VARTYPE declared)
{
    const UINT dimensions = array ? SafeArrayGetDim(array) : 0;
    if (dimensions == 0) return m_report.Marker(L"{UnInitialised Array}");
    if (dimensions > kMostDimensions) return m_report.Marker(TruncatedAt(kMostDimensions, L"dimensions"));
    VARTYPE type = VT_EMPTY;
    if (FAILED(SafeArrayGetVartype(array, &type))) type = TypeByFeatures(*array, declared);
    if (type == VT_RECORD || (array->fFeatures & FADF_RECORD) != 0) return m_report.Marker(L"{Cannot dump UDT arrays}");
    AllBounds bounds{};
    if (!TakeBounds(array, dimensions, bounds)) return;
    const ArrayLock lock(array);
    if (FAILED(lock.Result())) return Failed(lock.Result());
    if (type == VT_UI1 && dimensions == 1) {
        const auto count = static_cast<std::size_t>(bounds[0].last) - static_cast<std::size_t>(bounds[0].first) + 1;
        return m_report.Bytes(static_cast<const BYTE*>(array->pvData), count);
    }
    Elements(array, type, dimensions, bounds);
}

/// False when a dimension has no elements, which is told.
bool Renderer::TakeBounds(SAFEARRAY* array, UINT dimensions, AllBounds& bounds)
{
    for (UINT i = 0; i < dimensions; ++i) {
        HRESULT result = SafeArrayGetLBound(array, i + 1, &bounds[i].first);
        if (SUCCEEDED(result)) result = SafeArrayGetUBound(array, i + 1, &bounds[i].last);
        if (FAILED(result)) return Failed(result), false;
        if (bounds[i].last >= bounds[i].first) continue;
        m_report.Marker(i == 0 ? L"{UnInitialised Array}"
                               : L"{UnInitialised Array Dimension " + std::to_wstring(i + 1) + L"}");
        return false;
    }
    return true;
}

void Renderer::Elements(SAFEARRAY* array, VARTYPE type, UINT dimensions, const AllBounds& bounds)
{
    std::array<LONG, kMostDimensions> at{bounds[0].first, bounds[1].first, bounds[2].first};
    for (std::size_t shown = 0; GoesOn(shown); ++shown) {
        std::wstring indices = std::to_wstring(at[0]);
        for (UINT i = 1; i < dimensions; ++i)
            indices += L"," + std::to_wstring(at[i]);
        m_report.BeginElement(indices);
        void* place = nullptr;
        const HRESULT result = SafeArrayPtrOfIndex(array, at.data(), &place);
        FAILED(result) ? Failed(result) : Stored(type, place);
        m_report.EndElement();
        // The last index runs fastest.
        UINT i = dimensions;
        while (i > 0 && at[i - 1] == bounds[i - 1].last) {
            at[i - 1] = bounds[i - 1].first;
            --i;
        }
        if (i == 0) return;
        ++at[i - 1];
    }
}

void Renderer::Object(IUnknown* object)
{
    if (!object) return m_report.Marker(L"{Nothing}");
    const ComPtr<IUnknown> held(object);
    const auto dispatch = held.As<IDispatch>();
    const std::wstring name = ClassOf(held, dispatch);
    if (!name.empty()) {
        m_report.Marker(L"{");
        m_report.Text(name);
        m_report.Marker(L"}");
    } else {
        m_report.Marker(dispatch ? L"{Object}" : L"{DataObject}");
    }
    if (dispatch) Members(dispatch.Get());
}

/// What is in an object that has an enumerator; the others show nothing more.
void Renderer::Members(IDispatch* collection)
{
    Variant made;
    const HRESULT result =
        CallMember(*collection, DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {}, made.Put());
    if (result == DISP_E_MEMBERNOTFOUND || result == E_NOTIMPL) return;
    if (FAILED(result)) return Failed(result);
    const auto enumerator = made.As<IEnumVARIANT>();
    if (!enumerator) return;
    for (std::size_t shown = 0;; ++shown) {
        Variant element;
        ULONG fetched = 0;
        const HRESULT next = enumerator->Next(1, element.Put(), &fetched);
        if (FAILED(next)) return Failed(next);
        if (next != S_OK || fetched == 0 || !GoesOn(shown)) return;
        m_report.BeginElement(std::to_wstring(shown + 1));
        Value(element.Get());
        m_report.EndElement();
    }
}

}  // namespace

void RenderVariant(const VARIANT& value, ValueText& report)
{
    Renderer(report).Value(value);
}

void RenderObject(IUnknown* object, ValueText& report)
{
    Renderer(report).Object(object);
}

}  // namespace sylvex
