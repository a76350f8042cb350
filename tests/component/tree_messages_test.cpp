// The wrappers of the tree window's messages, and what arrives at a real tree window.

#include <windows.h>

#include <gtest/gtest.h>

#include <vector>

#include "dragdrop/drag_tree.h"
#include "tests/support/hand.h"

namespace sylvex {
namespace {

constexpr UINT kFirst = 0x1100;
constexpr UINT kOnLabel = 4;

struct Message {
    UINT number;
    WPARAM wParam;
    LPARAM lParam;
    bool operator==(const Message&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Message& message)
{
    return out << message.number << ' ' << message.wParam << ' ' << message.lParam;
}

/// Writes down the tree messages that a window gets from outside while it lives.
class Recorder {
public:
    explicit Recorder(HWND window) : m_window(window)
    {
        s_messages.clear();
        s_native = Exchange(&Record);
    }
    ~Recorder() { Exchange(s_native); }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    static std::vector<Message> Take() { return std::exchange(s_messages, {}); }

private:
    WNDPROC Exchange(WNDPROC procedure)
    {
        return reinterpret_cast<WNDPROC>(
            SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
    }
    static LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        const bool ofItems = message >= kFirst && message < kFirst + 0x100;
        if (ofItems && s_depth == 0) s_messages.push_back({message, wParam, lParam});
        ++s_depth;
        const LRESULT answer = CallWindowProcW(s_native, window, message, wParam, lParam);
        --s_depth;
        return answer;
    }
    static inline std::vector<Message> s_messages;
    static inline WNDPROC s_native;
    static inline int s_depth;  // what the tree sends itself meanwhile is its own affair
    HWND m_window;
};

TEST(TreeMessages, EachWrapperSendsItsOneMessageAndTellsTheAnswer)
{
    Scene scene;
    scene.desk().Make({L"a\\sub\\", L"b\\x\\"});
    scene.Enumerate();
    Hand hand(scene);
    Node& a = scene.At(L"a");
    Node& b = scene.At(L"b");
    b.EnsureVisible();
    DragTree tree(scene.control().Parts(), scene.control().State().drag);
    const WindowHandle window = scene.control().Tree().hWnd();
    const ItemHandle first = scene.control().Tree().ItemOf(a);
    const ItemHandle item = scene.control().Tree().ItemOf(b);
    const ItemHandle parent = scene.control().Tree().ItemOf(*b.Parent());
    const ItemHandle root = scene.control().Tree().ItemOf(scene.nodes().Item(1));
    const Rect label = hand.LabelOf(b);
    Rect rect;
    Rect row;
    TVITEM record;
    record.hItem = item;
    record.mask = TVIF_STATE | TVIF_CHILDREN;
    TVITEM picture;
    picture.hItem = item;
    picture.mask = TVIF_IMAGE;
    TVHITTESTINFO hit;
    hit.pt = hand.On(b);
    const auto at = [](auto& value) { return reinterpret_cast<LPARAM>(&value); };
    const LPARAM word = static_cast<LPARAM>(item);
    const struct {
        std::function<std::uintptr_t()> call;
        Message sent;
        std::uintptr_t answer;
    } cases[] = {
        {[&] { return tree.TreeView_GetItemRect(window, item, rect, true); }, {4356, 1, at(rect)}, 1},
        {[&] { return tree.TreeView_GetItemRect(window, item, row, false); }, {4356, 0, at(row)}, 1},
        {[&] { return tree.TreeView_GetNextItem(window, item, 2); }, {4362, 2, word}, first},
        {[&] { return tree.TreeView_GetParent(window, item); }, {4362, 3, word}, parent},
        {[&] { return tree.TreeView_SelectDropTarget(window, item); }, {4363, 8, word}, 1},
        {[&] { return tree.TreeView_GetDropHilight(window); }, {4362, 8, 0}, item},
        {[&] { return tree.TreeView_SelectDropTarget(window, 0); }, {4363, 8, 0}, 1},
        {[&] { return tree.TreeView_GetDropHilight(window); }, {4362, 8, 0}, 0},
        {[&] { return tree.TreeView_GetRoot(window); }, {4362, 0, 0}, root},
        {[&] { return tree.TreeView_Select(window, item, 9); }, {4363, 9, word}, 1},
        {[&] { return tree.TreeView_GetItem(window, record); }, {4364, 0, at(record)}, 1},
        {[&] { return tree.TreeView_SetItem(window, picture); }, {4365, 0, at(picture)}, 1},
        {[&] { return tree.TreeView_HitTest(window, hit); }, {4369, 0, at(hit)}, item},
        {[&] { return tree.TreeView_Expand(window, item, 2); }, {4354, 2, word}, 1},
    };
    ImageListHandle dragged = 0;
    {
        const Recorder recorder(reinterpret_cast<HWND>(window));
        for (const auto& [call, sent, answer] : cases) {
            EXPECT_EQ(call(), answer) << sent;
            EXPECT_EQ(recorder.Take(), std::vector{sent});
        }
        dragged = tree.TreeView_CreateDragImage(window, item);
        EXPECT_EQ(recorder.Take(), (std::vector<Message>{{4370, 0, word}}));
    }
    EXPECT_NE(scene.desk().Get().drag.PictureSize(dragged).cx, 0) << "a list with a picture in it";
    scene.desk().Get().images.Destroy(dragged);
    EXPECT_EQ(rect, label);
    EXPECT_EQ(row.left, 0) << "the whole row";
    EXPECT_NE(record.cChildren, 0);
    EXPECT_EQ(record.state & TVIS_EXPANDED, 0u);
    EXPECT_NE(hit.flags & kOnLabel, 0u);
    EXPECT_TRUE(b.Expanded()) << "an opening by message loads like any other";
}

}  // namespace
}  // namespace sylvex
