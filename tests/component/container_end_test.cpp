#include "tests/component/test_bag.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

TEST(EndInsideAnEvent, MayTakeTheFormAlong)
{
    for (const bool formToo : {false, true}) {
        TestContainer container;
        Embedded embedded(container);
        embedded.Start();
        EventLog events(embedded.Members());
        events.On(L"KeyDown", [&](auto&) {
            events.Disconnect();
            if (formToo) container.active.Reset(), container.DestroyForm();
            embedded.Close();
        });
        const HWND tree = embedded.Tree();
        container.Key(WM_KEYDOWN, VK_DOWN);
        DrainMessages();
        EXPECT_EQ(events.Take(), L"KeyDown 40 0");
        EXPECT_FALSE(IsWindow(tree));
        EXPECT_EQ(container.References(), 0);
    }
}

using End = InContainer;

LRESULT CALLBACK SaveFromForm(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR object)
{
    if (message != WM_DESTROY) return DefSubclassProc(window, message, wParam, lParam);
    SetParent(window, nullptr);
    reinterpret_cast<IOleInPlaceObject*>(object)->InPlaceDeactivate();
    return 0;
}

TEST_F(End, OfAFormMayLeaveTheControlToTheNextOne)
{
    embedded.Start();
    ASSERT_HRESULT_SUCCEEDED(embedded.control->Enumerate());
    const auto object = embedded.As<IOleInPlaceObject>();
    const HWND window = embedded.Window();
    SetWindowSubclass(window, &SaveFromForm, 1, reinterpret_cast<DWORD_PTR>(object.Get()));
    container.DestroyForm();
    ASSERT_TRUE(IsWindow(window));
    RemoveWindowSubclass(window, &SaveFromForm, 1);
    container.NewForm();
    ASSERT_HRESULT_SUCCEEDED(embedded.Do(OLEIVERB_INPLACEACTIVATE));
    EXPECT_GT(TreeView_GetCount(embedded.Tree()), 1);
    EXPECT_HRESULT_SUCCEEDED(embedded.control->Enumerate());
    int windows = 0;
    for (HWND child = nullptr; (child = FindWindowExW(window, child, nullptr, nullptr)) != nullptr;)
        ++windows;
    EXPECT_EQ(windows, 1);
}

TEST_F(End, SavesThroughTheSiteOnlyWhenThereIsSomethingToSave)
{
    embedded.Start();
    container.TakeLog();
    EXPECT_HRESULT_SUCCEEDED(embedded.object->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_NE(container.TakeLog().find("SaveObject"), std::string::npos) << "a new control";
    TestBag bag;
    EXPECT_HRESULT_SUCCEEDED(embedded.As<IPersistPropertyBag>()->Save(&bag, TRUE, FALSE));
    EXPECT_HRESULT_SUCCEEDED(embedded.object->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_EQ(container.TakeLog().find("SaveObject"), std::string::npos);
}

}  // namespace
}  // namespace sylvex::test
