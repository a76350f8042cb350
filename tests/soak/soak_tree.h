#pragma once

#include <optional>
#include <random>
#include <set>
#include <vector>

#include "tests/component/hand_at_component.h"
#include "tests/soak/census.h"

namespace sylvex::test {

/// A tree over a scratch folder with a random branch, and a book of what each row stands for: whatever was on disk
/// under its name when it first appeared. Rows carry a number of ours, so that the book follows them wherever they go.
class SoakTree : public HandAtComponent {
protected:
    struct Row {
        Value node;
        std::string known;  ///< what it stands for, as a census knows it
        std::wstring label;
    };
    /// A row that can be seen, on the screen; `row` is null when it does not stand for anything in the scratch folder.
    struct Shown {
        HTREEITEM item;
        POINT hold;  ///< a place on its label
        const Row* row;
    };

    /// The same seed gives the same branch.
    explicit SoakTree(unsigned seed);
    ~SoakTree() override;

    /// A number below `limit`, which is above 0.
    int Any(int limit);
    bool OneIn(int chance) { return Any(chance) == 0; }
    template <class List>
    const auto& AnyOf(const List& list)
    {
        return list[static_cast<std::size_t>(Any(static_cast<int>(std::size(list))))];
    }

    /// Reads the tree again, and opens some of it.
    void LoadAnew();
    /// Brings the book up to date with new rows. A text that has changed by itself, and a row that stands for nothing
    /// on disk, are added to `wrong`.
    void Survey();
    std::vector<Shown> ShownRows();
    /// The row at a place on the screen; null where there is none that we know.
    const Row* RowAt(POINT place);
    HTREEITEM ItemAt(POINT place) const;
    /// The node at a place on the screen; nothing beside the rows.
    Value NodeAt(POINT place) const;
    /// The folder's link to a folder elsewhere, as a census knows both; empty where there is none.
    const std::string& Link() const { return m_link; }
    /// Whether what the link leads to is where it was.
    bool IsLinkedInPlace() const { return m_link.empty() || Census(m_linked).top == m_link; }
    /// Whether the row's text and those above it give the place on disk of what it stands for.
    bool ReadsTrue(const Row& row, const Census& now) const;
    /// From now on the row's text is right as it is.
    void TakeText(const Row& row) { m_rows.at(row.node.Get(L"Tag").Number()).label = row.node.Get(L"Text").Text(); }

    std::wstring wrong;

private:
    void MakeBranch(const std::wstring& folder, int depth);
    void Mark(const std::wstring& folder);
    void MakeLink();
    void Survey(const Value& folder, const std::string& known, const Census& now);
    void Enter(const std::vector<Value>& fresh, const Value& folder, const std::string& known, const Census& now);
    std::optional<POINT> HoldOf(HTREEITEM item) const;
    const Row* RowOf(POINT place);

    const std::wstring m_linked = base + L"Linked";
    std::string m_link;
    std::mt19937 m_random;
    std::map<int, Row> m_rows;
    Value m_base;
    int m_nextNumber = 1;
    int m_made = 0;
};

}  // namespace sylvex::test
