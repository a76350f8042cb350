// Dragging and renaming against the real shell and a real tree window: what the shell does where it has to refuse, to
// ask or to copy, and never a byte lost.

#include <windows.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>

#include "dragdrop/drag_tree.h"
#include "platform/text.h"
#include "tests/support/hand.h"

namespace sylvex {
namespace {

std::wstring Extended(const std::wstring& path)
{
    return L"\\\\?\\" + path;
}

std::string BytesOf(const std::wstring& path)
{
    const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_READ, 7, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) return "(unreadable)";
    char bytes[256];
    DWORD read = 0;
    ReadFile(file, bytes, sizeof bytes, &read, nullptr);
    CloseHandle(file);
    return {bytes, read};
}

void Write(const std::wstring& path, const std::string& bytes)
{
    const HANDLE file = CreateFileW(Extended(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    DWORD written = 0;
    WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
}

/// All below a folder: names relative to it with the bytes of the files, folders as "\".
std::map<std::wstring, std::string> Contents(const std::wstring& folder, const std::wstring& below = L"")
{
    std::map<std::wstring, std::string> all;
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((Extended(folder + below) + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return all;
    do {
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L"..") continue;
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        all[below + L"\\" + name] = isFolder ? "\\" : BytesOf(folder + below + L"\\" + name);
        if (isFolder) all.merge(Contents(folder, below + L"\\" + name));
    } while (FindNextFileW(search, &entry) != 0);
    FindClose(search);
    return all;
}

/// The bytes of all files, wherever they are.
std::multiset<std::string> Bytes(const std::map<std::wstring, std::string>& contents)
{
    std::multiset<std::string> bytes;
    for (const auto& [name, text] : contents)
        if (text != "\\") bytes.insert(text);
    return bytes;
}

/// Presses a button of every dialog that opens on this thread while it lives.
class DialogHand {
public:
    explicit DialogHand(WORD button)
    {
        s_button = button;
        s_dialogs = 0;
        m_timer = SetTimer(nullptr, 0, 100, &OnTimer);
    }
    ~DialogHand() { KillTimer(nullptr, m_timer); }
    DialogHand(const DialogHand&) = delete;
    DialogHand& operator=(const DialogHand&) = delete;
    int Dialogs() const { return s_dialogs; }

private:
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) { EnumThreadWindows(GetCurrentThreadId(), &OnWindow, 0); }
    static BOOL CALLBACK OnWindow(HWND window, LPARAM)
    {
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (std::wstring_view(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
        ++s_dialogs;
        PostMessageW(window, WM_COMMAND, s_button, 0);
        return FALSE;
    }
    static inline WORD s_button;
    static inline int s_dialogs;
    UINT_PTR m_timer;
};

/// A folder on another drive, empty; nothing when this machine has no other that can be written to.
class OtherDrive {
public:
    OtherDrive()
    {
        for (const wchar_t* place : {L"Z:\\dev\\shm", L"Z:\\tmp", L"D:", L"E:"}) {
            const std::wstring path = place + (L"\\SylvexScratch" + std::to_wstring(GetCurrentProcessId()));
            if (CreateDirectoryW(path.c_str(), nullptr) == 0) continue;
            m_path = path;
            return;
        }
    }
    ~OtherDrive() { Remove(m_path); }
    OtherDrive(const OtherDrive&) = delete;
    OtherDrive& operator=(const OtherDrive&) = delete;
    const std::wstring& Path() const { return m_path; }
    static void Remove(const std::wstring& path)
    {
        if (path.empty()) return;
        for (const auto& [name, bytes] : Contents(path)) {
            if (bytes == "\\") {
                Remove(path + name);
            } else {
                DeleteFileW((path + name).c_str());
            }
        }
        RemoveDirectoryW(path.c_str());
    }

private:
    std::wstring m_path;
};

class DragRealTest : public testing::Test {
protected:
    void Load(std::initializer_list<std::wstring> files, const std::wstring& open)
    {
        for (const std::wstring& name : files) Write(scene.desk().MakeFile(name), "bytes of " + std::to_string(++m_written));
        scene.Enumerate();
        scene.control().LetDragDropEnable(true);
        scene.At(open).EnsureVisible();
        hand.reset();
        hand = std::make_unique<Hand>(scene);
        before = Contents(scene.desk().Base());
    }
    /// Drops and gives the messages; dialogs of the shell are answered with `button`.
    std::wstring Drop(Node& from, Node& to, WORD button = IDCANCEL)
    {
        const DialogHand answer(button);
        hand->Drop(from, to);
        dialogs = answer.Dialogs();
        EXPECT_EQ((*hand)->LeftOver(), "");
        return scene.desk().TakeMessages();
    }
    std::wstring Told(const std::wstring& from, const std::wstring& to) const
    {
        return L"[Successful drop of folder " + scene.desk().PathOf(from) + L"\ronto " + scene.desk().PathOf(to) + L"]";
    }
    std::map<std::wstring, std::string> After() const { return Contents(scene.desk().Base()); }

    mutable Scene scene;
    std::unique_ptr<Hand> hand;
    std::map<std::wstring, std::string> before;
    int dialogs = 0;

private:
    int m_written = 0;
};

TEST_F(DragRealTest, ATargetThatHoldsTheNameIsLeftAloneUnlessThePersonAgrees)
{
    for (const WORD button : {WORD{IDNO}, WORD{IDCANCEL}}) {
        Load({L"t\\a\\f.txt", L"t\\a\\g.txt", L"t\\b\\a\\f.txt"}, L"t/b");
        const std::wstring told = Drop(scene.At(L"t/a"), scene.At(L"t/b"), button);
        EXPECT_EQ(After(), before);
        EXPECT_TRUE(told.ends_with(Told(L"t\\a", L"t\\b"))) << "the confirmation is shown whatever happened";
    }
}

TEST_F(DragRealTest, WriteProtectedFilesMoveOrStayWhole)
{
    Load({L"t\\a\\f.txt", L"t\\b\\x.txt"}, L"t/b");
    for (const wchar_t* name : {L"t\\a\\f.txt", L"t\\a"})
        SetFileAttributesW(scene.desk().PathOf(name).c_str(), FILE_ATTRIBUTE_READONLY);
    Drop(scene.At(L"t/a"), scene.At(L"t/b"), IDYES);
    EXPECT_EQ(Bytes(After()), Bytes(before));
    EXPECT_NE(scene.desk().Has(L"t\\a\\f.txt"), scene.desk().Has(L"t\\b\\a\\f.txt"));
}

TEST_F(DragRealTest, AFolderInUseMovesOrStaysWhole)
{
    Load({L"t\\a\\f.txt", L"t\\a\\sub\\g.txt", L"t\\b\\x.txt"}, L"t/b");
    const HANDLE held = CreateFileW(scene.desk().PathOf(L"t\\a\\f.txt").c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    Drop(scene.At(L"t/a"), scene.At(L"t/b"));
    CloseHandle(held);
    EXPECT_EQ(Bytes(After()), Bytes(before));
}

TEST_F(DragRealTest, AcrossDrivesAllArrivesBeforeAnythingGoes)
{
    const OtherDrive other;
    if (other.Path().empty()) GTEST_SKIP() << "there is no other drive here";
    Load({L"t\\a\\f.txt", L"t\\a\\\u4E2D\u6587\\g.txt", L"t\\b\\x.txt"}, L"t/b");
    Node* target = &scene.nodes().Item(other.Path().substr(0, 3));
    target->SetExpanded(true);
    // Only the way to it: siblings are in the way of a hand, and some platforms hide a part of it.
    while (target->Child() != nullptr) scene.nodes().Remove(*target->Child());
    for (const std::wstring& part : SplitText(other.Path().substr(3), L'\\')) {
        scene.nodes().AddChild(*target, L"-", 0);  // a folder with one childless child would be read again
        target = &scene.nodes().AddChild(*target, part, 0);
    }
    target->EnsureVisible();
    EXPECT_EQ(Drop(scene.At(L"t/a"), *target),
              L"[Successful drop of folder " + scene.desk().PathOf(L"t\\a") + L"\ronto " + other.Path() + L"]");
    EXPECT_EQ(Contents(other.Path()), (std::map<std::wstring, std::string>{{L"\\a", "\\"},
                                                                          {L"\\a\\f.txt", "bytes of 1"},
                                                                          {L"\\a\\\u4E2D\u6587", "\\"},
                                                                          {L"\\a\\\u4E2D\u6587\\g.txt", "bytes of 2"}}));
    EXPECT_FALSE(scene.desk().Has(L"t\\a"));
    // And one that goes meanwhile.
    OtherDrive::Remove(other.Path());
    EXPECT_TRUE(Drop(scene.At(L"t/b"), *target).starts_with(L"[124]"));
    EXPECT_TRUE(scene.desk().Has(L"t\\b\\x.txt"));
}

TEST_F(DragRealTest, PathsLongerThanTheShellTakesAreSafe)
{
    const std::wstring deep = std::wstring(110, L'x') + L"\\" + std::wstring(100, L'y');
    Load({L"t\\" + deep + L"\\a\\inner\\f.txt", L"t\\b\\x.txt"}, L"t/b");
    Node& outer = scene.At(L"t/" + std::wstring(110, L'x'));
    Node& a = scene.At(L"t/" + std::wstring(110, L'x') + L"/" + std::wstring(100, L'y') + L"/a");
    ASSERT_GT(scene.control().BuildFullPath(&a).size(), 230u);
    // Within reach itself, but what it holds is not, at its new place.
    Node& target = scene.At(L"t/b");
    const std::wstring told = Drop(outer, target);
    EXPECT_EQ(Bytes(After()), Bytes(before)) << std::string(told.begin(), told.end());
}

TEST_F(DragRealTest, AFolderOutOfTheShellsReachStays)
{
    const std::wstring x(120, L'x');
    const std::wstring y(120, L'y');
    Load({L"t\\" + x + L"\\" + y + L"\\a\\f.txt", L"t\\b\\x.txt"}, L"t/b");
    Node& a = scene.At(L"t/" + x + L"/" + y + L"/a");
    ASSERT_GT(scene.control().BuildFullPath(&a).size(), 260u);
    a.EnsureVisible();
    const std::wstring told = Drop(a, scene.At(L"t/b"));
    EXPECT_EQ(Bytes(After()), Bytes(before));
    EXPECT_NE(told, L"");
    hand->Edit(scene.At(L"t/b"));
    (*hand)->Type(std::wstring(250, L'z'));
    EXPECT_EQ(Bytes(After()), Bytes(before));
}

TEST_F(DragRealTest, ARenameOntoANameInUseChangesNothing)
{
    Load({L"t\\a\\f.txt", L"t\\b\\g.txt", L"t\\c.txt", L"t\\d.txt"}, L"t/b");
    const DialogHand answer(IDCANCEL);
    for (const auto& [from, to] : {std::pair(L"t/a", L"b"), std::pair(L"t/c.txt", L"d.txt"), std::pair(L"t/d.txt", L"b")}) {
        scene.Enumerate();
        hand->Edit(scene.At(from));
        (*hand)->Type(to);
        EXPECT_EQ(After(), before);
        EXPECT_NE(scene.desk().TakeMessages(), L"");
        (*hand)->Wait(200);
        if ((*hand)->Label() != L"(closed)") (*hand)->PressKey(kEscapeKey);
    }
}

// ---- the messages themselves

struct Recorded {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
};
std::vector<Recorded> g_recorded;
WNDPROC g_native;

LRESULT CALLBACK Record(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    g_recorded.push_back({message, wParam, lParam});
    return CallWindowProcW(g_native, window, message, wParam, lParam);
}

TEST_F(DragRealTest, EachWrapperSendsItsOneMessageToTheWindow)
{
    Load({L"t\\a\\sub\\f.txt", L"t\\b\\x.txt"}, L"t/b");
    DragTree tree(scene.control().State());
    const WindowHandle window = scene.control().Tree().hWnd();
    const auto itemOf = [&](Node& node) { return scene.control().Tree().ItemOf(node); };
    const ItemHandle item = itemOf(scene.At(L"t/b"));
    Rect rect;
    TVITEM record;
    record.hItem = item;
    record.mask = TVIF_HANDLE | TVIF_PARAM | TVIF_CHILDREN;
    TVHITTESTINFO hit;
    hit.pt = hand->On(scene.At(L"t/b"));
    const auto address = [](auto& value) { return reinterpret_cast<LPARAM>(&value); };
    const LPARAM word = static_cast<LPARAM>(item);
    struct {
        std::function<std::uintptr_t()> call;
        Recorded sent;
        std::uintptr_t answer;
    } const cases[] = {
        {[&] { return tree.TreeView_GetItemRect(window, item, rect, true); }, {4356, 1, address(rect)}, 1},
        {[&] { return tree.TreeView_GetNextItem(window, item, 2); }, {4362, 2, word}, itemOf(scene.At(L"t/a"))},
        {[&] { return tree.TreeView_GetParent(window, item); }, {4362, 3, word}, itemOf(scene.At(L"t"))},
        {[&] { return tree.TreeView_SelectDropTarget(window, item); }, {4363, 8, word}, 1},
        {[&] { return tree.TreeView_GetDropHilight(window); }, {4362, 8, 0}, item},
        {[&] { return tree.TreeView_SelectDropTarget(window, 0); }, {4363, 8, 0}, 1},
        {[&] { return tree.TreeView_GetRoot(window); }, {4362, 0, 0}, itemOf(scene.nodes().Item(1))},
        {[&] { return tree.TreeView_Select(window, item, 9); }, {4363, 9, word}, 1},
        {[&] { return tree.TreeView_GetItem(window, record); }, {4364, 0, address(record)}, 1},
        {[&] { return tree.TreeView_HitTest(window, hit); }, {4369, 0, address(hit)}, item},
        {[&] { return tree.TreeView_Expand(window, itemOf(scene.At(L"t/a")), 2); },
         {4354, 2, static_cast<LPARAM>(itemOf(scene.At(L"t/a")))}, 1},
    };
    const Rect label = hand->LabelOf(scene.At(L"t/b"));
    const HWND native = reinterpret_cast<HWND>(window);
    g_native = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(native, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Record)));
    for (const auto& [call, sent, answer] : cases) {
        g_recorded.clear();
        EXPECT_EQ(call(), answer) << sent.message;
        ASSERT_FALSE(g_recorded.empty()) << sent.message;
        EXPECT_EQ(g_recorded[0].message, sent.message);
        EXPECT_EQ(g_recorded[0].wParam, sent.wParam) << sent.message;
        EXPECT_EQ(g_recorded[0].lParam, sent.lParam) << sent.message;
    }
    g_recorded.clear();
    const ImageListHandle picture = tree.TreeView_CreateDragImage(window, item);
    EXPECT_NE(picture, 0u);
    EXPECT_EQ(g_recorded[0].message, 4370u);
    SetWindowLongPtrW(native, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_native));
    scene.desk().Get().images.Destroy(picture);
    EXPECT_EQ(rect, label);
    EXPECT_TRUE(scene.At(L"t/a").Expanded()) << "an opening by message loads like any other";
    EXPECT_TRUE(tree.IsTVItemCollapsedParent(window, itemOf(scene.At(L"t/a/sub"))) ||
                scene.At(L"t/a/sub").Children() == 0);
}

}  // namespace
}  // namespace sylvex
