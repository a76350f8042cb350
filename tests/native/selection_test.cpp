#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>

#include "platform/text.h"
#include "selection/path_rules.h"
#include "selection/selection_text.h"
#include "selection/tool_formats.h"
#include "tests/native/real_tool.h"
#include "tests/simulated/simulated_desktop.h"
#include "tests/simulated/text.h"
#include "tests/support/scene.h"

namespace sylvex {
namespace {

constexpr const wchar_t* kRoot = L"C:\\r";

/// A tree of files on the real disk and rules for it at random.
class Selection : public testing::Test {
protected:
    using Files = std::set<std::string>;

    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random); }
    void Grow(const std::string& folder, int depth)
    {
        static const char* const names[] = {"a", "b b", "[c]", "d%", "e ", "#f", "!g", "h.txt", "-i"};
        for (const char* const name : names) {
            const std::string path = folder.empty() ? name : folder + '/' + name;
            const int kind = Below(4);
            if (kind == 0 && depth < 4) {
                disk.MakeFolder(path);
                paths.push_back(path);
                Grow(path, depth + 1);
            } else if (kind == 1) {
                disk.Write(path, "");
                files.insert(path);
                paths.push_back(path);
            }
        }
    }
    static std::wstring OnDisk(const std::string& path)
    {
        std::wstring wide = std::wstring(kRoot) + L'\\' + std::wstring(path.begin(), path.end());
        std::replace(wide.begin(), wide.end(), L'/', L'\\');
        return wide;
    }
    PathRules RandomRules()
    {
        PathRules rules(desktop.regional);
        if (Below(2) == 0) rules.Add({kRoot, Below(2) == 0});
        for (const std::string& path : paths) {
            const bool isFile = files.contains(path);
            if (Below(4) == 0) rules.Add({OnDisk(path), Below(2) == 0});
            if (!isFile && Below(5) == 0) rules.Add({OnDisk(path), Below(2) == 0, PathRules::Reach::Files});
        }
        return rules;
    }
    Files Taken(const PathRules& rules) const
    {
        Files taken;
        for (const std::string& file : files)
            if (rules.Includes(OnDisk(file))) taken.insert(file);
        return taken;
    }
    Files Kept(const std::vector<std::string>& lines) const
    {
        Files kept(lines.begin(), lines.end());
        std::erase_if(kept, [&](const std::string& line) { return !files.contains(line); });
        return kept;
    }

    SimulatedDesktop desktop;
    RealFolder disk;
    Files files;
    std::vector<std::string> paths;
    std::mt19937 random{20261122};
};

// git ignores a file "rules" of its own, and rsync one outside of its source: both lie in a folder that is none of the
// tree's.
TEST_F(Selection, MeansTheSameFilesToItsTextAndToTheToolsThatTakeIt)
{
    for (int tree = 0; tree < 100; ++tree) {
        files.clear();
        paths.clear();
        disk.Clear();
        disk.MakeFolder("tree");
        disk.Run("git init -q tree");
        RealFolder* const real = &disk;
        real->Enter("tree");
        Grow({}, 0);
        PathRules rules = RandomRules();
        const Files taken = Taken(rules);
        rules.Minimise();
        ASSERT_EQ(Taken(rules), taken);
        const std::wstring text = WriteSelection({std::move(rules), true});
        const KeptSelection kept = ReadSelection(desktop.regional, text);
        ASSERT_EQ(Taken(kept.rules), taken);
        ASSERT_EQ(WriteSelection(kept), text);
        real->Write("../rules", Utf8(RsyncRules(kept.rules, kRoot)));
        ASSERT_EQ(
            Kept(real->Lines("rsync -r --dry-run --exclude=/.git --filter='merge ../rules' --out-format=%n ./ ../to")),
            taken)
            << Utf8(text);
        real->Write("../rules", Utf8(GitIgnoreRules(kept.rules, kRoot)));
        ASSERT_EQ(
            Kept(real->Lines("git -c core.ignoreCase=true ls-files -o -z --exclude-from=../rules | tr '\\0' '\\n'")),
            taken)
            << Utf8(text);
        real->Enter("..");
    }
}

TEST_F(Selection, OfRulesNoneFollowsFromTheOthers)
{
    Grow({}, 0);
    for (int round = 0; round < 50; ++round) {
        PathRules rules = RandomRules();
        rules.Minimise();
        const auto all = rules.Rules();
        for (std::size_t without = 0; without < all.size(); ++without) {
            PathRules fewer(desktop.regional);
            for (std::size_t i = 0; i < all.size(); ++i)
                if (i != without) fewer.Add(all[i]);
            // What is new shows the difference where no file of today does, and what is a file may be a folder.
            const std::wstring& path = all[without].path;
            bool differs = false;
            for (const wchar_t* const asked : {L"", L"\\", L"\\new"})
                differs = differs || fewer.Includes(path + asked) != rules.Includes(path + asked);
            EXPECT_TRUE(differs) << Utf8(path);
        }
    }
}

TEST_F(Selection, TextHoldsEveryName)
{
    for (const wchar_t* const name :
         {L" a ", L"a\nb", L"\xD800", L"x\xDC00", L"100%", L"%{0041}", L"\x4E2D\x6587", L"a\x2028"}) {
        KeptSelection selection{PathRules(desktop.regional)};
        selection.rules.Add({std::wstring(L"C:\\") + name, true});
        const std::wstring text = WriteSelection(selection);
        EXPECT_EQ(ReadSelection(desktop.regional, text).rules.Rules(), selection.rules.Rules()) << Utf8(text);
        EXPECT_EQ(std::count(text.begin(), text.end(), L'\n'), 3);
    }
    for (const wchar_t* const wrong :
         {L"", L"sylvex-selection 2\nnew-entries 0\n", L"sylvex-selection 1\n", L"sylvex-selection 1\nnew-entries 2\n",
          L"sylvex-selection 1\nnew-entries 0\n* C:\\a\n", L"sylvex-selection 1\nnew-entries 0\n+ a\n",
          L"sylvex-selection 1\nnew-entries 0\n+ C:\\%{00\n", L"sylvex-selection 1\nnew-entries 0\n+ C:\\a%{0000}\n"})
        EXPECT_EQ(ErrorOf([&] { ReadSelection(desktop.regional, wrong); }), 321) << Utf8(wrong);
    // As deep as a path can be.
    std::wstring deep = L"sylvex-selection 1\nnew-entries 0\n+ C:";
    for (int level = 0; level < 16000; ++level)
        deep += L"\\a";
    KeptSelection kept = ReadSelection(desktop.regional, deep);
    kept.rules.Minimise();
    EXPECT_EQ(WriteSelection(kept), deep + L'\n');
    EXPECT_EQ(ErrorOf([&] { RobocopyCommands(kept.rules); }), 321) << "longer than a command may be";
}

TEST_F(Selection, FormatsRefuseWhatTheyHaveNoWordsFor)
{
    const auto errorOf = [&](const PathRules::Rule& rule, auto&& write) {
        PathRules rules(desktop.regional);
        rules.Add({L"C:\\r\\a", true});
        rules.Add(rule);
        return ErrorOf([&] { write(rules); });
    };
    const auto rsync = [](const PathRules& rules) { RsyncRules(rules, kRoot); };
    const auto git = [](const PathRules& rules) { GitIgnoreRules(rules, kRoot); };
    const auto robocopy = [](const PathRules& rules) { RobocopyCommands(rules); };
    EXPECT_EQ(errorOf({L"D:\\", true}, rsync), 321);
    EXPECT_EQ(errorOf({L"C:\\s", true, PathRules::Reach::Files}, git), 321);
    EXPECT_EQ(errorOf({L"C:\\s", false}, git), 0);
    EXPECT_EQ(errorOf({L"C:\\", true}, rsync), 321);
    EXPECT_EQ(errorOf({L"C:\\r\\x\ny", true}, rsync), 321);
    EXPECT_EQ(errorOf({L"C:\\r\\x\xD800y", true}, git), 321);
    EXPECT_EQ(errorOf({L"C:\\r\\a", false, PathRules::Reach::Files}, robocopy), 321);
    EXPECT_EQ(errorOf({L"C:\\r\\a\\x\ty", false}, robocopy), 321);
}

TEST_F(Selection, CommandsCopyEachBranchWithoutWhatIsLeftOut)
{
    PathRules rules(desktop.regional);
    for (const auto& rule : std::vector<PathRules::Rule>{{L"C:\\a\\100%", true},
                                                         {L"C:\\a\\100%\\x", false},
                                                         {L"C:\\a\\100%\\x\\in", true},
                                                         {L"C:\\a\\100%\\b.txt", false},
                                                         {L"\\\\s\\t", true, PathRules::Reach::Files},
                                                         {L"D:\\", true}})
        rules.Add(rule);
    const std::wstring text = RobocopyCommands(rules);
    EXPECT_EQ(
        text.substr(text.find(L"robocopy")),
        L"robocopy \"\\\\s\\t\" \"%~1\\s\\t\"\r\n"
        L"robocopy \"C:\\a\\100%%\" \"%~1\\C\\a\\100%%\" /e /xd \"C:\\a\\100%%\\b.txt\" \"C:\\a\\100%%\\x\" /xf "
        L"\"C:\\a\\100%%\\b.txt\"\r\n"
        L"if exist \"C:\\a\\100%%\\x\\in\\*\" (robocopy \"C:\\a\\100%%\\x\\in\" \"%~1\\C\\a\\100%%\\x\\in\" /e) else "
        L"robocopy \"C:\\a\\100%%\\x\" \"%~1\\C\\a\\100%%\\x\" \"in\"\r\n"
        L"robocopy \"D:\\.\" \"%~1\\D\" /e\r\n");
}

}  // namespace
}  // namespace sylvex
