#include <windows.h>

#include <ole2.h>

#include <olectl.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

#include "com/pointer.h"
#include "platform/win32/variant_text.h"
#include "tests/component/automation.h"

namespace sylvex::test {
namespace {

std::wstring Rendered(const VARIANT& value)
{
    ValueText report;
    RenderVariant(value, report);
    return report.Get();
}

/// A value of this type; `write` fills it.
template <class Write>
Value Made(VARTYPE type, Write&& write)
{
    Value value;
    write(value.Raw());
    V_VT(&value.Raw()) = type;
    return value;
}

/// A reference to a place of this type.
VARIANT ReferenceTo(VARTYPE type, void* place)
{
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = static_cast<VARTYPE>(type | VT_BYREF);
    V_BYREF(&value) = place;
    return value;
}

TEST(VariantText, SingleValues)
{
    EXPECT_EQ(Rendered(Value().Raw()), L"{Empty}");
    EXPECT_EQ(Rendered(Made(VT_NULL, [](VARIANT&) {}).Raw()), L"{Null}");
    EXPECT_EQ(Rendered(Made(VT_I1, [](VARIANT& v) { V_I1(&v) = -5; }).Raw()), L"-5");
    EXPECT_EQ(Rendered(Made(VT_UI1, [](VARIANT& v) { V_UI1(&v) = 250; }).Raw()), L"250");
    EXPECT_EQ(Rendered(Made(VT_I8, [](VARIANT& v) { V_I8(&v) = std::numeric_limits<LONGLONG>::min(); }).Raw()),
              L"-9223372036854775808");
    EXPECT_EQ(Rendered(Made(VT_R4, [](VARIANT& v) { V_R4(&v) = 0.1f; }).Raw()), L"0.1");
    EXPECT_EQ(Rendered(Made(VT_CY, [](VARIANT& v) { V_CY(&v).int64 = 12345; }).Raw()), L"1.2345");
    EXPECT_EQ(Rendered(Made(VT_DATE, [](VARIANT& v) { V_DATE(&v) = 46342.5; }).Raw()), L"2026-11-16 12:00:00");
    EXPECT_EQ(Rendered(Value(true).Raw()), L"True");
    EXPECT_EQ(Rendered(Value(L"<a>{Null}\r").Raw()), L"&lt;a&gt;&#123;Null&#125;{U+000D}");
    EXPECT_EQ(Rendered(Made(VT_BSTR, [](VARIANT& v) { V_BSTR(&v) = nullptr; }).Raw()), L"");
    EXPECT_EQ(Rendered(Value(static_cast<IDispatch*>(nullptr)).Raw()), L"{Nothing}");
    const auto error = [](SCODE code) {
        return Rendered(Made(VT_ERROR, [&](VARIANT& v) { V_ERROR(&v) = code; }).Raw());
    };
    EXPECT_EQ(error(DISP_E_PARAMNOTFOUND), L"{Missing}");
    EXPECT_EQ(error(static_cast<SCODE>(0x800A000D)), L"Error 13");
    EXPECT_EQ(error(E_FAIL), L"Error -2147467259");
    VARIANT decimal{};
    VarDecFromR8(-2.5, &V_DECIMAL(&decimal));
    V_VT(&decimal) = VT_DECIMAL;
    EXPECT_EQ(Rendered(decimal), L"-2.5");
    VARIANT unknown{};
    V_VT(&unknown) = 77;
    EXPECT_EQ(Rendered(unknown), L"{Type 77}");
}

TEST(VariantText, References)
{
    LONG number = 7;
    EXPECT_EQ(Rendered(ReferenceTo(VT_I4, &number)), L"7");
    VARIANT first = ReferenceTo(VT_I4, &number);
    EXPECT_EQ(Rendered(ReferenceTo(VT_VARIANT, &first)), L"7");
    EXPECT_EQ(Rendered(ReferenceTo(VT_BSTR, nullptr)), L"{Error 91 formatting for output}");
    // One that refers to itself.
    VARIANT self = ReferenceTo(VT_VARIANT, nullptr);
    V_BYREF(&self) = &self;
    EXPECT_EQ(Rendered(self), L"{Dump truncated at 6 levels}");
}

/// An array that is freed with its owner; the elements are filled by number in the order of the last index first.
class Array {
public:
    Array(VARTYPE type, std::initializer_list<SAFEARRAYBOUND> bounds) : m_type(type)
    {
        std::vector<SAFEARRAYBOUND> all(bounds);
        m_array = SafeArrayCreate(type, static_cast<UINT>(all.size()), all.data());
    }
    ~Array() { SafeArrayDestroy(m_array); }
    Array(const Array&) = delete;
    Array& operator=(const Array&) = delete;
    void Put(std::vector<LONG> at, LONG value) { SafeArrayPutElement(m_array, at.data(), &value); }
    std::wstring Text() const
    {
        VARIANT value{};
        V_VT(&value) = static_cast<VARTYPE>(VT_ARRAY | m_type);
        V_ARRAY(&value) = m_array;
        const ULONG locks = m_array->cLocks;
        const std::wstring text = Rendered(value);
        EXPECT_EQ(m_array->cLocks, locks);
        SAFEARRAY* place = m_array;
        EXPECT_EQ(Rendered(ReferenceTo(static_cast<VARTYPE>(VT_ARRAY | m_type), &place)), text);
        return text;
    }
    SAFEARRAY* Get() const { return m_array; }

private:
    VARTYPE m_type;
    SAFEARRAY* m_array;
};

TEST(VariantText, Arrays)
{
    Array row(VT_I4, {{2, -1}});
    row.Put({-1}, 5);
    row.Put({0}, 6);
    EXPECT_EQ(row.Text(), L"<Element Index=\"-1\">5</Element><Element Index=\"0\">6</Element>");
    Array table(VT_I4, {{2, 1}, {2, 5}});
    table.Put({1, 6}, 16);
    table.Put({2, 5}, 25);
    EXPECT_EQ(table.Text(),
              L"<Element Index=\"1,5\">0</Element><Element Index=\"1,6\">16</Element>"
              L"<Element Index=\"2,5\">25</Element><Element Index=\"2,6\">0</Element>");
    Array cube(VT_I4, {{1, 0}, {2, 0}, {2, 3}});
    cube.Put({0, 1, 3}, 9);
    EXPECT_EQ(cube.Text(),
              L"<Element Index=\"0,0,3\">0</Element><Element Index=\"0,0,4\">0</Element>"
              L"<Element Index=\"0,1,3\">9</Element><Element Index=\"0,1,4\">0</Element>");
    EXPECT_EQ(Array(VT_I4, {{1, 0}, {1, 0}, {1, 0}, {1, 0}}).Text(), L"{Dump truncated at 3 dimensions}");
    EXPECT_EQ(Array(VT_I4, {{0, 0}}).Text(), L"{UnInitialised Array}");
    EXPECT_EQ(Array(VT_I4, {{1, 0}, {0, 0}}).Text(), L"{UnInitialised Array Dimension 2}");
    EXPECT_EQ(Array(VT_I4, {{1, 0}, {1, 0}, {0, 0}}).Text(), L"{UnInitialised Array Dimension 3}");
    VARIANT none{};
    V_VT(&none) = VT_ARRAY | VT_BSTR;
    EXPECT_EQ(Rendered(none), L"{UnInitialised Array}");
    Array bytes(VT_UI1, {{3, 0}});
    bytes.Put({0}, 0x4D);
    bytes.Put({2}, 0xFF);
    EXPECT_EQ(bytes.Text(), L"4D 00 FF");
    EXPECT_TRUE(Array(VT_UI1, {{100000, 0}}).Text().ends_with(L"00 00{Dump truncated at 256 bytes}"));
    EXPECT_TRUE(Array(VT_I4, {{100000, 0}})
                    .Text()
                    .ends_with(L"<Element Index=\"199\">0</Element>{Dump truncated at 200 "
                               L"elements}"));
}

/// A record's type, by its name only.
class RecordType final : public IRecordInfo {
public:
    STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetName(BSTR* name) override { return *name = SysAllocString(L"Shape<2>"), S_OK; }
    STDMETHODIMP RecordInit(PVOID) override { return E_NOTIMPL; }
    STDMETHODIMP RecordClear(PVOID) override { return E_NOTIMPL; }
    STDMETHODIMP RecordCopy(PVOID, PVOID) override { return E_NOTIMPL; }
    STDMETHODIMP GetGuid(GUID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetSize(ULONG*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetField(PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetFieldNoCopy(PVOID, LPCOLESTR, VARIANT*, PVOID*) override { return E_NOTIMPL; }
    STDMETHODIMP PutField(ULONG, PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP PutFieldNoCopy(ULONG, PVOID, LPCOLESTR, VARIANT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetFieldNames(ULONG*, BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP_(BOOL) IsMatchingType(IRecordInfo*) override { return FALSE; }
    STDMETHODIMP_(PVOID) RecordCreate() override { return nullptr; }
    STDMETHODIMP RecordCreateCopy(PVOID, PVOID*) override { return E_NOTIMPL; }
    STDMETHODIMP RecordDestroy(PVOID) override { return E_NOTIMPL; }
};

TEST(VariantText, Records)
{
    RecordType type;
    VARIANT record{};
    V_VT(&record) = VT_RECORD;
    V_RECORDINFO(&record) = &type;
    EXPECT_EQ(Rendered(record), L"{UDT - Shape&lt;2&gt;}");
}

/// A collection of a script that gives what it is told to, for ever if there is no end.
class Collection final : public IDispatch, public IEnumVARIANT {
public:
    std::function<HRESULT(int place, VARIANT& element)> element;
    HRESULT enumerates = S_OK;
    int references = 1;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        *found = nullptr;
        if (id == IID_IUnknown || id == IID_IDispatch) *found = static_cast<IDispatch*>(this);
        if (id == IID_IEnumVARIANT) *found = static_cast<IEnumVARIANT*>(this);
        if (*found) ++references;
        return *found ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override
    {
        if (member != DISPID_NEWENUM || enumerates != S_OK)
            return enumerates != S_OK ? enumerates : DISP_E_MEMBERNOTFOUND;
        m_place = 0;
        V_VT(result) = VT_UNKNOWN;
        V_UNKNOWN(result) = static_cast<IEnumVARIANT*>(this);
        ++references;
        return S_OK;
    }
    STDMETHODIMP Next(ULONG, VARIANT* value, ULONG* fetched) override
    {
        const HRESULT result = element(m_place++, *value);
        *fetched = result == S_OK ? 1 : 0;
        return result;
    }
    STDMETHODIMP Skip(ULONG) override { return E_NOTIMPL; }
    STDMETHODIMP Reset() override { return E_NOTIMPL; }
    STDMETHODIMP Clone(IEnumVARIANT**) override { return E_NOTIMPL; }
    std::wstring Text()
    {
        VARIANT value{};
        V_VT(&value) = VT_DISPATCH;
        V_DISPATCH(&value) = this;
        const std::wstring text = Rendered(value);
        EXPECT_EQ(references, 1);
        return text;
    }

private:
    int m_place = 0;
};

TEST(VariantText, ObjectsAndCollections)
{
    ComPtr<IUnknown> font;
    FONTDESC description{sizeof(FONTDESC), const_cast<LPOLESTR>(L"Arial"), {}, FW_NORMAL, 0, FALSE, FALSE, FALSE};
    description.cySize.int64 = 80000;
    OleCreateFontIndirect(&description, IID_IFontDisp, font.PutAny());
    ValueText shown;
    RenderObject(font.Get(), shown);
    EXPECT_EQ(shown.Get(), L"{Font}");

    Collection collection;
    collection.element = [](int place, VARIANT& value) {
        V_VT(&value) = VT_I4, V_I4(&value) = place * 10;
        return place < 2 ? S_OK : S_FALSE;
    };
    EXPECT_EQ(collection.Text(), L"{Object}<Element Index=\"1\">0</Element><Element Index=\"2\">10</Element>");
    collection.enumerates = DISP_E_MEMBERNOTFOUND;
    EXPECT_EQ(collection.Text(), L"{Object}");
    collection.enumerates = static_cast<HRESULT>(0x800A01B6);
    EXPECT_EQ(collection.Text(), L"{Object}{Error 438 formatting for output}");
    collection.enumerates = S_OK;
    collection.element = [](int, VARIANT&) { return E_OUTOFMEMORY; };
    EXPECT_EQ(collection.Text(), L"{Object}{Error -2147024882 formatting for output}");
}

TEST(VariantText, CollectionsWithoutAnEndAreCut)
{
    Collection endless;
    endless.element = [](int, VARIANT& value) { return V_VT(&value) = VT_NULL, S_OK; };
    EXPECT_TRUE(endless.Text().ends_with(L"<Element Index=\"200\">{Null}</Element>{Dump truncated at 200 elements}"));

    Collection slow;
    slow.element = [](int, VARIANT& value) { return Sleep(20), V_VT(&value) = VT_NULL, S_OK; };
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(slow.Text().ends_with(L" elements}"));
    EXPECT_LT(GetTickCount64() - start, 2000u);

    Collection cycle;  // holds itself, twice at each level
    cycle.element = [&](int place, VARIANT& value) {
        V_VT(&value) = VT_DISPATCH, V_DISPATCH(&value) = &cycle, ++cycle.references;
        return place < 2 ? S_OK : (--cycle.references, V_VT(&value) = VT_EMPTY, S_FALSE);
    };
    const std::wstring text = cycle.Text();
    EXPECT_NE(text.find(L"{Dump truncated at 6 levels}"), std::wstring::npos);
    EXPECT_LT(text.size(), 100000u);
}

}  // namespace
}  // namespace sylvex::test
