#include "tests/component/test_bag.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

HRESULT QuickActivate(TestContainer& container, Embedded& embedded)
{
    QACONTAINER offer{};
    offer.cbSize = sizeof offer;
    offer.pClientSite = &container;
    offer.pPropertyNotifySink = &container;
    QACONTROL answer{};
    answer.cbSize = sizeof answer;
    const HRESULT result = embedded.As<IQuickActivate>()->QuickActivate(&offer, &answer);
    EXPECT_NE(answer.dwPropNotifyCookie, 0u);
    EXPECT_TRUE(answer.dwMiscStatus & OLEMISC_ACTIVATEWHENVISIBLE);
    return SUCCEEDED(result) ? embedded.InitNew() : result;
}

HRESULT LoadBag(Embedded& embedded)
{
    TestBag bag;
    EXPECT_HRESULT_SUCCEEDED(embedded.SetSite());
    return embedded.As<IPersistPropertyBag>()->Load(&bag, nullptr);
}

HRESULT LoadStream(TestContainer& container, Embedded& embedded)
{
    Embedded saved(container);
    const ComPtr<IStream> stream = NewStream();
    EXPECT_HRESULT_SUCCEEDED(saved.As<IPersistStreamInit>()->Save(stream.Get(), TRUE));
    Rewind(stream);
    EXPECT_HRESULT_SUCCEEDED(embedded.SetSite());
    return embedded.As<IPersistStreamInit>()->Load(stream.Get());
}

HRESULT LoadStorage(TestContainer& container, Embedded& embedded)
{
    Embedded saved(container);
    const ComPtr<IStorage> storage = NewStorage();
    EXPECT_HRESULT_SUCCEEDED(saved.As<IPersistStorage>()->Save(storage.Get(), FALSE));
    EXPECT_HRESULT_SUCCEEDED(embedded.As<IPersistStorage>()->Load(storage.Get()));
    return embedded.SetSite();
}

TEST(Containers, OfEveryKindShowTheControlAndLetItGo)
{
    const std::pair<const char*, std::function<HRESULT(TestContainer&, Embedded&)>> kinds[] = {
        {"sites, then makes it new", [](auto&, Embedded& embedded) { return embedded.SetSite() | embedded.InitNew(); }},
        {"makes it new, then sites", [](auto&, Embedded& embedded) { return embedded.InitNew() | embedded.SetSite(); }},
        {"never persists", [](auto&, Embedded& embedded) { return embedded.SetSite(); }},
        {"activates quickly", QuickActivate},
        {"loads a bag", [](auto&, Embedded& embedded) { return LoadBag(embedded); }},
        {"loads a stream", LoadStream},
        {"loads a storage before it sites", LoadStorage},
        {"says nothing of itself",
         [](TestContainer& container, Embedded& embedded) { return container.ambients.reset(), LoadBag(embedded); }},
        {"has locale zero",
         [](TestContainer& container, Embedded& embedded) {
             return container.SetAmbient(DISPID_AMBIENT_LOCALEID, 0), LoadBag(embedded);
         }},
        {"is designing",
         [](TestContainer& container, Embedded& embedded) {
             return container.SetAmbient(DISPID_AMBIENT_USERMODE, false), embedded.SetSite() | embedded.InitNew();
         }},
    };
    for (const auto& [name, start] : kinds) {
        SCOPED_TRACE(name);
        TestContainer container;
        {
            Embedded embedded(container);
            ASSERT_EQ(start(container, embedded), S_OK);
            ASSERT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_INPLACEACTIVATE));
            DrainMessages();
            const HWND tree = embedded.Tree();
            EXPECT_TRUE(IsChild(container.Form(), tree));
            EXPECT_TRUE(IsWindowVisible(tree));
            EXPECT_EQ(SendMessageW(tree, TVM_GETCOUNT, 0, 0), 1) << "the placeholder node";
            EXPECT_HRESULT_SUCCEEDED(embedded.control->put_Checkboxes(VARIANT_TRUE));
            EXPECT_TRUE(GetWindowLongW(tree, GWL_STYLE) & TVS_CHECKBOXES);
        }
        EXPECT_EQ(container.References(), 0);
        EXPECT_EQ(GetWindow(container.Form(), GW_CHILD), nullptr);
    }
}

using Activation = InContainer;

TEST_F(Activation, GoesUpAndDownInTheOrderThatContainersExpect)
{
    embedded.Start();
    EXPECT_EQ(container.TakeLog(), "OnInPlaceActivate\nOnUIActivate\nOnFocus in\n");
    EXPECT_TRUE(container.active);
    EXPECT_EQ(GetFocus(), embedded.Tree());

    EXPECT_HRESULT_SUCCEEDED(embedded.As<IOleInPlaceObject>()->UIDeactivate());
    EXPECT_EQ(container.TakeLog(), "OnUIDeactivate\n");
    EXPECT_FALSE(container.active);

    EXPECT_HRESULT_SUCCEEDED(embedded.As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_EQ(container.TakeLog(), "OnFocus out\nOnInPlaceDeactivate\n");
    EXPECT_FALSE(IsWindowVisible(embedded.Tree()));
    EXPECT_EQ(GetFocus(), container.Form());

    EXPECT_EQ(embedded.Window(), nullptr);
}

TEST_F(Activation, KeepsTheTreeWhileTheControlIsHiddenAndWhenItsFormEnds)
{
    embedded.Start();
    ASSERT_HRESULT_SUCCEEDED(embedded.control->Enumerate());
    const LRESULT loaded = SendMessageW(embedded.Tree(), TVM_GETCOUNT, 0, 0);
    EXPECT_GT(loaded, 1);
    EXPECT_HRESULT_SUCCEEDED(embedded.As<IOleInPlaceObject>()->InPlaceDeactivate());
    EXPECT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_SHOW));
    EXPECT_EQ(SendMessageW(embedded.Tree(), TVM_GETCOUNT, 0, 0), loaded);
    EXPECT_TRUE(IsWindowVisible(embedded.Tree()));

    container.active.Reset();
    container.DestroyForm();
    DrainMessages();
    EXPECT_HRESULT_SUCCEEDED(embedded.control->put_FullRowSelect(VARIANT_TRUE));
    container.NewForm();
    EXPECT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_SHOW));
    EXPECT_TRUE(IsChild(container.Form(), embedded.Tree()));
    EXPECT_GT(SendMessageW(embedded.Tree(), TVM_GETCOUNT, 0, 0), 1);
}

TEST_F(Activation, VerbsShowHideAndOpenTheProperties)
{
    ASSERT_HRESULT_SUCCEEDED(embedded.SetSite());
    EXPECT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_SHOW));
    EXPECT_TRUE(IsWindowVisible(embedded.Tree()));
    EXPECT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_HIDE));
    EXPECT_FALSE(IsWindowVisible(embedded.Tree()));
    EXPECT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_PRIMARY));
    EXPECT_TRUE(container.active);

    container.TakeLog();
    EXPECT_EQ(embedded.Do(OLEIVERB_PROPERTIES), S_OK);
    EXPECT_EQ(container.TakeLog(), "ShowPropertyFrame\n");
    EXPECT_EQ(embedded.Do(OLEIVERB_OPEN), E_NOTIMPL);
    EXPECT_EQ(embedded.Do(77), OLEOBJ_S_INVALIDVERB);
}

std::string VerbsOf(const Embedded& embedded)
{
    ComPtr<IEnumOLEVERB> verbs;
    EXPECT_HRESULT_SUCCEEDED(embedded.object->EnumVerbs(verbs.Put()));
    std::string numbers;
    for (OLEVERB verb{}; verbs->Next(1, &verb, nullptr) == S_OK; CoTaskMemFree(verb.lpszVerbName))
        numbers += std::to_string(verb.lVerb);
    return numbers;
}

ULONG PagesOf(const Embedded& embedded)
{
    CAUUID pages{};
    EXPECT_HRESULT_SUCCEEDED(embedded.As<ISpecifyPropertyPages>()->GetPages(&pages));
    CoTaskMemFree(pages.pElems);
    return pages.cElems;
}

TEST_F(Activation, OffersTheSystemsPropertyPagesThatThereAre)
{
    container.frameAnswer = E_NOTIMPL;
    ASSERT_HRESULT_SUCCEEDED(embedded.SetSite());
    const std::vector<const CLSID*> pages{&CLSID_CFontPropPage, &CLSID_CColorPropPage, &CLSID_CPicturePropPage};
    ComPtr<IClassFactory> real;
    if (SUCCEEDED(CoGetClassObject(*pages[0], CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory, real.PutAny()))) {
        GTEST_SKIP() << "this system has the pages";
    }
    EXPECT_EQ(PagesOf(embedded), 0u);
    EXPECT_EQ(VerbsOf(embedded), "0");
    EXPECT_EQ(embedded.Do(1), OLEOBJ_E_INVALIDVERB) << "an empty sheet never closes";
    EXPECT_HRESULT_FAILED(embedded.Do(OLEIVERB_PROPERTIES));

    PlantedClass planted;
    std::vector<DWORD> cookies(pages.size());
    for (std::size_t i = 0; i < pages.size(); ++i)
        CoRegisterClassObject(*pages[i], &planted, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookies[i]);
    EXPECT_EQ(PagesOf(embedded), 3u);
    EXPECT_EQ(VerbsOf(embedded), "01");
    for (const DWORD cookie : cookies)
        CoRevokeClassObject(cookie);
}

TEST_F(Activation, LeavesTheOldPlaceBeforeAnotherSiteIsItsOwn)
{
    TestContainer next;
    embedded.Start();
    container.TakeLog();
    EXPECT_HRESULT_SUCCEEDED(embedded.object->SetClientSite(&container));
    EXPECT_EQ(container.TakeLog(), "") << "the same one again";

    EXPECT_HRESULT_SUCCEEDED(embedded.object->SetClientSite(&next));
    EXPECT_EQ(container.TakeLog(), "OnUIDeactivate\nOnFocus out\nOnInPlaceDeactivate\n");
    EXPECT_EQ(container.References(), 0);
    EXPECT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_UIACTIVATE));
    EXPECT_TRUE(IsChild(next.Form(), embedded.Tree()));
    EXPECT_EQ(next.TakeLog(), "OnInPlaceActivate\nOnUIActivate\nOnFocus in\n");
    embedded.Close();
}

TEST_F(Activation, ComesWithTheFocusAtRunTimeOnly)
{
    ASSERT_HRESULT_SUCCEEDED(embedded.SetSite());
    ASSERT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_INPLACEACTIVATE));
    container.TakeLog();
    SetFocus(embedded.Tree());
    EXPECT_EQ(container.TakeLog(), "OnUIActivate\nOnFocus in\n");
    EXPECT_HRESULT_SUCCEEDED(embedded.As<IOleInPlaceObject>()->UIDeactivate());
    SetFocus(container.Form());

    container.SetAmbient(DISPID_AMBIENT_USERMODE, false);
    container.TakeLog();
    SetFocus(embedded.Tree());
    EXPECT_EQ(container.TakeLog(), "OnFocus in\n");
}

TEST_F(Activation, FollowsTheAmbientProperties)
{
    const auto change = [&](DISPID property, const Value& value) {
        container.SetAmbient(property, value);
        EXPECT_HRESULT_SUCCEEDED(embedded.As<IOleControl>()->OnAmbientPropertyChange(property));
    };
    const auto font = [&] { return TextOf(embedded.Members().Get(L"Font")); };
    container.SetAmbient(DISPID_AMBIENT_FONT, NewFont(L"Arial", 12).Get());
    ASSERT_HRESULT_SUCCEEDED(LoadBag(embedded));
    const auto large = NewFont(L"Arial", 20, true);
    change(DISPID_AMBIENT_FONT, large.Get());
    EXPECT_EQ(font(), TextOf(large.Get()));
    ASSERT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_UIACTIVATE));
    change(DISPID_AMBIENT_FONT, NewFont(L"Arial", 14).Get());
    EXPECT_EQ(font(), TextOf(large.Get())) << "it has been seen with this one";

    change(DISPID_AMBIENT_UIDEAD, true);
    EXPECT_FALSE(container.active);
    EXPECT_FALSE(IsWindowEnabled(GetParent(embedded.Tree())));
    change(DISPID_AMBIENT_UIDEAD, false);
    EXPECT_TRUE(IsWindowEnabled(GetParent(embedded.Tree())));
}

using Extent = InContainer;

TEST_F(Extent, SizesTheControlHiddenAndInPlace)
{
    ASSERT_HRESULT_SUCCEEDED(embedded.SetSite());
    SIZEL size{5080, 2540};
    EXPECT_HRESULT_SUCCEEDED(embedded.object->SetExtent(DVASPECT_CONTENT, &size));
    SIZEL read{};
    EXPECT_HRESULT_SUCCEEDED(embedded.As<IViewObject2>()->GetExtent(DVASPECT_CONTENT, -1, nullptr, &read));
    EXPECT_EQ(read.cx, 5080);
    EXPECT_EQ(read.cy, 2540);
    const HDC screen = GetDC(nullptr);
    const int inch = GetDeviceCaps(screen, LOGPIXELSX);
    ReleaseDC(nullptr, screen);
    RECT tree{};
    GetWindowRect(embedded.Tree(), &tree);
    EXPECT_EQ(tree.right - tree.left, 2 * inch);
    EXPECT_EQ(tree.bottom - tree.top, inch);

    ASSERT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_INPLACEACTIVATE));
    container.resized = embedded.object.Get();
    size = {2540, 2540};
    EXPECT_HRESULT_SUCCEEDED(embedded.object->SetExtent(DVASPECT_CONTENT, &size));
    GetWindowRect(embedded.Tree(), &tree);
    EXPECT_EQ(tree.right - tree.left, inch);

    EXPECT_EQ(embedded.object->SetExtent(DVASPECT_ICON, &size), DV_E_DVASPECT);
    size = {-1, 5};
    EXPECT_HRESULT_FAILED(embedded.object->SetExtent(DVASPECT_CONTENT, &size));
    size = {0, 0};
    EXPECT_HRESULT_SUCCEEDED(embedded.object->SetExtent(DVASPECT_CONTENT, &size));
}

TEST_F(Extent, IsClippedToWhatTheContainerShows)
{
    embedded.Start();
    const RECT place{20, 30, 220, 180};
    const RECT clip{70, 0, 1000, 1000};
    EXPECT_HRESULT_SUCCEEDED(embedded.As<IOleInPlaceObject>()->SetObjectRects(&place, &clip));
    RECT where{};
    GetWindowRect(embedded.Window(), &where);
    MapWindowPoints(nullptr, container.Form(), reinterpret_cast<POINT*>(&where), 2);
    EXPECT_TRUE(EqualRect(&where, &place));
    RECT seen{};
    GetWindowRgnBox(embedded.Window(), &seen);
    EXPECT_EQ(seen.left, 50);
    EXPECT_EQ(seen.right, 200);
}

}  // namespace
}  // namespace sylvex::test
