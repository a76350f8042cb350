// What the real shell does to real files under drops and renames in the component: whatever it can, cannot or will not
// do, no file is lost, and the person is told.

#include <algorithm>
#include <set>

#include "platform/text.h"
#include "tests/component/hand_at_component.h"

namespace sylvex::test {
namespace {

enum class Outcome { Moves, Stays, Either };

class RealFiles : public HandAtComponent {
protected:
    /// An empty scratch folder, but for these files, each with bytes of its own.
    void Make(std::initializer_list<std::wstring> files)
    {
        RemoveBranch(base);
        for (const wchar_t* name : {L"", L"\\b"})
            CreateDirectoryW((base + name).c_str(), nullptr);
        for (const std::wstring& name : files)
            WriteBytes(base + L"\\" + name, "bytes " + std::to_string(++m_written));
        Load();
        before = ContentsOf(base);
    }
    /// The bytes of all files, wherever they are.
    static std::multiset<std::string> Bytes(const std::map<std::wstring, std::string>& contents)
    {
        std::multiset<std::string> bytes;
        for (const auto& [name, text] : contents)
            if (text != "\\") bytes.insert(text);
        return bytes;
    }
    void Rename(const std::wstring& from, const std::wstring& to)
    {
        TypeOver(from, to);
        Key(VK_RETURN);
        ASSERT_TRUE(Until([this] { return Edit() == nullptr; }));
    }
    void ExpectOutcome(Outcome outcome, const std::wstring& name) const
    {
        const auto after = ContentsOf(base);
        EXPECT_EQ(Bytes(after), Bytes(before));
        if (outcome == Outcome::Either) return;
        EXPECT_EQ(after.contains(L"\\" + name), outcome == Outcome::Stays && before.contains(L"\\" + name));
        EXPECT_EQ(after == before, outcome == Outcome::Stays);
    }

    std::map<std::wstring, std::string> before;

private:
    int m_written = 0;
};

TEST_F(RealFiles, ADropMovesAllOrIsRefusedWithANumber)
{
    HANDLE held = INVALID_HANDLE_VALUE;
    const std::wstring script = L"\u4E2D\u6587 \u0394\u0416 \u05D0";
    struct {
        const char* what;
        std::initializer_list<std::wstring> files;
        std::wstring dropped;
        std::function<void()> prepare;
        Outcome outcome;
        const wchar_t* number;
    } const cases[] = {
        {"plain", {L"a\\f", L"a\\in\\g"}, L"a", {}, Outcome::Moves, L""},
        {"in other scripts", {script + L"\\" + script}, script, {}, Outcome::Moves, L""},
        {"a file over a file", {L"f", L"b\\F"}, L"f", {}, Outcome::Stays, L"[183]"},
        {"a file over a folder", {L"f", L"b\\F\\g"}, L"f", {}, Outcome::Stays, L"[183]"},
        {"a folder over a file", {L"a\\f", L"b\\A"}, L"a", {}, Outcome::Stays, L"[183]"},
        {"a folder over one of its name", {L"a\\f", L"a\\g", L"b\\a\\f"}, L"a", {}, Outcome::Stays, L"[5]"},
        {"write-protected",
         {L"a\\f"},
         L"a",
         [&] {
             for (const wchar_t* name : {L"\\a\\f", L"\\a"})
                 SetFileAttributesW((base + name).c_str(), 1);
         },
         Outcome::Either,
         L""},
        {"in use",
         {L"a\\f", L"a\\in\\g"},
         L"a",
         [&] {
             held = CreateFileW((base + L"\\a\\f").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
             EXPECT_NE(held, INVALID_HANDLE_VALUE);
         },
         Outcome::Either,
         L""},
        {"gone",
         {L"a\\f", L"g"},
         L"a",
         [&] { RemoveBranch(base + L"\\a"), before = ContentsOf(base); },
         Outcome::Stays,
         L"[2]"},
        {"into what has gone",
         {L"a\\f"},
         L"a",
         [&] { RemoveBranch(base + L"\\b"), before = ContentsOf(base); },
         Outcome::Stays,
         L"[124]"},
    };
    for (const auto& [what, files, dropped, prepare, outcome, number] : cases) {
        SCOPED_TRACE(what);
        Make(files);
        if (prepare) prepare();
        const std::wstring told = Drop(dropped, L"b");
        if (held != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(held, INVALID_HANDLE_VALUE));
        const std::wstring confirmed = MovedMessage(base + L"\\" + dropped, base + L"\\b");
        EXPECT_TRUE(told.ends_with(confirmed));
        if (outcome != Outcome::Either) {
            EXPECT_EQ(told, number + confirmed);
        }
        ExpectOutcome(outcome, dropped);
        // Whatever the tree shows since the drop, the next reading shows the disk.
        Load();
        EXPECT_EQ(Row(dropped) != nullptr, Has(dropped));
    }
    EXPECT_EQ(reports.Take(), L"");
}

/// Makes a link to a folder or a file beside it; false where this platform makes none.
bool MakeLink(const std::wstring& folder, const std::wstring& name, const std::wstring& target, bool toFolder)
{
    constexpr DWORD kUnprivileged = 2;
    const std::wstring link = folder + L"\\" + name;
    const auto there = [&] { return GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES; };
    // Some platforms report success and make nothing.
    CreateSymbolicLinkW(link.c_str(), target.c_str(), kUnprivileged | (toFolder ? 1u : 0u));
    if (there()) return true;
    std::wstring command = L"ln -s \"" + target + L"\" \"" + name + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(L"\\\\?\\unix\\bin\\ln", command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                        &start, &process))
        return false;
    for (const HANDLE handle : {process.hThread, process.hProcess})
        CloseHandle(handle);
    for (int tries = 0; tries < 100 && !there(); ++tries)
        Sleep(20);
    return there();
}

TEST_F(RealFiles, WhatALinkPointsToIsNeverMovedNorRenamed)
{
    Make({L"home\\f", L"home\\in\\g", L"file"});
    if (!MakeLink(base, L"folderlink", L"home", true) || !MakeLink(base, L"filelink", L"file", false))
        GTEST_SKIP() << "no links can be made here";
    Load();
    const auto targets = ContentsOf(base + L"\\home");
    for (const wchar_t* link : {L"folderlink", L"filelink"}) {
        const std::wstring told = Drop(link, L"b");
        EXPECT_EQ(Has(link), told.starts_with(L"[50]")) << "the link itself, or nothing with a number";
        EXPECT_EQ(Has(std::wstring(L"b\\") + link), !Has(link));
        Load();
        if (!Has(link)) At({L"b"}).Put(L"Expanded", true);
        Rename(link, L"renamed");
        EXPECT_EQ(boxes.Take() == L"[50]", Has(link));
        EXPECT_EQ(ContentsOf(base + L"\\home"), targets);
        EXPECT_TRUE(Has(L"file"));
        RemoveDirectoryW((base + L"\\b\\renamed").c_str());
        Load();
    }
}

TEST_F(RealFiles, PathsOutOfTheShellsReachLoseNothing)
{
    const std::wstring x(110, L'x');
    const std::wstring y(100, L'y');
    Make({x + L"\\" + y + L"\\deep\\inner\\f"});
    EXPECT_TRUE(Drop(x, L"b").ends_with(MovedMessage(base + L"\\" + x, base + L"\\b")));
    ExpectOutcome(Outcome::Either, x);
    Make({x + L"\\" + y + y + L"\\deep\\f"});
    At({x.c_str(), (y + y).c_str()}).Put(L"Expanded", true);
    EXPECT_NE(Drop(L"deep", L"b"), L"");
    ExpectOutcome(Outcome::Either, L"deep");
}

TEST_F(RealFiles, WhatDoesNotArriveOnAnotherDriveStays)
{
    int drives = 0;
    for (const std::wstring place : {L"Z:\\dev\\shm", L"Z:\\tmp", L"D:", L"E:"}) {
        const std::wstring there = place + L"\\SylvexThere" + std::to_wstring(GetCurrentProcessId());
        if (CreateDirectoryW(there.c_str(), nullptr) == 0) continue;
        ++drives;
        SCOPED_TRACE(drives);
        Make({L"a\\f", L"a\\\u4E2D\u6587\\g", L"h"});
        Value target = Nodes().Get(L"Item", {there.substr(0, 3)});
        target.Put(L"Expanded", true);
        // Only the way to it: siblings are in the way of a hand. A folder with one childless child would be read again.
        while (!target.Get(L"Child").IsNothing())
            Nodes().Call(L"Remove", {target.Get(L"Child").Get(L"Index")});
        for (const std::wstring& part : SplitText(there.substr(3), L'\\')) {
            Nodes().Call(L"Add", {target, 4, Value::Missing(), L"-"});
            target = Nodes().Call(L"Add", {target, 4, Value::Missing(), part});
        }
        target.Call(L"EnsureVisible");
        const std::wstring name = there.substr(there.rfind(L'\\') + 1);
        for (const wchar_t* dropped : {L"a", L"h"})
            EXPECT_TRUE(Drop(dropped, name).ends_with(MovedMessage(base + L"\\" + dropped, there)));
        auto after = ContentsOf(there);
        EXPECT_NE(after.contains(L"\\a"), Has(L"a")) << "whole on one side";
        EXPECT_NE(after.contains(L"\\h"), Has(L"h"));
        after.merge(ContentsOf(base));
        EXPECT_EQ(Bytes(after), Bytes(before));
        RemoveBranch(there);
    }
    if (drives == 0) GTEST_SKIP() << "no other drive here can be written to";
}

TEST_F(RealFiles, ARenameTakesNoNameThatIsInUse)
{
    const std::pair<const wchar_t*, const wchar_t*> cases[] = {
        {L"a", L"b"}, {L"c", L"d"}, {L"d", L"B"}, {L"a", L"c"}, {L"c", L"\u4E2D\u6587"}};
    for (const auto& [from, to] : cases) {
        Make({L"a\\f", L"c", L"d"});
        Rename(from, to);
        const bool free = to[0] > 0x80;
        EXPECT_EQ(boxes.Take().empty(), free);
        EXPECT_EQ(Has(from), !free);
        EXPECT_EQ(Bytes(ContentsOf(base)), Bytes(before));
        EXPECT_EQ(ContentsOf(base) == before, !free);
    }
}

}  // namespace
}  // namespace sylvex::test
