#include <gtest/gtest.h>

#include "tests/support/hand.h"

namespace sylvex {
namespace {

constexpr const wchar_t* kNoName = L"[Error. Enter a valid file name (or Esc).]";

class RenameTest : public testing::Test {
protected:
    RenameTest()
    {
        scene.desk().Make({L"t\\Old\\inner\\x\\", L"t\\Other\\", L"t\\list.zip", L"t\\plain.txt"});
        scene.control().LetFileFilter(L"*.zip");
        scene.Enumerate();
        scene.At(L"t/Old").SetExpanded(true);
        hand = std::make_unique<Hand>(scene);
        scene.Heard();
    }
    /// Opens the node's label and types a name into it; gives the messages.
    std::wstring Rename(Node& node, const std::wstring& name)
    {
        EXPECT_EQ(hand->Edit(node), node.Text());
        tools().Type(name);
        return scene.desk().TakeMessages();
    }
    Node& Folder() { return scene.At(L"t/Old"); }
    HandTools& tools() { return *hand->operator->(); }
    std::wstring PathOf(Node& node) { return scene.control().BuildFullPath(&node); }

    Scene scene;
    std::unique_ptr<Hand> hand;
};

TEST_F(RenameTest, ATypedNameIsGivenToTheFolderOnTheDisk)
{
    Node& folder = Folder();
    EXPECT_EQ(Rename(folder, L"New"), L"");
    EXPECT_EQ(folder.Text(), L"New");
    EXPECT_TRUE(scene.desk().Has(L"t\\New\\inner\\x"));
    EXPECT_FALSE(scene.desk().Has(L"t\\Old"));
    EXPECT_EQ(PathOf(*folder.Child()), scene.desk().PathOf(L"t\\New\\inner\\"));
    EXPECT_EQ(tools().Label(), L"(closed)");
    EXPECT_EQ(scene.Heard().find(L"LabelEdit"), std::wstring::npos);
}

TEST_F(RenameTest, BlanksAndFullStopsAtTheEndOfANameAreNoPartOfIt)
{
    Node& folder = Folder();
    EXPECT_EQ(Rename(folder, L"New. "), L"");
    EXPECT_EQ(folder.Text(), L"New");
    EXPECT_EQ(tools().Label(), L"(closed)");
    EXPECT_TRUE(scene.desk().Has(L"t\\New\\inner"));
    EXPECT_EQ(PathOf(*folder.Child()), scene.desk().PathOf(L"t\\New\\inner\\"));
}

TEST_F(RenameTest, WhatIsNoNameIsRefusedAndTheLabelOpensAgainWithIt)
{
    const std::wstring path = PathOf(Folder());
    for (const wchar_t* name : {L"", L" ", L".", L"..", L". .", L"a\\b", L"..\\Other", L"a/b", L"C:", L"a*", L"a?b",
                                L"a\"b", L"a<b", L"a>b", L"a|b", L"a\tb"}) {
        Node& folder = Folder();
        EXPECT_EQ(Rename(folder, name), kNoName);
        EXPECT_EQ(PathOf(folder), path) << "the node stands for the folder that it is";
        tools().Wait(200);
        EXPECT_EQ(tools().Label(), name);
        tools().PressKey(kEscapeKey);
        EXPECT_EQ(tools().Label(), L"(closed)");
        EXPECT_EQ(folder.Text(), L"Old");
    }
    tools().Wait(200);
    EXPECT_EQ(tools().Label(), L"(closed)") << "it opens once";
    EXPECT_TRUE(scene.desk().Has(L"t\\Old\\inner\\x"));
    EXPECT_EQ(tools().LeftOver(), "");
}

TEST_F(RenameTest, RootsAndDrivesNeverReachTheDisk)
{
    Node& drive = scene.nodes().Item(L"C:\\");
    Node& computer = scene.nodes().Item(L"MyComputer");
    EXPECT_EQ(Rename(drive, L"Renamed"), L"[124]");
    EXPECT_EQ(Rename(computer, L"Here"), L"[124]");
    EXPECT_EQ(Rename(scene.nodes().Item(1), L"Top"), L"[124]");
    EXPECT_EQ(Rename(*scene.nodes().Item(1).Child(), L"Papers"), L"[124]") << "the documents folder";
    EXPECT_EQ(tools().Label(), L"(closed)");
    EXPECT_EQ(PathOf(Folder()), scene.desk().PathOf(L"t\\Old\\")) << "the labels are what they were";
    EXPECT_TRUE(scene.desk().Has(L"t\\Old\\inner\\x"));
}

TEST_F(RenameTest, ARowWhoseRenameWasRefusedStandsForItsOwnFolderStill)
{
    Node& folder = Folder();
    scene.desk().Make({L"t\\Other\\inner\\stranger\\"});
    EXPECT_EQ(Rename(folder, L"Other"), L"[183]");
    EXPECT_EQ(folder.Text(), L"Other");
    EXPECT_EQ(Rename(*folder.Child(), L"mine"), L"");
    EXPECT_TRUE(scene.desk().Has(L"t\\Old\\mine\\x"));
    EXPECT_EQ(Rename(folder, L"Third"), L"");
    EXPECT_TRUE(scene.desk().Has(L"t\\Third\\mine\\x"));
    EXPECT_TRUE(scene.desk().Has(L"t\\Other\\inner\\stranger"));
    // What is opened under such a row is its own, too.
    EXPECT_EQ(Rename(folder, L"Other"), L"[183]");
    folder.Child()->SetExpanded(true);
    EXPECT_EQ(Scene::Render(*folder.Child()), L"mine[-](x)");
    scene.Enumerate();
    EXPECT_EQ(Scene::Render(*scene.At(L"t/Third").Parent()), L"t[-](Other[+] Third[+] list.zip plain.txt)");
}

TEST_F(RenameTest, AnUnchangedNameAsksNothingAndAnotherLetterCaseIsNoName)
{
    Node& folder = Folder();
    scene.desk().Remove(L"t\\Old");
    for (const wchar_t* name : {L"Old", L"Old. "})
        EXPECT_EQ(Rename(folder, name), L"");
    EXPECT_EQ(folder.Text(), L"Old");
    Node& other = scene.At(L"t/Other");
    // Some shells take it for a name in use, as it is.
    const std::wstring told = Rename(other, L"OTHER");
    EXPECT_TRUE(told.empty() || told == L"[183]");
    EXPECT_EQ(Rename(other, L"Third"), L"");
    EXPECT_TRUE(scene.desk().Has(L"t\\Third"));
}

TEST_F(RenameTest, EscapePutsBackTheTextThatWasThereWhenEditingBegan)
{
    Node& folder = Folder();
    scene.control().LetSelectedItem(&folder);
    tools().PressKey(kEscapeKey);
    EXPECT_EQ(folder.Text(), L"Old") << "nothing has been edited yet";
    folder.SetText(L"Shown");
    EXPECT_EQ(hand->Edit(folder), L"Shown");
    tools().PressKey(kEscapeKey);
    folder.SetText(L"Else");
    tools().PressKey(kEscapeKey);
    EXPECT_EQ(folder.Text(), L"Shown");
    EXPECT_EQ(scene.desk().TakeMessages(), L"");
    // No other row takes that text, whatever Escape is for.
    Node& other = scene.At(L"t/Other");
    scene.control().LetSelectedItem(&other);
    tools().PressKey(kEscapeKey);
    EXPECT_EQ(other.Text(), L"Other");
    folder.SetText(L"Old");
    hand->Edit(folder);
    tools().PressKey(kEscapeKey);
    folder.SetText(L"Else");
    scene.control().LetDragDropEnable(true);
    hand->Drag(folder, other);
    tools().PressKey(kEscapeKey);
    tools().Release();
    EXPECT_EQ(folder.Text(), L"Else") << "an Escape that ended a drag";
    folder.SetText(L"Old");
    EXPECT_EQ(Rename(folder, L"Taken"), L"");
    folder.SetText(L"Else");
    tools().PressKey(kEscapeKey);
    EXPECT_EQ(folder.Text(), L"Else") << "what was typed has been taken";
}

TEST_F(RenameTest, NothingHappensToTheDiskWhenTheTreeChangesUnderTheEdit)
{
    struct {
        const char* what;
        std::function<void()> change;
        bool renames;
    } const cases[] = {
        {"a tick", [&] { ErrorOf([&] { scene.Tick(scene.At(L"t/Other"), true); }); }, true},
        {"a tick here", [&] { ErrorOf([&] { scene.Tick(Folder(), true); }); }, true},
        {"another node selected", [&] { scene.control().LetSelectedItem(&scene.At(L"t/Other")); }, false},
        {"read anew", [&] { scene.Enumerate(); }, false},
        {"emptied", [&] { scene.control().Clear(); }, false},
        {"node removed", [&] { scene.nodes().Remove(Folder()); }, false},
    };
    for (const auto& [what, change, renames] : cases) {
        scene.Enumerate();
        hand->Edit(Folder());
        change();
        scene.desk().TakeMessages();
        if (tools().Label() != L"(closed)") tools().Type(L"Typed");
        EXPECT_EQ(scene.desk().Has(L"t\\Typed"), renames) << what;
        EXPECT_EQ(scene.desk().Has(L"t\\Old\\inner"), !renames) << what;
        EXPECT_EQ(tools().LeftOver(), "") << what;
        if (!renames) continue;
        scene.Enumerate();
        Rename(scene.At(L"t/Typed"), L"Old");
    }
    EXPECT_TRUE(scene.desk().Has(L"t\\Other"));
}

TEST_F(RenameTest, TheControlMayGoBeforeALabelOpensAgain)
{
    EXPECT_EQ(Rename(Folder(), L"?"), kNoName);
    scene.DropControl();
    tools().Wait(300);
    EXPECT_EQ(tools().LeftOver(), "");
}

TEST_F(RenameTest, AnEmptyTextStandsForNoFolder)
{
    // A node without a text would have the path of the folder that it is in.
    Node& nameless = scene.nodes().AddChild(scene.At(L"t"), L"", 0);
    EXPECT_EQ(Rename(nameless, L"Taken"), L"[124]");
    EXPECT_TRUE(scene.desk().Has(L"t\\Old\\inner"));
    EXPECT_FALSE(scene.desk().Has(L"Taken"));
}

}  // namespace
}  // namespace sylvex
