#include "tests/component/test_control.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {
namespace {

constexpr long kReadOnlyAtRunTime = 382;

// A control that no container holds, as a script makes it.
class SylvexObject : public testing::Test {
protected:
    Value Nodes() const { return NodesOf(control); }
    Value AddRoot(const wchar_t* text) { return AddNode(Nodes(), text); }
    /// A root that can be expanded.
    Value AddBranch()
    {
        const Value root = AddRoot(L"a");
        // A lone child without children would be taken for a placeholder.
        for (const wchar_t* const text : {L"b", L"c"})
            AddNode(Nodes(), text, root);
        return root;
    }
    LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam = 1) const
    {
        return SendMessageW(WindowOf(control), message, wParam, lParam);
    }

    TestReporter reports;
    Value control = MakeControl();
};

/// Answers for a node's interface and does nothing.
class Impostor : public TestDispatch<> {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        return TestObject::QueryInterface(id == __uuidof(INode) ? IID_IDispatch : id, found);
    }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }
};

TEST_F(SylvexObject, WhatDoesNotFitIsReportedOnceAndPassedOn)
{
    const Value other = MakeControl();
    const Value foreign = NodesOf(other).Get(L"Item", {1});
    const Value removed = AddRoot(L"removed");
    Nodes().Call(L"Remove", {removed.Get(L"Index")});
    Impostor impostor;
    const Value somebodyElses(static_cast<IDispatch*>(&impostor));
    const struct {
        std::function<void()> act;
        long error;
        const wchar_t* report;
    } cases[] = {
        {[&] { control.Put(L"hWnd", 5); }, kReadOnlyAtRunTime, L""},  // reaches the host unreported
        {[&] { control.Put(L"Appearance", 7); }, kPassedOn, L"Sylvex.Appearance 380"},
        {[&] { control.Call(L"BuildFullPath", {Value::Nothing()}); }, kPassedOn, L"Sylvex.BuildFullPath 91"},
        {[&] { control.Call(L"BuildFullPath", {removed}); }, kPassedOn, L"Sylvex.BuildFullPath 35605"},
        {[&] { control.Call(L"BuildFullPath", {foreign}); }, kPassedOn, L"Sylvex.BuildFullPath 35601"},
        {[&] { control.Call(L"BuildFullPath", {somebodyElses}); }, kPassedOn, L"Sylvex.BuildFullPath 13"},
        {[&] { control.Call(L"BuildFullPath", {control}); }, DISP_E_TYPEMISMATCH, L""},
        {[&] { control.Call(L"CheckNodeSelective", {removed}); }, kPassedOn, L"Sylvex.CheckNodeSelective 35605"},
        {[&] { control.Call(L"BuildFileList", {removed}); }, kPassedOn, L"Sylvex.BuildFileList 35605"},
        {[&] { control.Put(L"SelectedItem", removed); }, kPassedOn, L"Sylvex.SelectedItem 35605"},
        {[&] { control.Set(L"ReqListView", control); }, kTypeMismatch, L"Sylvex.ReqListView 13"},
        {[&] { control.Put(L"ImageList", control.Get(L"hWnd")); }, kPassedOn, L"Sylvex.ImageList 13"},
        {[&] { control.Call(L"BuildFileList"); }, 0, L""},  // without a node nothing happens
        {[&] { control.Call(L"SetNodeChecked", {true}); }, kPassedOn, L"Sylvex.SetNodeChecked 91"},
    };
    for (const auto& [act, error, report] : cases) {
        EXPECT_EQ(ErrorOf(act), error) << testing::PrintToString(report);
        EXPECT_EQ(reports.Take(), report);
    }
}

TEST_F(SylvexObject, ChangesOfTheFontObjectAndThePointerReachTheTree)
{
    const auto height = [&] {
        LOGFONTW description{};
        GetObjectW(reinterpret_cast<HFONT>(Send(WM_GETFONT, 0)), sizeof description, &description);
        return std::abs(description.lfHeight);
    };
    const Value font = control.Get(L"Font");
    EXPECT_TRUE(control.Get(L"Font").Is(font));
    font.Put(L"Size", 24);
    const long large = height();
    font.Put(L"Size", 8);
    EXPECT_LT(height(), large);
    control.Put(L"MousePointer", 11);
    Send(WM_SETCURSOR, reinterpret_cast<WPARAM>(WindowOf(control)), MAKELPARAM(HTCLIENT, WM_MOUSEMOVE));
    EXPECT_EQ(GetCursor(), LoadCursorW(nullptr, IDC_WAIT));
}

TEST_F(SylvexObject, EventsReachEverySinkAndKeepTheOrderOfTheirArguments)
{
    const Value node = AddBranch();
    EventLog first(control);
    EventLog second(control);
    first.Answer(E_FAIL);
    node.Put(L"Expanded", true);
    node.Put(L"Expanded", false);
    EXPECT_EQ(first.Take(), L"Expand a; Collapse a");
    EXPECT_EQ(second.Take(), L"Expand a; Collapse a") << "a sink that fails is no reason to leave out the next";
    Send(WM_KEYDOWN, VK_F5);
    EXPECT_EQ(first.Take(), L"KeyDown 116 0");
    second.Take();
    // Sinks may leave in the middle of an event.
    first.On(L"Expand", [&](auto&) { first.Disconnect(), second.Disconnect(); });
    node.Put(L"Expanded", true);
    EXPECT_EQ(second.Take(), L"Expand a") << "an event goes on to those that were there when it began";
    node.Put(L"Expanded", false);
    EXPECT_EQ(first.Take() + second.Take(), L"Expand a");
}

TEST_F(SylvexObject, HandlersChangeArgumentsByReference)
{
    for (const wchar_t* const text : {L"alpha", L"xray"})
        AddRoot(text);
    const Value alpha = Nodes().Get(L"Item", {2});
    control.Set(L"SelectedItem", alpha);
    {
        EventLog swallowing(control);
        for (const wchar_t* const event : {L"KeyPress", L"KeyDown"}) {
            swallowing.On(event, [](std::vector<VARIANT*>& arguments) {
                ASSERT_EQ(V_VT(arguments[0]), VT_I2 | VT_BYREF);
                *V_I2REF(arguments[0]) = 0;
            });
        }
        EventLog next(control);
        Send(WM_CHAR, L'x');
        EXPECT_EQ(swallowing.Take(), L"KeyPress 120");
        EXPECT_EQ(next.Take(), L"KeyPress 0") << "the next sink sees what the one before left";
        Send(WM_KEYDOWN, VK_DOWN);
    }
    EXPECT_TRUE(control.Get(L"SelectedItem").Is(alpha));
    Send(WM_CHAR, L'x');
    EXPECT_EQ(control.Get(L"SelectedItem").Get(L"Text").Text(), L"xray");
}

TEST_F(SylvexObject, MessagesThatAnybodySendsToItsWindowEndNothing)
{
    const Value root = AddBranch();
    const HWND own = GetAncestor(WindowOf(control), GA_PARENT);
    for (UINT message = WM_APP; message <= 0xFFFF; ++message)
        SendMessageW(own, message, 0, 0);
    SendMessageW(own, WM_CLOSE, 0, 0);
    EXPECT_TRUE(IsWindow(own));
    EXPECT_EQ(root.Get(L"Children").Number(), 2);
    EXPECT_TRUE(ComponentIsBusy());
}

TEST_F(SylvexObject, TheLastReferenceMayGoInsideAnEvent)
{
    // Raised by a call of the host.
    Value node = AddBranch();
    {
        EventLog log(control);
        log.On(L"Expand", [&](auto&) { log.Disconnect(), control = Value(); });
        node.Put(L"Expanded", true);
        EXPECT_EQ(log.Take(), L"Expand a");
    }
    DrainMessages();
    EXPECT_EQ(ErrorOf([&] { node.Get(L"Text"); }), kGone);
    node = Value();

    // Raised by a message of the window, which the window itself is still working on.
    for (const wchar_t* const event : {L"KeyDown", L"NodeClick", L"KeyUp"}) {
        control = MakeControl();
        AddRoot(L"a");
        control.Set(L"SelectedItem", Nodes().Get(L"Item", {1}));
        const HWND window = WindowOf(control);
        EventLog log(control);
        log.On(event, [&](auto&) { log.Disconnect(), control = Value(); });
        SendMessageW(window, WM_KEYDOWN, VK_DOWN, 1);
        SendMessageW(window, WM_KEYUP, VK_DOWN, 1);
        EXPECT_NE(log.Take().find(event), std::wstring::npos);
        DrainMessages();
        EXPECT_FALSE(IsWindow(window));
        EXPECT_FALSE(ComponentIsBusy()) << "something of the control is left";
    }
}

TEST_F(SylvexObject, TheParentOfTheWindowMayGoFirst)
{
    const Value node = AddRoot(L"a");
    const auto placeInFrame = [&] {
        const HWND frame =
            CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 300, nullptr, nullptr, nullptr, nullptr);
        SetParent(GetParent(WindowOf(control)), frame);
        return frame;
    };
    const auto expectAlive = [&](HWND before) {
        EXPECT_FALSE(IsWindow(before));
        EXPECT_TRUE(IsWindow(WindowOf(control))) << "the control goes on in a window of its own";
        control.Set(L"SelectedItem", node);
        EXPECT_EQ(control.Get(L"SelectedItem").Get(L"Text").Text(), L"a");
    };
    HWND frame = placeInFrame();
    HWND before = WindowOf(control);
    DestroyWindow(frame);
    expectAlive(before);

    // In the middle of a call from the window.
    frame = placeInFrame();
    before = WindowOf(control);
    EventLog log(control);
    log.On(L"KeyDown", [&](auto&) { DestroyWindow(frame); });
    SendMessageW(before, WM_KEYDOWN, VK_DOWN, 1);
    expectAlive(before);

    // And with the last reference to the control.
    frame = placeInFrame();
    before = WindowOf(control);
    log.On(L"KeyDown", [&](auto&) { log.Disconnect(), control = Value(), DestroyWindow(frame); });
    SendMessageW(before, WM_KEYDOWN, VK_DOWN, 1);
    DrainMessages();
    EXPECT_FALSE(IsWindow(before));
}

/// Listens to changed properties and may refuse them.
class PropertySink : public TestObject<IPropertyNotifySink> {
public:
    std::vector<DISPID> changed;
    HRESULT permission = S_OK;

    STDMETHODIMP OnChanged(DISPID property) override { return changed.push_back(property), S_OK; }
    STDMETHODIMP OnRequestEdit(DISPID) override { return permission; }
};

TEST_F(SylvexObject, WritesNameTheChangedPropertyToTheHost)
{
    PropertySink sink;
    const auto point = PointOf(control, IID_IPropertyNotifySink);
    DWORD cookie = 0;
    ASSERT_HRESULT_SUCCEEDED(point->Advise(&sink, &cookie));
    control.Put(L"FileFilter", L"*.c");
    control.Put(L"Checkboxes", true);
    control.Put(L"BackColor", 1);
    control.Set(L"SelectedItem", Nodes().Get(L"Item", {1}));
    EXPECT_EQ(sink.changed, (std::vector<DISPID>{0x68030009, 0x68030014, 0x68030006}))
        << "a selection is no change of a property";
    sink.permission = S_FALSE;
    control.Put(L"FileFilter", L"*.d");
    control.Put(L"BackColor", 2);
    const ListViewWindow list;
    control.Put(L"ReqListView", list.window);
    EXPECT_TRUE(control.Get(L"ReqListView").IsNothing());
    EXPECT_EQ(control.Get(L"FileFilter").Text(), L"*.c");
    EXPECT_EQ(control.Get(L"BackColor").Number(), 1);
    point->Unadvise(cookie);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
}

TEST_F(SylvexObject, ConnectionPointsDescribeThemselves)
{
    const auto events = PointOf(control, __uuidof(::__Sylvex));
    EXPECT_FALSE(PointOf(control, IID_IDispatch));
    {
        EventLog one(control);
        EventLog two(control);
        ComPtr<IEnumConnections> connections;
        ASSERT_HRESULT_SUCCEEDED(events->EnumConnections(connections.Put()));
        CONNECTDATA data[3] = {};
        ULONG fetched = 0;
        EXPECT_EQ(connections->Next(3, data, &fetched), S_FALSE);
        EXPECT_EQ(fetched, 2u);
        EXPECT_NE(data[0].dwCookie, data[1].dwCookie);
        for (ULONG index = 0; index < fetched; ++index)
            data[index].pUnk->Release();
    }
    control = Value();
    ComPtr<IConnectionPointContainer> container;
    EXPECT_HRESULT_FAILED(events->GetConnectionPointContainer(container.Put())) << "a point may outlive its control";
}

}  // namespace
}  // namespace sylvex::test
