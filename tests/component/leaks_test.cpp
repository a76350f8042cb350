#include "tests/component/handles.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

/// Lists, opens and ticks, as a person and a host would.
void UseTree(const Value& control)
{
    const ListViewWindow list;
    control.Set(L"ReqListView", list.window);
    control.Put(L"FileFilter", L"*");
    control.Call(L"Enumerate");
    const Value drive = NodesOf(control).Get(L"Item", {L"C:\\"});
    drive.Put(L"Expanded", true);
    const Value folder = drive.Get(L"Child");
    folder.Put(L"Checked", true);
    control.Call(L"CheckNodeSelective", {folder});
    EXPECT_EQ(control.Get(L"ReqListView").Get(L"ListItems").Get(L"Count").Number(), 1);
}

TEST(Leaks, AreNoneAfterManyLivesOfTheControl)
{
    TestContainer container;
    const ComPtr<IFontDisp> font = NewFont(L"Arial", 12);
    container.SetAmbient(DISPID_AMBIENT_FONT, font.Get());
    const ComPtr<IPictureDisp> picture = NewPicture();
    const auto live = [&](bool full) {
        Embedded embedded(container);
        embedded.Start();
        embedded.control->put_Checkboxes(VARIANT_TRUE);
        embedded.control->putref_Font(font.Get());
        embedded.control->putref_MouseIcon(picture.Get());
        embedded.control->putref_Picture(picture.Get());
        if (full) UseTree(embedded.Members());
    };
    for (int i = 0; i < 20; ++i)
        live(i % 5 == 0);
    const Handles before;
    ASSERT_GT(before.gdi, 0u);
    for (int i = 0; i < 150; ++i)
        live(i % 5 == 0);
    const Handles after;
    EXPECT_EQ(container.References(), 0);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LE(after.gdi, before.gdi + 5);
    EXPECT_LE(after.user, before.user + 5);
    EXPECT_FALSE(ComponentIsBusy());
}

}  // namespace
}  // namespace sylvex::test
