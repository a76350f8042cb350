#include <cstring>

#include "platform/win32/variant_text.h"
#include "tests/component/test_control.h"

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

TEST(VariantText, SingleValues)
{
    EXPECT_EQ(Rendered(Value().Raw()), L"{Empty}");
    EXPECT_EQ(Rendered(Made(VT_NULL, [](VARIANT&) {}).Raw()), L"{Null}");
    EXPECT_EQ(Rendered(Made(VT_I1, [](VARIANT& v) { V_I1(&v) = -5; }).Raw()), L"-5");
    EXPECT_EQ(Rendered(Made(VT_UI1, [](VARIANT& v) { V_UI1(&v) = 250; }).Raw()), L"250");
    EXPECT_EQ(Rendered(Made(VT_R4, [](VARIANT& v) { V_R4(&v) = 0.1f; }).Raw()), L"0.1");
    EXPECT_EQ(Rendered(Made(VT_CY, [](VARIANT& v) { V_CY(&v).int64 = 12345; }).Raw()), L"1.2345");
    EXPECT_EQ(Rendered(Made(VT_DATE, [](VARIANT& v) { V_DATE(&v) = 46342.5; }).Raw()), L"2026-11-16 12:00:00");
    EXPECT_EQ(Rendered(Value(true).Raw()), L"True");
    EXPECT_EQ(Rendered(Value(L"<a>{Null}\r").Raw()), L"&lt;a&gt;&#123;Null&#125;{U+000D}");
    EXPECT_EQ(Rendered(Made(VT_BSTR, [](VARIANT& v) { V_BSTR(&v) = nullptr; }).Raw()), L"");
    EXPECT_EQ(Rendered(Value::Nothing().Raw()), L"{Nothing}");
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

/// What is told of an array; the elements that are given are filled in, one after another.
std::wstring ArrayText(VARTYPE type, std::vector<SAFEARRAYBOUND> bounds, std::vector<LONG> elements = {})
{
    SAFEARRAY* array = SafeArrayCreate(type, static_cast<UINT>(bounds.size()), bounds.data());
    const UINT size = SafeArrayGetElemsize(array);
    for (std::size_t i = 0; i < elements.size(); ++i)
        std::memcpy(static_cast<char*>(array->pvData) + i * size, &elements[i], size);
    VARIANT value{};
    V_VT(&value) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&value) = array;
    const std::wstring text = Rendered(value);
    EXPECT_EQ(array->cLocks, 0u);
    EXPECT_EQ(Rendered(ReferenceTo(V_VT(&value), &array)), text);
    SafeArrayDestroy(array);
    return text;
}

TEST(VariantText, Arrays)
{
    EXPECT_EQ(ArrayText(VT_I4, {{2, -1}}, {5, 6}),
              L"<Element Index=\"-1\">5</Element><Element Index=\"0\">6</Element>");
    // The first index runs fastest in memory, the last one in the text.
    EXPECT_EQ(ArrayText(VT_I4, {{2, 1}, {2, 5}}, {15, 25, 16, 26}),
              L"<Element Index=\"1,5\">15</Element><Element Index=\"1,6\">16</Element>"
              L"<Element Index=\"2,5\">25</Element><Element Index=\"2,6\">26</Element>");
    EXPECT_EQ(ArrayText(VT_I4, {{1, 0}, {2, 0}, {1, 3}}, {7, 9}),
              L"<Element Index=\"0,0,3\">7</Element><Element Index=\"0,1,3\">9</Element>");
    EXPECT_EQ(ArrayText(VT_I4, {{1, 0}, {1, 0}, {1, 0}, {1, 0}}), L"{Dump truncated at 3 dimensions}");
    EXPECT_EQ(ArrayText(VT_I4, {{0, 0}}), L"{UnInitialised Array}");
    EXPECT_EQ(ArrayText(VT_I4, {{1, 0}, {0, 0}}), L"{UnInitialised Array Dimension 2}");
    EXPECT_EQ(ArrayText(VT_I4, {{1, 0}, {1, 0}, {0, 0}}), L"{UnInitialised Array Dimension 3}");
    VARIANT none{};
    V_VT(&none) = VT_ARRAY | VT_BSTR;
    EXPECT_EQ(Rendered(none), L"{UnInitialised Array}");
    EXPECT_EQ(ArrayText(VT_UI1, {{3, 0}}, {0x4D, 0, 0xFF}), L"4D 00 FF");
    EXPECT_TRUE(ArrayText(VT_UI1, {{100000, 0}}).ends_with(L"00 00{Dump truncated at 256 bytes}"));
    EXPECT_TRUE(ArrayText(VT_I4, {{100000, 0}}).ends_with(L"\"199\">0</Element>{Dump truncated at 200 elements}"));
}

/// A collection of a script that gives what it is told to, for ever if there is no end.
class Collection final : public TestDispatch<IEnumVARIANT> {
public:
    std::function<HRESULT(int place, VARIANT& element)> element;
    HRESULT enumerates = S_OK;

    STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override
    {
        if (enumerates != S_OK) return enumerates;
        if (member != DISPID_NEWENUM) return DISP_E_MEMBERNOTFOUND;
        m_place = 0;
        V_VT(result) = VT_UNKNOWN;
        V_UNKNOWN(result) = static_cast<IEnumVARIANT*>(this);
        AddRef();
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
        const std::wstring text = Rendered(Value(this).Raw());
        EXPECT_EQ(References(), 0);
        return text;
    }

private:
    int m_place = 0;
};

TEST(VariantText, ObjectsAndCollections)
{
    ValueText shown;
    RenderObject(NewFont(L"Arial", 8).Get(), shown);
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
        V_VT(&value) = VT_DISPATCH, V_DISPATCH(&value) = &cycle, cycle.AddRef();
        return place < 2 ? S_OK : (cycle.Release(), V_VT(&value) = VT_EMPTY, S_FALSE);
    };
    const std::wstring text = cycle.Text();
    EXPECT_NE(text.find(L"{Dump truncated at 6 levels}"), std::wstring::npos);
    EXPECT_LT(text.size(), 100000u);
}

}  // namespace
}  // namespace sylvex::test
