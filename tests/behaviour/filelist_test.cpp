#include <gtest/gtest.h>

#include "tests/support/scene.h"

namespace sylvex {
namespace {

/// A folder t with files and folders, the tree opened down to it, and a list bound.
class FileListTest : public testing::Test {
protected:
    FileListTest()
    {
        desk.MakeFile(L"t\\kept.txt", 1536);
        desk.MakeFile(L"t\\big.Zip", 12'345);
        desk.Make({L"t\\noext", L"t\\docs\\deep\\", L"t\\docs\\inner.txt", L"t\\empty\\"});
        scene.BindList();
        scene.Enumerate();
    }
    void Tick(const std::wstring& path, bool checked = true) { scene.Tick(scene.At(L"t/" + path), checked); }
    /// The item texts below t, in the list's order.
    std::wstring Rows() { return scene.RowTexts(); }
    Node& Desktop() { return *scene.nodes().FirstRoot(); }

    Scene scene;
    Desk& desk = scene.desk();
};

TEST_F(FileListTest, ATickedFileIsOneRowWithAllItsColumns)
{
    Tick(L"big.Zip");
    ASSERT_EQ(Rows(), L"t\\big.Zip");
    Regional& regional = desk.Get().regional;
    EXPECT_EQ(scene.Cell(0, L"nam"), desk.PathOf(L"t\\big.Zip"));
    EXPECT_EQ(scene.Cell(0, L"ext"), L"zip");
    EXPECT_EQ(scene.Cell(0, L"siz"), regional.Number(12'345 / 1024.0, 2) + L" Kb");
    EXPECT_EQ(scene.Cell(0, L"siz2"), L"0000012345");
    EXPECT_EQ(scene.Cell(0, L"cmp2"), L"");
    EXPECT_EQ(scene.Cell(0, L"atr").size(), 15u);
    EXPECT_FALSE(scene.Cell(0, L"dos").empty());
    const std::wstring written = scene.Cell(0, L"mod2");
    EXPECT_EQ(written.size(), 14u);
    EXPECT_TRUE(written.starts_with(L"20"));
    EXPECT_EQ(scene.Cell(0, L"tim2"), written.substr(8));
    EXPECT_EQ(scene.Cell(0, L"cre2").size(), 14u);
    const std::wstring moment = scene.Cell(0, L"mod") + L" " + scene.Cell(0, L"tim");
    EXPECT_FALSE(scene.Cell(0, L"mod").empty());
    EXPECT_EQ(scene.Cell(0, L"cre") == moment, scene.Cell(0, L"cre2") == written);
    Tick(L"noext");
    EXPECT_EQ(scene.Cell(1, L"ext") + scene.Cell(1, L"typ"), L"");
    EXPECT_EQ(scene.Cell(1, L"siz"), L"0 b");
}

TEST_F(FileListTest, ATickedFolderIsOneRowForEachPattern)
{
    Tick(L"docs");
    EXPECT_EQ(Rows(), L"t\\docs\\*");
    EXPECT_EQ(scene.Cell(0, L"typ"), L"Folder");
    EXPECT_EQ(scene.Cell(0, L"atr")[4], L'd');
    scene.control().LetBuildFileListFilter(L"*.doc|*.txt");
    scene.control().Refresh();
    EXPECT_EQ(Rows(), L"t\\docs\\*.doc t\\docs\\*.txt");
    // Only the last of a folder's rows carries what the disk says of it.
    EXPECT_EQ(scene.Cell(0, L"mod2") + scene.Cell(0, L"atr") + scene.Cell(0, L"dos"), L"");
    EXPECT_EQ(scene.Cell(0, L"typ"), L"Folder");
    EXPECT_EQ(scene.Cell(1, L"mod2").size(), 14u);
    EXPECT_EQ(scene.Cell(1, L"siz"), L"");
}

TEST_F(FileListTest, TheFilterIsJoinedAsItWasGivenAndEmptyStandsForOneEmptyPattern)
{
    EXPECT_EQ(scene.control().BuildFileListFilter(), L"*");
    scene.control().LetBuildFileListFilter(L"*.a||*.b");
    EXPECT_EQ(scene.control().BuildFileListFilter(), L"*.a||*.b");
    scene.control().LetBuildFileListFilter(L"");
    EXPECT_EQ(scene.control().BuildFileListFilter(), L"");
    Tick(L"docs");
    EXPECT_EQ(Rows(), L"t\\docs\\");
}

TEST_F(FileListTest, ARecursiveTickStandsForAllBelow)
{
    scene.At(L"t/docs").SetExpanded(true);
    Tick(L"docs");
    EXPECT_TRUE(scene.At(L"t/docs/inner.txt").Checked());
    EXPECT_EQ(Rows(), L"t\\docs\\*");
    Tick(L"docs/inner.txt", false);
    EXPECT_EQ(Rows(), L"t\\docs\\deep\\*");
}

TEST_F(FileListTest, WithoutRecursionWhatIsTickedBelowATickedFolderIsListedToo)
{
    scene.At(L"t/docs").SetExpanded(true);
    scene.control().LetRecursiveCheck(false);
    Tick(L"docs/inner.txt");
    scene.At(L"t/docs").SetChecked(true);
    scene.At(L"t/empty").SetChecked(true);
    scene.control().Refresh();
    EXPECT_EQ(Rows(), L"t\\docs\\* t\\docs\\inner.txt t\\empty\\*");
}

TEST_F(FileListTest, WithoutRecursionAnUnopenedFoldersPlaceholderCountsAsItself)
{
    scene.control().LetRecursiveCheck(false);
    Tick(L"docs");
    EXPECT_EQ(Rows(), L"t\\docs\\* t\\docs\\*");
}

TEST_F(FileListTest, WhatIsBelowAnUntickedPlainNodeIsSkipped)
{
    scene.At(L"t/docs").SetExpanded(true);
    Tick(L"docs/inner.txt");
    scene.At(L"t/docs").SetBold(false);
    scene.control().Refresh();
    EXPECT_EQ(Rows(), L"");
}

TEST_F(FileListTest, RowsStandInTheOrderOfTheirTextsWhateverWasThere)
{
    Tick(L"kept.txt");
    Tick(L"empty");
    Tick(L"big.Zip");
    EXPECT_EQ(Rows(), L"t\\big.Zip t\\empty\\* t\\kept.txt");
    // The builder itself never clears.
    scene.control().BuildFileList(&Desktop(), false);
    EXPECT_EQ(Rows(), L"t\\big.Zip t\\big.Zip t\\empty\\* t\\empty\\* t\\kept.txt t\\kept.txt");
    scene.control().BuildFileList(&scene.At(L"t/docs"), false);
    EXPECT_EQ(scene.list().RowCount(), 6);
    scene.control().Refresh();
    EXPECT_EQ(scene.list().RowCount(), 3);
}

TEST_F(FileListTest, RowsTellTheDiskAsItIsNow)
{
    Tick(L"kept.txt");
    Tick(L"empty");
    desk.Remove(L"t\\kept.txt");
    desk.MakeFile(L"t\\kept.txt", 7);
    desk.Remove(L"t\\empty");
    scene.control().Refresh();
    ASSERT_EQ(Rows(), L"t\\empty\\* t\\kept.txt");
    EXPECT_EQ(scene.Cell(1, L"siz"), L"7 b");
    // What cannot be read is shown like a folder of which nothing is known.
    EXPECT_EQ(scene.Cell(0, L"typ"), L"Folder");
    EXPECT_EQ(scene.Cell(0, L"atr"), L"...............");
    EXPECT_EQ(scene.Cell(0, L"dos"), L"");
    EXPECT_TRUE(scene.Cell(0, L"mod2").starts_with(L"1980010"));
}

TEST_F(FileListTest, AFolderOfManyTickedFilesLosesNone)
{
    constexpr int kCount = 200;
    constexpr int kGone = 50;
    const auto name = [](int file) { return L"many\\f" + std::to_wstring(1000 + file) + L".txt"; };
    for (int file = 0; file < kCount; ++file)
        desk.MakeFile(name(file), 1000 + file);
    scene.control().LetFileFilter(L"*.txt");
    scene.Enumerate();
    scene.At(L"many").SetExpanded(true);
    scene.Tick(scene.At(L"many"), true);
    Tick(L"kept.txt");
    scene.Tick(scene.At(L"many/f1100.txt"), false);
    desk.Remove(name(kGone));
    scene.control().Refresh();
    ASSERT_EQ(scene.list().RowCount(), kCount);
    EXPECT_EQ(scene.Cell(kGone, L"typ"), L"Folder");
    for (int file = 0; file < 100; ++file) {
        if (file == kGone) continue;
        ASSERT_EQ(scene.Cell(file, L"nam"), desk.PathOf(name(file)));
        ASSERT_EQ(scene.Cell(file, L"siz2"), L"000000" + std::to_wstring(1000 + file));
    }
}

TEST_F(FileListTest, TheInnerCallAddsOnly)
{
    Tick(L"kept.txt");
    scene.control().BuildFileList(&scene.At(L"t"), true);
    EXPECT_EQ(Rows(), L"t\\kept.txt t\\kept.txt");
}

TEST_F(FileListTest, ABuildHidesTheSortColumnsAgain)
{
    scene.list().SetColumnWidth(12, 40);
    Tick(L"kept.txt");
    scene.list().SetColumnWidth(12, 40);
    scene.control().BuildFileList(&Desktop(), false);
    EXPECT_EQ(scene.list().ColumnWidth(12), 0);
}

TEST(FileNames, ArePartsBehindTheLastSeparator)
{
    Scene scene;
    EXPECT_EQ(scene.control().ReturnFileName(L"C:\\a\\b.txt"), L"b.txt");
    EXPECT_EQ(scene.control().ReturnFileName(L"C:\\a\\"), L"");
    EXPECT_EQ(scene.control().ReturnFileName(L"b.txt"), L"");
}

}  // namespace
}  // namespace sylvex
