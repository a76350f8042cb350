#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/text.h"
#include "selection/selection_text.h"
#include "selection/ticked_rules.h"
#include "tests/simulated/text.h"
#include "tests/support/desk_simulated.h"
#include "tests/support/scene.h"

namespace sylvex {
namespace {

/// Random folders, opened and ticked at random as by hand.
class TickedRules : public testing::Test {
protected:
    int Below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random); }
    void Grow(const std::wstring& folder, int depth)
    {
        for (const wchar_t* const name : {L"a", L"b", L"c", L"d"}) {
            const std::wstring path = folder + L"\\" + name;
            if (Below(2) == 0 && depth < 4) {
                scene.desk().Make({path + L"\\"});
                Grow(path, depth + 1);
            } else if (Below(2) == 0) {
                scene.desk().Make({path + L".txt"});
                files.push_back(path + L".txt");
            }
        }
        // What comes later, to each folder.
        later.push_back(folder + L"\\later.txt");
    }
    /// The nodes below the scene's folder that stand for something.
    std::vector<Node*> Shown()
    {
        std::vector<Node*> shown;
        std::vector<Node*> open{&scene.At(L"t")};
        while (!open.empty()) {
            Node* const node = open.back();
            open.pop_back();
            shown.push_back(node);
            for (Node* child = node->LoadedChild(); child != nullptr; child = child->Next())
                if (!child->Text().empty()) open.push_back(child);
        }
        return shown;
    }
    static Node* ChildOf(Node& folder, std::wstring_view name)
    {
        Node* child = folder.LoadedChild();
        while (child != nullptr && child->Text() != name)
            child = child->Next();
        return child;
    }
    /// Whether the ticks mean a file below the folder "t", which may not be there yet.
    bool IsMeant(const std::wstring& file, bool recursive, bool takesNew)
    {
        Node* node = &scene.At(L"t");
        std::vector<std::wstring> names = SplitText(file, L'\\');
        for (std::size_t i = 1; i < names.size(); ++i) {
            if (recursive && node->Checked()) return true;
            Node* const next = ChildOf(*node, names[i]);
            // What lies below a folder that shows neither a tick nor that it is mixed is not listed either.
            if (!node->Checked() && !node->Bold()) return false;
            if (next == nullptr && (recursive || i + 1 < names.size())) return recursive && node->Bold() && takesNew;
            if (next == nullptr) {
                bool partly = false;
                for (const Node* child = node->LoadedChild(); child != nullptr; child = child->Next())
                    partly = partly || (child->Checked() && child->Text().ends_with(L".txt"));
                return node->Checked() || (takesNew && partly);
            }
            node = next;
        }
        return node->Checked();
    }

    Scene scene;
    std::vector<std::wstring> files, later;
    std::mt19937 random{20261122};
};

TEST_F(TickedRules, MeanTheFilesThatTheTicksMean)
{
    scene.desk().Make({L"t\\"});
    Grow(L"t", 0);
    scene.BindList();
    scene.Enumerate();
    int taken = 0;
    for (int round = 0; round < 100; ++round) {
        const bool recursive = round % 2 == 0;
        scene.control().LetRecursiveCheck(recursive);
        scene.Enumerate();
        for (int step = 0; step < 30; ++step) {
            const std::vector<Node*> shown = Shown();
            Node& node = *shown[static_cast<std::size_t>(Below(static_cast<int>(shown.size())))];
            if (Below(2) == 0) {
                node.SetExpanded(true);
            } else {
                scene.Tick(node, !node.Checked());
            }
        }
        for (const bool takesNew : {false, true}) {
            const PathRules rules =
                RulesOfTicks(scene.control().Parts(), scene.control().Folders(), recursive, takesNew);
            for (const auto* const paths : {&files, &later}) {
                for (const std::wstring& path : *paths) {
                    const bool meant = IsMeant(path, recursive, takesNew);
                    taken += meant ? 1 : 0;
                    ASSERT_EQ(rules.Includes(scene.desk().PathOf(path)), meant)
                        << Utf8(path) << " recursive " << recursive << " takes new " << takesNew << "\n"
                        << Utf8(Scene::Render(scene.At(L"t"))) << "\n"
                        << Utf8(WriteSelection({rules, takesNew}));
                }
            }
        }
    }
    EXPECT_GT(taken, 1000);
}

}  // namespace
}  // namespace sylvex
