// What the other tests take for granted about the simulated desktop.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/simulated/simulated_desktop.h"
#include "tests/simulated/text.h"
#include "tests/simulated/wildcards.h"
#include "tests/support/desk_simulated.h"

namespace sylvex {
namespace {

using testing::ElementsAre;

TEST(SimulatedDisk, ReadsPatternsAsThePlatformDoes)
{
    struct {
        const wchar_t* pattern;
        const wchar_t* name;
        bool matches;
    } const cases[] = {
        {L"*.*", L"README", true},
        {L"*", L"a.b.c", true},
        {L"Documents*.*", L"documents", true},
        {L"Documents*.*", L"Documents2.old", true},
        {L"Documents*.*", L"My Documents", false},
        {L"*.txt", L"A.B.TXT", true},
        {L"*.txt", L"a.txt2", false},
        {L"a?.txt", L"ab.txt", true},
        {L"a?.txt", L"a.txt", true},
        {L"a?.txt", L"abc.txt", false},
        {L"*.", L"README", true},
        {L"*.", L"a.txt", false},
        {L"\u00C4*", L"\u00E4pfel", true},
    };
    for (const auto& [pattern, name, matches] : cases) {
        EXPECT_EQ(Wildcards(pattern).Matches(name), matches) << Utf8(pattern) << " on " << Utf8(name);
    }
}

TEST(SimulatedDisk, FindsNothingWhereThePlatformFindsNothing)
{
    SimulatedDesk desk;
    desk.MakeFile(L"locked\\a.txt");
    desk.desktop.disk.Find(desk.PathOf(L"locked"))->readable = false;
    for (const wchar_t* const pattern : {L"C:\\", L"C:\\Scratch\\", L"C:\\Scratch\\none", L"C:\\Scratch\\locked\\*.*",
                                         L"A:\\*.*", L"Z:\\*.*", L"Scratch", L"D:\\*.*"}) {
        EXPECT_EQ(desk.Get().files.Search(pattern), nullptr) << Utf8(pattern);
    }
    EXPECT_NE(desk.Get().files.Search(L"C:\\Scratch\\LOCKED"), nullptr);
}

TEST(SimulatedDesktop, TellsWhatWasNotGivenBack)
{
    SimulatedDesktop desktop;
    Platform& platform = desktop.Get();
    const ImageListHandle list = platform.images.Create();
    {
        const OwnedIcon icon = platform.shell.IconInFile(L"SHELL32.DLL", 60);
        EXPECT_EQ(platform.images.Add(list, icon.Get()), 0);
        EXPECT_EQ(desktop.Leaks(), "icons 1, image lists 1");
        platform.shell.DestroyIcon(icon.Get());
    }
    EXPECT_FALSE(platform.shell.IconInFile(L"Shell32.dll", 61));
    EXPECT_EQ(platform.images.Add(list, 12345), -1);
    EXPECT_THAT(desktop.images.Pictures(list), ElementsAre("SHELL32.DLL,60"));
    platform.images.Destroy(list);
    EXPECT_EQ(desktop.Leaks(), "icons freed twice 1");
}

}  // namespace
}  // namespace sylvex
