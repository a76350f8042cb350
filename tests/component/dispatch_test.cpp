#include <gtest/gtest.h>

#include "SylvexControl_h.h"
#include "tests/component/automation.h"

namespace sylvex::test {
namespace {

constexpr DISPID kCheckNodeSelective = 0x60030055;
constexpr DISPID kConvert = 0x60030065;
constexpr DISPID kFont = 0x68030012;
constexpr DISPID kFreeze = 0x60030056;
constexpr DISPID kSetNodeChecked = 0x6003005C;
constexpr DISPID kColor = 0x68030006;
constexpr DISPID kTree = 0x68030003;

// "12345678" as one little-endian integer.
constexpr LONGLONG kEightDigits = 0x3837363534333231;

// The control as a script sees it: by name, with no more than an IDispatch.
class LateBound : public testing::Test {
protected:
    HRESULT Call(DISPID member, WORD kind, std::vector<VARIANT> reversed, VARIANT* result = nullptr)
    {
        const bool isWrite = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        std::vector<DISPID> names(isWrite ? 1 : 0, DISPID_PROPERTYPUT);
        return Call(member, kind, reversed, std::move(names), result);
    }
    HRESULT Call(DISPID member, WORD kind, std::vector<VARIANT> reversed, std::vector<DISPID> names, VARIANT* result)
    {
        DISPPARAMS arguments = {reversed.data(), names.data(), static_cast<UINT>(reversed.size()),
                                static_cast<UINT>(names.size())};
        m_bad = 99;
        return m_control->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments, result, nullptr, &m_bad);
    }

    Value m_object = MakeControl();
    IDispatch* const m_control = m_object.Object();
    UINT m_bad = 0;
};

TEST_F(LateBound, TextByReferenceTakesEveryFormOfText)
{
    Value text(L"12345678");
    Value number(12345678);
    const struct {
        const char* form;
        VARIANT argument;
    } forms[] = {
        {"a literal", text.Raw()},
        {"a typed variable", ReferenceTo(VT_BSTR, &V_BSTR(&text.Raw()))},
        {"a script's variable", ReferenceTo(VT_VARIANT, &text.Raw())},
        {"a number", number.Raw()},
        {"a script's variable with a number", ReferenceTo(VT_VARIANT, &number.Raw())},
    };
    for (const auto& [form, argument] : forms) {
        VARIANT result{};
        EXPECT_HRESULT_SUCCEEDED(Call(kConvert, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {argument}, &result)) << form;
        ASSERT_EQ(V_VT(&result), VT_CY) << form;
        EXPECT_EQ(V_CY(&result).int64, kEightDigits) << form;
    }
    EXPECT_EQ(V_VT(&number.Raw()), VT_I4) << "a variable that the member does not change keeps its type";
}

TEST_F(LateBound, ArgumentsGoByTheirNames)
{
    const Value argument(L"12345678");
    OLECHAR member[] = L"CVC";
    OLECHAR parameter[] = L"ValToConvert";
    LPOLESTR names[] = {member, parameter};
    DISPID ids[2] = {};
    ASSERT_HRESULT_SUCCEEDED(m_control->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids));
    VARIANT result{};
    EXPECT_HRESULT_SUCCEEDED(Call(ids[0], DISPATCH_METHOD, {argument.Raw()}, {ids[1]}, &result));
    EXPECT_EQ(V_CY(&result).int64, kEightDigits);
}

TEST_F(LateBound, ObjectByReferenceMustBeANode)
{
    Value control(m_control);
    Value text(L"node");
    const struct {
        const char* form;
        VARIANT argument;
    } forms[] = {
        {"an object of another kind", control.Raw()},
        {"a typed variable with an object of another kind", ReferenceTo(VT_DISPATCH, &V_DISPATCH(&control.Raw()))},
        {"a script's variable with an object of another kind", ReferenceTo(VT_VARIANT, &control.Raw())},
        {"a text", text.Raw()},
        {"a script's variable with a text", ReferenceTo(VT_VARIANT, &text.Raw())},
    };
    for (const auto& [form, argument] : forms) {
        EXPECT_EQ(Call(kCheckNodeSelective, DISPATCH_METHOD, {argument}), DISP_E_TYPEMISMATCH) << form;
        EXPECT_EQ(m_bad, 0u) << form;
    }
}

TEST_F(LateBound, PropertiesCanBeWrittenInEitherWay)
{
    const Value font = m_object.Get(L"Font");
    for (const WORD kind :
         {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF}) {
        EXPECT_HRESULT_SUCCEEDED(Call(kFont, kind, {font.Raw()})) << kind;
    }
}

TEST_F(LateBound, ArgumentsThatDoNotFitAreRefused)
{
    VARIANT state = Value(false).Raw();
    VARIANT missing = Value::Missing().Raw();
    const VARIANT variable = ReferenceTo(VT_VARIANT, &missing);
    const VARIANT huge = Value(5e9).Raw();
    const struct {
        const char* what;
        DISPID member;
        WORD kind;
        std::vector<VARIANT> reversed;
        std::vector<DISPID> names;
        HRESULT error;
        UINT place = 99;
    } calls[] = {
        {"one too few", kFreeze, DISPATCH_METHOD, {}, {}, DISP_E_PARAMNOTOPTIONAL},
        {"one left out", kFreeze, DISPATCH_METHOD, {missing}, {}, DISP_E_PARAMNOTOPTIONAL, 0},
        {"a variable left out", kFreeze, DISPATCH_METHOD, {variable}, {}, DISP_E_PARAMNOTOPTIONAL, 0},
        {"one too many", kFreeze, DISPATCH_METHOD, {state, state}, {}, DISP_E_BADPARAMCOUNT},
        {"one twice", kSetNodeChecked, DISPATCH_METHOD, {state, state}, {0}, DISP_E_BADPARAMCOUNT, 1},
        {"an unknown name", kFreeze, DISPATCH_METHOD, {state}, {7}, DISP_E_PARAMNOTFOUND, 0},
        {"a name of a write", kFreeze, DISPATCH_METHOD, {state}, {DISPID_PROPERTYPUT}, DISP_E_PARAMNOTFOUND, 0},
        {"no reference", kFreeze, DISPATCH_METHOD, {ReferenceTo(VT_BOOL, nullptr)}, {}, E_INVALIDARG, 0},
        {"an index of a property without one", kColor, DISPATCH_PROPERTYGET, {state}, {}, DISP_E_BADPARAMCOUNT},
        {"a write of two", kColor, DISPATCH_PROPERTYPUT, {state, state}, {DISPID_PROPERTYPUT}, DISP_E_BADPARAMCOUNT},
        {"a write without a value", kColor, DISPATCH_PROPERTYPUT, {}, {}, DISP_E_PARAMNOTFOUND},
        {"a write whose value has no name", kColor, DISPATCH_PROPERTYPUT, {state}, {}, DISP_E_PARAMNOTFOUND},
        {"a number too large", kColor, DISPATCH_PROPERTYPUT, {huge}, {DISPID_PROPERTYPUT}, DISP_E_OVERFLOW, 0},
        {"what cannot be written", kTree, DISPATCH_PROPERTYPUT, {state}, {DISPID_PROPERTYPUT}, DISP_E_MEMBERNOTFOUND},
        {"what is not there", 77, DISPATCH_METHOD, {}, {}, DISP_E_MEMBERNOTFOUND},
    };
    for (const auto& [what, member, kind, reversed, names, error, place] : calls) {
        EXPECT_EQ(Call(member, kind, reversed, names, nullptr), error) << what;
        EXPECT_EQ(m_bad, place) << what;
    }
    VARIANT result = state;
    EXPECT_HRESULT_SUCCEEDED(Call(kFreeze, DISPATCH_METHOD, {ReferenceTo(VT_VARIANT, &state)}, &result));
    EXPECT_EQ(V_VT(&result), VT_EMPTY);
}

TEST_F(LateBound, AnObjectOfAnyKindIsLetGoOf)
{
    const Value held = m_object.Get(L"Font");
    VARIANT font = held.Raw();
    const auto references = [&] {
        V_DISPATCH(&font)->AddRef();
        return V_DISPATCH(&font)->Release();
    };
    ASSERT_HRESULT_SUCCEEDED(Call(kFont, DISPATCH_PROPERTYPUTREF, {font}));
    const ULONG before = references();
    V_VT(&font) = VT_UNKNOWN;
    EXPECT_HRESULT_SUCCEEDED(Call(kFont, DISPATCH_PROPERTYPUTREF, {font}));
    EXPECT_EQ(references(), before);
    // Also when the argument behind it is refused.
    VARIANT reversed[2] = {{}, font};
    V_VT(&reversed[0]) = VT_PTR;
    DISPPARAMS arguments = {reversed, nullptr, 2, 0};
    EXPECT_EQ(
        NodesOf(m_object).Object()->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &arguments, nullptr, nullptr, nullptr),
        DISP_E_BADVARTYPE);
    EXPECT_EQ(references(), before);
}

}  // namespace
}  // namespace sylvex::test
