#include <windows.h>

#include <commctrl.h>

#include <gtest/gtest.h>

#include <memory>

#include "SylvexControl_h.h"
#include "tests/component/automation.h"
#include "tests/component/test_control.h"
#include "tests/component/test_reporter.h"

namespace sylvex::test {
namespace {

constexpr long kReadOnlyAtRunTime = 382;
constexpr long kElementNotFound = 35601;
constexpr long kNodeGone = 35605;
constexpr long kPassedOn = 65535;
constexpr long kTypeMismatch = 13;

const Value kNothing(static_cast<IDispatch*>(nullptr));

HWND WindowOf(const Value& control)
{
    return reinterpret_cast<HWND>(static_cast<INT_PTR>(control.Get(L"hWnd").Number()));
}

// A control that no container holds, as a script makes it.
class SylvexObject : public testing::Test {
protected:
    Value Nodes() const { return control.Get(L"TreeView").Get(L"Nodes"); }
    Value AddRoot(const wchar_t* text)
    {
        return Nodes().Call(L"Add", {Value::Missing(), Value::Missing(), Value::Missing(), text});
    }
    /// A root that can be expanded.
    Value AddBranch()
    {
        const Value root = AddRoot(L"a");
        // A lone child without children would be taken for a placeholder.
        for (const wchar_t* const text : {L"b", L"c"})
            Nodes().Call(L"Add", {root, 4, Value::Missing(), text});
        return root;
    }
    void Type(wchar_t character) { SendMessageW(WindowOf(control), WM_CHAR, static_cast<WPARAM>(character), 1); }

    TestReporter reports;
    Value control = MakeControl();
};

TEST_F(SylvexObject, NewControlShowsThePlaceholderAndItsDefaults)
{
    EXPECT_EQ(Nodes().Get(L"Count").Number(), 1);
    const Value node = Nodes().Get(L"Item", {L"Sylvex"});
    EXPECT_EQ(node.Get(L"Text").Text(), L"Sylvex + [ *.zip ]");
    EXPECT_EQ(node.Get(L"Image").Text(), L"cl");
    EXPECT_EQ(control.Get(L"FileFilter").Text(), L"");
    EXPECT_EQ(control.Get(L"BuildFileListFilter").Text(), L"*");
    EXPECT_TRUE(control.Get(L"RecursiveCheck").Flag());
    EXPECT_FALSE(control.Get(L"DragDropEnable").Flag());
    EXPECT_EQ(V_VT(&control.Get(L"BackColor").Raw()), VT_I4) << "scripts know no number without a sign";
    EXPECT_EQ(static_cast<unsigned>(control.Get(L"BackColor").Number()), 0x8000000Fu);
    EXPECT_TRUE(control.Get(L"Picture").IsNothing());
    EXPECT_TRUE(control.Get(L"MouseIcon").IsNothing());
    EXPECT_TRUE(control.Get(L"ReqListView").IsNothing() || V_VT(&control.Get(L"ReqListView").Raw()) == VT_EMPTY);
    EXPECT_TRUE(IsWindow(WindowOf(control)));
}

TEST_F(SylvexObject, PropertiesKeepWhatIsWritten)
{
    control.Put(L"FileFilter", L"*.txt;*.doc");
    control.Put(L"PathSeparator", L"/");
    control.Put(L"BackColor", 0x00FF00);
    control.Put(L"RecursiveCheck", false);
    control.Put(L"DragDropEnable", true);
    control.Put(L"Appearance", 0);
    EXPECT_EQ(control.Get(L"FileFilter").Text(), L"*.txt;*.doc");
    EXPECT_EQ(control.Get(L"PathSeparator").Text(), L"/");
    EXPECT_EQ(control.Get(L"BackColor").Number(), 0x00FF00);
    EXPECT_FALSE(control.Get(L"RecursiveCheck").Flag());
    EXPECT_TRUE(control.Get(L"DragDropEnable").Flag());
    EXPECT_EQ(control.Get(L"Appearance").Number(), 0);
    EXPECT_EQ(reports.Take(), L"");
}

TEST_F(SylvexObject, FailuresAreReportedOnceAndPassedOn)
{
    EXPECT_EQ(ErrorOf([&] { control.Put(L"hWnd", 5); }), kReadOnlyAtRunTime);
    EXPECT_EQ(reports.Take(), L"") << "this one reaches the host unreported";
    EXPECT_EQ(ErrorOf([&] { control.Put(L"Appearance", 7); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.Appearance 380");
    EXPECT_EQ(ErrorOf([&] { control.Call(L"BuildFullPath", {kNothing}); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.BuildFullPath 91");
}

TEST_F(SylvexObject, NodesOfOthersAreRefused)
{
    const Value other = MakeControl();
    const Value foreign = other.Get(L"TreeView").Get(L"Nodes").Get(L"Item", {1});
    const Value removed = AddRoot(L"removed");
    Nodes().Call(L"Remove", {removed.Get(L"Index")});
    const std::pair<const Value*, std::wstring> nodes[] = {{&foreign, L"35601"}, {&removed, L"35605"}};
    const std::pair<const wchar_t*, std::function<void(const Value&)>> members[] = {
        {L"BuildFullPath", [&](const Value& node) { control.Call(L"BuildFullPath", {node}); }},
        {L"CheckNodeSelective", [&](const Value& node) { control.Call(L"CheckNodeSelective", {node}); }},
        {L"BuildFileList", [&](const Value& node) { control.Call(L"BuildFileList", {node}); }},
        {L"SelectedItem", [&](const Value& node) { control.Put(L"SelectedItem", node); }},
    };
    for (const auto& [node, error] : nodes) {
        for (const auto& [name, call] : members) {
            EXPECT_EQ(ErrorOf([&, node = node, call = call] { call(*node); }), kPassedOn);
            EXPECT_EQ(reports.Take(), L"Sylvex." + std::wstring(name) + L" " + error);
        }
    }
    EXPECT_NE(ErrorOf([&] { control.Call(L"BuildFullPath", {control}); }), 0) << "the control is no node";
    EXPECT_EQ(reports.Take(), L"");
}

TEST_F(SylvexObject, ValuesOfTheWrongKindAreReported)
{
    const auto window = static_cast<LONGLONG>(reinterpret_cast<INT_PTR>(WindowOf(control)));
    for (const Value& wrong : {Value(L"text"), Value(window), control}) {
        EXPECT_EQ(ErrorOf([&] { control.Set(L"ReqListView", wrong); }), kTypeMismatch);
        EXPECT_EQ(reports.Take(), L"Sylvex.ReqListView 13");
        EXPECT_EQ(ErrorOf([&] { control.Put(L"ImageList", wrong); }), kPassedOn);
        EXPECT_EQ(reports.Take(), L"Sylvex.ImageList 13");
    }
    const ComPtr<::_Sylvex> members = NewControl();
    VARIANT unknown{};
    V_VT(&unknown) = 77;
    EXPECT_EQ(HRESULT_CODE(members->putref_ReqListView(unknown)), kTypeMismatch);
    EXPECT_EQ(reports.Take(), L"Sylvex.ReqListView 13");
}

/// Answers for a node's interface and does nothing.
class Impostor : public IDispatch {
public:
    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        *found = id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(INode) ? this : nullptr;
        return *found ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override
    {
        return E_NOTIMPL;
    }
};

TEST_F(SylvexObject, SomebodyElsesNodeObjectIsATypeMismatch)
{
    Impostor impostor;
    EXPECT_EQ(ErrorOf([&] { control.Call(L"BuildFullPath", {static_cast<IDispatch*>(&impostor)}); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.BuildFullPath 13");
}

TEST_F(SylvexObject, SelectedItemTakesAndGivesNodes)
{
    const Value node = AddRoot(L"a");
    control.Set(L"SelectedItem", node);
    EXPECT_TRUE(control.Get(L"SelectedItem").Is(node));
    control.Set(L"SelectedItem", kNothing);
    EXPECT_TRUE(control.Get(L"SelectedItem").IsNothing());
}

TEST_F(SylvexObject, ChangesOfTheFontObjectReachTheTree)
{
    const auto height = [&] {
        LOGFONTW description{};
        const LRESULT font = SendMessageW(WindowOf(control), WM_GETFONT, 0, 0);
        GetObjectW(reinterpret_cast<HFONT>(font), sizeof description, &description);
        return std::abs(description.lfHeight);
    };
    const Value font = control.Get(L"Font");
    EXPECT_TRUE(control.Get(L"Font").Is(font));
    font.Put(L"Size", 24);
    const long large = height();
    font.Put(L"Size", 8);
    EXPECT_LT(height(), large);
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
    SendMessageW(WindowOf(control), WM_KEYDOWN, VK_F5, 0);
    EXPECT_EQ(first.Take(), L"KeyDown 116 0");
    first.Disconnect();
    node.Put(L"Expanded", true);
    EXPECT_EQ(first.Take(), L"");
}

TEST_F(SylvexObject, SinksMayLeaveInTheMiddleOfAnEvent)
{
    const Value node = AddBranch();
    EventLog first(control);
    EventLog second(control);
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
        swallowing.On(L"KeyPress", [](std::vector<VARIANT*>& arguments) {
            ASSERT_EQ(V_VT(arguments[0]), VT_I2 | VT_BYREF);
            *V_I2REF(arguments[0]) = 0;
        });
        EventLog next(control);
        Type(L'x');
        EXPECT_EQ(swallowing.Take(), L"KeyPress 120");
        EXPECT_EQ(next.Take(), L"KeyPress 0") << "the next sink sees what the one before left";
    }
    EXPECT_TRUE(control.Get(L"SelectedItem").Is(alpha));
    Type(L'x');
    EXPECT_EQ(control.Get(L"SelectedItem").Get(L"Text").Text(), L"xray");
}

TEST_F(SylvexObject, MousePointsComeInTwips)
{
    EventLog log(control);
    std::vector<float> place;
    log.On(L"MouseDown", [&](std::vector<VARIANT*>& arguments) {
        ASSERT_EQ(arguments.size(), 4u);
        EXPECT_EQ(*V_I2REF(arguments[0]), 2) << "the right button";
        place = {*V_R4REF(arguments[2]), *V_R4REF(arguments[3])};
    });
    const HDC screen = GetDC(nullptr);
    const float twips = 1440.0f / static_cast<float>(GetDeviceCaps(screen, LOGPIXELSX));
    ReleaseDC(nullptr, screen);
    PostMessageW(WindowOf(control), WM_RBUTTONUP, 0, MAKELPARAM(10, 20));
    SendMessageW(WindowOf(control), WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(10, 20));
    EXPECT_EQ(place, (std::vector<float>{10 * twips, 20 * twips}));
    DrainMessages();
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
    EXPECT_EQ(ErrorOf([&] { node.Get(L"Text"); }), kNodeGone);
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
        EXPECT_EQ(node.Get(L"Text").Text(), L"a");
        control.Set(L"SelectedItem", node);
        EXPECT_TRUE(control.Get(L"SelectedItem").Is(node));
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
class PropertySink : public IPropertyNotifySink {
public:
    std::vector<DISPID> changed;
    HRESULT permission = S_OK;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        *found = id == IID_IUnknown || id == IID_IPropertyNotifySink ? this : nullptr;
        return *found ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP OnChanged(DISPID property) override
    {
        changed.push_back(property);
        return S_OK;
    }
    STDMETHODIMP OnRequestEdit(DISPID) override { return permission; }
};

TEST_F(SylvexObject, WritesNameTheChangedPropertyToTheHost)
{
    PropertySink sink;
    IConnectionPoint* const point = PointOf(control, IID_IPropertyNotifySink);
    ASSERT_NE(point, nullptr);
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
    HWND const list = CreateWindowW(WC_LISTVIEWW, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    control.Put(L"ReqListView", static_cast<int>(reinterpret_cast<INT_PTR>(list)));
    EXPECT_TRUE(control.Get(L"ReqListView").IsNothing());
    DestroyWindow(list);
    EXPECT_EQ(control.Get(L"FileFilter").Text(), L"*.c");
    EXPECT_EQ(control.Get(L"BackColor").Number(), 1);
    point->Unadvise(cookie);
    EXPECT_EQ(point->Unadvise(cookie), CONNECT_E_NOCONNECTION);
    point->Release();
}

TEST_F(SylvexObject, ConnectionPointsDescribeThemselves)
{
    IConnectionPoint* const events = PointOf(control, __uuidof(::__Sylvex));
    ASSERT_NE(events, nullptr);
    IID outgoing{};
    events->GetConnectionInterface(&outgoing);
    EXPECT_EQ(outgoing, __uuidof(::__Sylvex));
    EXPECT_EQ(PointOf(control, IID_IDispatch), nullptr);
    {
        EventLog one(control);
        EventLog two(control);
        IEnumConnections* connections = nullptr;
        ASSERT_HRESULT_SUCCEEDED(events->EnumConnections(&connections));
        CONNECTDATA data[3] = {};
        ULONG fetched = 0;
        EXPECT_EQ(connections->Next(3, data, &fetched), S_FALSE);
        EXPECT_EQ(fetched, 2u);
        EXPECT_NE(data[0].dwCookie, data[1].dwCookie);
        for (ULONG index = 0; index < fetched; ++index)
            data[index].pUnk->Release();
        connections->Release();
    }
    control = Value();
    IConnectionPointContainer* container = nullptr;
    EXPECT_TRUE(FAILED(events->GetConnectionPointContainer(&container))) << "a point may outlive its control";
    events->Release();
}

/// An object that has the control as a part of itself.
class Outer : public IUnknown {
public:
    IUnknown* inner = nullptr;
    ULONG references = 1;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        if (id != IID_IUnknown) return inner->QueryInterface(id, found);
        *found = this;
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
    STDMETHODIMP_(ULONG) Release() override { return --references; }
};

TEST(AggregatedSylvexObject, AnswersAsItsOuterObject)
{
    Outer outer;
    outer.inner = MakeInnerControl(outer);
    ASSERT_NE(outer.inner, nullptr);
    {
        IDispatch* members = nullptr;
        ASSERT_HRESULT_SUCCEEDED(outer.QueryInterface(IID_IDispatch, reinterpret_cast<void**>(&members)));
        const Value control(members);
        members->Release();
        IUnknown* identity = nullptr;
        control.Object()->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(&identity));
        EXPECT_EQ(identity, &outer);
        identity->Release();
        EventLog log(control);
        SendMessageW(WindowOf(control), WM_KEYDOWN, VK_F5, 0);
        EXPECT_EQ(log.Take(), L"KeyDown 116 0");
    }
    EXPECT_EQ(outer.references, 1u) << "every reference that the control took it gave back";
    outer.inner->Release();
    EXPECT_FALSE(ComponentIsBusy());
}

TEST_F(SylvexObject, AThawShowsWhatWasLoadedMeanwhile)
{
    const auto repaints = [&] { return (GetWindowLongW(WindowOf(control), GWL_STYLE) & WS_VISIBLE) != 0; };
    EXPECT_TRUE(repaints());
    EXPECT_EQ(V_VT(&control.Call(L"FreezeCtl", {true}).Raw()), VT_EMPTY);
    control.Call(L"Enumerate");
    EXPECT_FALSE(repaints());
    control.Call(L"FreezeCtl", {false});
    EXPECT_TRUE(repaints());
}

TEST_F(SylvexObject, ArgumentsMayBeLeftOut)
{
    control.Call(L"BuildFileList");
    EXPECT_EQ(reports.Take(), L"") << "without a node nothing happens";
    EXPECT_EQ(ErrorOf([&] { control.Call(L"SetNodeChecked", {true}); }), kPassedOn);
    EXPECT_EQ(reports.Take(), L"Sylvex.SetNodeChecked 91") << "there is no list to take the node from";
}

}  // namespace
}  // namespace sylvex::test
