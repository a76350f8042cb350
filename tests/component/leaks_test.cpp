#include <gtest/gtest.h>

#include "tests/component/handles.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

TEST(Leaks, AreNoneAfterManyLivesOfTheControl)
{
    TestContainer container;
    container.font = NewFont(L"Arial", 12);
    const ComPtr<IPictureDisp> picture = NewPicture();
    const auto live = [&](bool full) {
        Embedded embedded(container);
        embedded.Start();
        embedded.control->put_Checkboxes(VARIANT_TRUE);
        embedded.control->putref_Font(container.font.Get());
        embedded.control->putref_MouseIcon(picture.Get());
        embedded.control->putref_Picture(picture.Get());
        if (full) embedded.control->Enumerate();
    };
    for (int i = 0; i < 20; ++i)
        live(i % 5 == 0);
    const Handles before;
    ASSERT_GT(before.gdi, 0u);
    for (int i = 0; i < 500; ++i)
        live(i % 50 == 0);
    const Handles after;
    EXPECT_EQ(container.References(), 0);
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_LE(after.gdi, before.gdi + 5);
    EXPECT_LE(after.user, before.user + 5);
    EXPECT_TRUE(IsComponentIdle());
}

}  // namespace
}  // namespace sylvex::test
