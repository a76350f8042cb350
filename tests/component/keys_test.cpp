#include <optional>

#include "tests/component/box_reader.h"
#include "tests/component/test_container.h"

namespace sylvex::test {
namespace {

class Keys : public InContainer {
protected:
    void SetUp() override
    {
        embedded.Start();
        events.emplace(embedded.Members());
        events->On(L"KeyDown", [this](std::vector<VARIANT*>& arguments) { keys.push_back(*V_I2REF(arguments[0])); });
        container.TakeLog();
    }

    HRESULT Translate(UINT message, WPARAM key)
    {
        MSG offered{GetFocus(), message, key, 1, 0, {}};
        return embedded.As<IOleInPlaceActiveObject>()->TranslateAccelerator(&offered);
    }

    std::vector<short> keys;  ///< that the host has heard go down
    std::optional<EventLog> events;
};

TEST_F(Keys, OfTheTreeComeBeforeTheContainersOwn)
{
    const std::vector<short> own{VK_RETURN, VK_ESCAPE, VK_UP,   VK_DOWN, VK_LEFT,  VK_RIGHT,    VK_HOME,
                                 VK_END,    VK_PRIOR,  VK_NEXT, 'A',     VK_SPACE, VK_MULTIPLY, VK_F2};
    for (const short key : own)
        EXPECT_EQ(Translate(WM_KEYDOWN, static_cast<WPARAM>(key)), S_OK) << key;
    DrainMessages();
    EXPECT_EQ(keys, own);
    EXPECT_EQ(container.TakeLog(), "") << "the container is not asked";
}

TEST_F(Keys, ReachTheTreeWhicheverWindowOfTheControlTheContainerNames)
{
    const HWND window = embedded.Window();
    MSG offered{window, WM_KEYDOWN, VK_DOWN, 1, 0, {}};
    EXPECT_EQ(embedded.As<IOleInPlaceActiveObject>()->TranslateAccelerator(&offered), S_OK);
    DrainMessages();
    EXPECT_EQ(keys, std::vector<short>{VK_DOWN});
    SetFocus(container.Form());
    container.TakeLog();
    SetFocus(window);
    EXPECT_EQ(GetFocus(), embedded.Tree());
    EXPECT_NE(container.TakeLog().find("OnFocus in"), std::string::npos);
}

TEST_F(Keys, ThatTheTreeHasNoUseForGoToTheContainer)
{
    for (const WPARAM key : {VK_TAB, VK_F5, VK_INSERT})
        EXPECT_EQ(Translate(WM_KEYDOWN, key), S_OK) << key;
    EXPECT_EQ(container.TakeLog(), "Key 9\nKey 116\nKey 45\n");
    EXPECT_TRUE(keys.empty());

    container.keyAnswer = S_FALSE;
    EXPECT_EQ(Translate(WM_KEYDOWN, VK_TAB), S_FALSE) << "the container's loop goes on with it";
    SetFocus(container.Form());
    EXPECT_EQ(Translate(WM_KEYDOWN, VK_RETURN), S_FALSE) << "the focus is elsewhere";
}

TEST_F(Keys, WhileALabelIsEditedBelongToTheEdit)
{
    embedded.control->put_LabelEdit(tvwAutomatic);
    const HWND tree = embedded.Tree();
    const auto root = SendMessageW(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0);
    SendMessageW(tree, TVM_SELECTITEM, TVGN_CARET, root);
    const auto open = [&] { return reinterpret_cast<HWND>(SendMessageW(tree, TVM_EDITLABELW, 0, root)); };
    HWND edit = open();
    ASSERT_TRUE(IsWindow(edit));
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_TRUE(container.active) << "the interface stays while the label has the focus";
    container.TakeLog();

    SetWindowTextW(edit, L"");
    container.Key(WM_KEYDOWN, 'Q');
    container.Key(WM_KEYDOWN, VK_LEFT);
    wchar_t text[8] = {};
    GetWindowTextW(edit, text, ARRAYSIZE(text));
    EXPECT_STREQ(text, L"q");
    EXPECT_TRUE(keys.empty()) << "the tree hears nothing";

    container.Key(WM_KEYDOWN, VK_ESCAPE);
    EXPECT_FALSE(SendMessageW(tree, TVM_GETEDITCONTROL, 0, 0));
    EXPECT_EQ(GetFocus(), tree);
    EXPECT_EQ(container.TakeLog(), "") << "the focus never left the control";

    const BoxReader closer;
    edit = open();
    SetFocus(container.Form());
    DrainMessages();
    EXPECT_EQ(container.TakeLog(), "DisableModeless\nEnableModeless\nOnFocus out\n");
}

TEST_F(Keys, RaiseNoEventsWhileTheyAreFrozenOrTheFormIsBeingDesigned)
{
    const ComPtr<IOleControl> control = embedded.As<IOleControl>();
    control->FreezeEvents(TRUE);
    control->FreezeEvents(TRUE);
    container.Key(WM_KEYDOWN, VK_DOWN);
    control->FreezeEvents(FALSE);
    container.Key(WM_KEYDOWN, VK_DOWN);
    EXPECT_TRUE(keys.empty());
    control->FreezeEvents(FALSE);
    container.SetAmbient(DISPID_AMBIENT_USERMODE, false);
    container.Key(WM_KEYDOWN, VK_DOWN);
    EXPECT_TRUE(keys.empty());
    container.SetAmbient(DISPID_AMBIENT_USERMODE, true);
    container.Key(WM_KEYDOWN, VK_UP);
    EXPECT_EQ(keys, std::vector<short>{VK_UP});
}

TEST_F(Keys, InAMessageThatCannotBeReadAreAnError)
{
    void* const reserved = VirtualAlloc(nullptr, 4096, MEM_RESERVE, PAGE_NOACCESS);
    for (const LONG_PTR damaged : {LONG_PTR{16}, reinterpret_cast<LONG_PTR>(reserved)}) {
        const auto active = embedded.As<IOleInPlaceActiveObject>();
        EXPECT_EQ(active->TranslateAccelerator(reinterpret_cast<MSG*>(damaged)), E_POINTER);
        for (const HWND handed : {embedded.Window(), embedded.Tree()}) {
            SendMessageW(handed, WM_GETDLGCODE, VK_RETURN, damaged);
            SendMessageW(handed, WM_NOTIFY, 1, damaged);
        }
    }
    VirtualFree(reserved, 0, MEM_RELEASE);
    EXPECT_EQ(Translate(WM_KEYDOWN, VK_DOWN), S_OK);
}

}  // namespace
}  // namespace sylvex::test
