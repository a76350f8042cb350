// Faults in what a host hands over or does when it is called, met by the component as it is shipped.

#include <optional>

#include "tests/component/faults.h"
#include "tests/component/test_control.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {
namespace {

constexpr HRESULT kAccessViolation = static_cast<HRESULT>(0x800A2715);

/// An object of the host that fails, once it is told to, in whatever it is asked.
class FaultyList final : public TestDispatch<> {
public:
    std::optional<Fault> fault;
    /// Given as the value of everything, when set.
    void* object = nullptr;

    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* members) override
    {
        *members = 1;
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override
    {
        if (fault) Commit(*fault);
        if (!result) return S_OK;
        V_VT(result) = object ? VT_DISPATCH : VT_I4;
        if (object)
            V_DISPATCH(result) = static_cast<IDispatch*>(object);
        else
            V_I4(result) = 0;
        return S_OK;
    }
};

/// Two controls, the first with a root that has a child, and with a list that fails when told to.
class Exceptions : public testing::Test {
protected:
    Exceptions()
    {
        const Value nodes = NodesOf(control);
        nodes.Call(L"Clear");
        root = AddNode(nodes, L"Disk (C:)");
        AddNode(nodes, L"Folder", root);
    }
    void ExpectBothToWork()
    {
        for (const Value& each : {control, other})
            EXPECT_EQ(each.Call(L"ReturnFileName", {L"C:\\a\\b.txt"}).Text(), L"b.txt");
        other.Call(L"Enumerate");
        EXPECT_GT(NodesOf(other).Get(L"Count").Number(), 0);
        // The first is still bound to the list, which does as it is told again.
        list.fault.reset();
        EXPECT_TRUE(control.Call(L"AssignSysIL").Flag());
        EXPECT_EQ(reports.Take(), L"");
    }

    FaultyList list;
    TestReporter reports;
    Value control = MakeControl();
    Value other = MakeControl();
    Value root;
};

TEST_F(Exceptions, AHostsObjectThatFaultsIsARunTimeError)
{
    const struct {
        Fault fault;
        const wchar_t* number;
    } cases[] = {{Fault::Read, L"10005"},          {Fault::Write, L"10005"},        {Fault::CallNowhere, L"10005"},
                 {Fault::Divide, L"10132"},        {Fault::Illegal, L"10013"},      {Fault::Privileged, L"10134"},
                 {Fault::RaiseForGood, L"10032"},  {Fault::RaiseNested, L"10132"},  {Fault::RaiseLanguage, L"10099"},
                 {Fault::RaiseUnmarked, L"12254"}, {Fault::OverflowStack, L"10237"}};
    for (const auto& [fault, number] : cases) {
        list.fault = fault;
        EXPECT_EQ(ErrorOf([&] { control.Set(L"ReqListView", &list); }), kPassedOn);
        EXPECT_EQ(reports.Take(), std::wstring(L"Sylvex.AssignSysIL ") + number + L"; Sylvex.ReqListView 65535");
    }
    ExpectBothToWork();
}

TEST_F(Exceptions, AnEventHandlerThatFaultsIsARunTimeErrorUnlessItHandlesTheFaultItself)
{
    EventLog events(control);
    events.On(L"Expand", [](auto&) { Commit(Fault::Divide); });
    EXPECT_EQ(ErrorOf([&] { root.Put(L"Expanded", true); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.TV_Expand 10132");
#ifdef __x86_64__
    events.On(L"Collapse", [](auto&) { EXPECT_NE(TryInFrame([] { Commit(Fault::Read); }), 0u); });
    root.Put(L"Expanded", false);
    EXPECT_EQ(reports.Take(), L"");
#endif
    events.Disconnect();
    control.Call(L"Enumerate");
    EXPECT_EQ(reports.Take(), L"");
}

TEST_F(Exceptions, ObjectsAndTextsThatAreNotThereAreRunTimeErrors)
{
    // Met by the component's own instructions: it reads the object's table of methods, or calls through it.
    void* const noMethods[64] = {};
    const void* const withoutMethods = noMethods;
    for (void* const bad : {Nowhere(), const_cast<void*>(static_cast<const void*>(&withoutMethods))}) {
        list.object = bad;
        EXPECT_EQ(ErrorOf([&] { control.Set(L"ReqListView", &list); }), kPassedOn);
        EXPECT_EQ(reports.Take(), L"Sylvex.AssignSysIL 10005; Sylvex.ReqListView 65535");
    }
    list.object = nullptr;
    const ComPtr<::_Sylvex> direct = ComPtr<IDispatch>(control.Object()).As<::_Sylvex>();
    EXPECT_EQ(HRESULT_CODE(direct->put_SelectedItem(static_cast<INode*>(Nowhere()))), 65535);
    EXPECT_EQ(reports.Take(), L"Sylvex.SelectedItem 10005");
    EXPECT_EQ(direct->put_FileFilter(static_cast<BSTR>(Nowhere())), kAccessViolation);
    EXPECT_EQ(direct->get_FileFilter(static_cast<BSTR*>(Nowhere())), kAccessViolation);
    ComPtr<IErrorInfo> information;
    ASSERT_EQ(GetErrorInfo(0, information.Put()), S_OK);
    Bstr source;
    Bstr description;
    information->GetSource(source.Put());
    information->GetDescription(description.Put());
    EXPECT_EQ(source.View(), L"vantorExceptionFilter");
    EXPECT_EQ(description.View(), L"Access Violation");
    ExpectBothToWork();
}

TEST_F(Exceptions, TheHostsCrashHandlerGetsWhatHappensOutsideTheControl)
{
    list.fault = Fault::Read;
    EXPECT_EQ(UnhandledIn([&] { ErrorOf([&] { control.Set(L"ReqListView", &list); }); }), 0u);
    EXPECT_EQ(UnhandledIn([] { Commit(Fault::Read); }), EXCEPTION_ACCESS_VIOLATION);
}

}  // namespace
}  // namespace sylvex::test
