#include <gtest/gtest.h>

#include <random>

#include "platform/text.h"
#include "selection/ignore_patterns.h"
#include "tests/native/real_tool.h"
#include "tests/simulated/simulated_desktop.h"

// The patterns are compared with git's own answers: whatever git ignores is excluded, by the pattern that git names.

namespace sylvex {
namespace {

constexpr const char* kNames[] = {"a", "b", "ab", "b.c", "x.y.c", "c#", " d", "[e]", "a-b", "7"};
constexpr const char* kPieces[] = {"a", "b", "c",   "*",     "?",   "[ab]", "[!a]",        "[a-c]",
                                   ".", "7", "\\#", "\\[e]", "\\*", "[^.]", "[[:digit:]]", "[]-]"};

class Patterns : public testing::Test {
protected:
    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random); }
    std::string Part()
    {
        if (Below(6) == 0) return "**";
        std::string part;
        for (int count = 1 + Below(3); count > 0; --count)
            part += kPieces[Below(std::size(kPieces))];
        // What two stars mean beside other letters is said nowhere.
        return part.find("**") != std::string::npos ? "*" : part;
    }
    std::string Line()
    {
        if (Below(12) == 0) return std::string("# a");
        std::string line = Below(4) == 0 ? "!" : "";
        if (Below(3) == 0) line += "/";
        line += Part();
        for (int count = Below(3); count > 0; --count)
            line += "/" + Part();
        if (Below(4) == 0) line += "/";
        return line + (Below(8) == 0 ? "  " : "");
    }
    std::string Path()
    {
        std::string path = kNames[Below(std::size(kNames))];
        for (int count = Below(4); count > 0; --count)
            path += std::string("/") + kNames[Below(std::size(kNames))];
        return path;
    }
    std::string ExcludedBy(const IgnorePatterns& patterns, const std::string& path, bool isFolder)
    {
        const std::vector<std::wstring> names = SplitText(std::wstring(path.begin(), path.end()), L'/');
        const std::wstring* by = patterns.ExcludedBy({names.begin(), names.end()}, isFolder);
        return by != nullptr ? std::string(by->begin(), by->end()) : std::string();
    }

    SimulatedDesktop desktop;
    std::mt19937 random{20261122};
};

TEST_F(Patterns, ExcludeWhatGitIgnores)
{
    RealFolder folder;
    folder.Run("git init -q .");
    std::vector<std::string> paths;
    for (int i = 0; i < 150; ++i) {
        paths.push_back(Path());
        folder.MakeFolder(paths.back());
        paths.push_back(paths.back() + "/" + (i % 2 == 0 ? "f.c" : "g"));
        folder.Write(paths.back(), "");
    }
    std::string asked;
    for (const std::string& path : paths)
        asked += path + '\n';
    folder.Write(".git/asked", asked);
    for (int round = 0; round < 60; ++round) {
        std::string text;
        for (int count = 1 + Below(5); count > 0; --count)
            text += Line() + (Below(5) == 0 ? "\r\n" : "\n");
        folder.Write(".gitignore", text);
        const IgnorePatterns patterns(desktop.regional, std::wstring(text.begin(), text.end()));
        const std::vector<std::string> answers = folder.Lines(
            "git -c core.quotePath=false check-ignore --no-index -v -n --stdin <.git/asked | sed 's/^[^:]*:[^:]*://'");
        ASSERT_EQ(answers.size(), paths.size());
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const std::string pattern = answers[i].substr(0, answers[i].find('\t'));
            const std::string expected = pattern.starts_with('!') ? "" : pattern;
            ASSERT_EQ(ExcludedBy(patterns, paths[i], i % 2 == 0), expected) << paths[i] << " in\n" << text;
        }
    }
}

TEST_F(Patterns, TakeEveryLetterCaseAndEndWhateverTheyAre)
{
    const auto excludes = [&](std::wstring_view text, const char* path) {
        return !ExcludedBy(IgnorePatterns(desktop.regional, text), path, false).empty();
    };
    EXPECT_TRUE(excludes(L"\xFEFF*.Doc", "A/LETTER.DOC"));
    EXPECT_TRUE(excludes(L"[A-C]x", "bX"));
    EXPECT_TRUE(excludes(L"a\\ ", "a "));
    EXPECT_FALSE(excludes(L"a ", "a "));
    for (const wchar_t* const never : {L"", L"/", L"!", L"[a", L"a\\", L"[", L"[!", L"[]", L"[a-", L"a[[:digit:]"})
        EXPECT_FALSE(excludes(never, "a")) << never;
    // A star for each letter of the name would take forever if each were tried with each.
    std::wstring stars;
    for (int i = 0; i < 200; ++i)
        stars += L"*a";
    EXPECT_FALSE(excludes(stars + L"b", std::string(250, 'a').c_str()));
}

}  // namespace
}  // namespace sylvex
