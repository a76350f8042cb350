#pragma once

#include "tests/soak/soak_tree.h"

namespace sylvex::test {

/// What a soak has seen happen.
struct SoakCount {
    int steps = 0;
    int moved = 0;
    int renamed = 0;
    int told = 0;    ///< nothing changed, and a box said why
    int silent = 0;  ///< nothing changed, and nothing was said
    int failures = 0;
};

/// Random drags and renames, as a hand at mouse and keyboard does them. After each, every file is compared with what it
/// was before: at most the one that the hand meant has another place, the one that the hand meant.
class DragSoak : public SoakTree {
public:
    explicit DragSoak(unsigned seed);
    ~DragSoak() override { KillTimer(nullptr, m_answers); }

    /// So many steps, or fewer when the disk is no more what the tree can be expected to know; prints each.
    void Run(int steps, SoakCount& count);

private:
    /// What a step may do: at most one of these.
    struct Meant {
        std::string source{};
        std::string folder{};  ///< where it may come to lie; empty: nowhere else
        std::wstring name{};   ///< what it may be called then; empty: nothing else
        std::string twin{};    ///< what has the name of `source` in `folder` already
        bool certain = false;
        bool brokenOff = false;
    };

    void TestBody() override {}
    void Step();
    std::wstring TextOf(const Row& row) const;
    std::optional<Shown> AnyOfOurs(const std::vector<Shown>& rows);
    void Check(SoakCount& count);
    bool IsMeant(const Census& after) const;
    bool IsMerged(const Census& after) const;

    void Drag();
    void Carry(const Shown& to);
    void CarryOpening();
    void CarryToEdge();
    void Release(POINT place);
    void ReleaseAndGoOn(POINT place, POINT next);
    void BreakOff();
    void Aim(POINT place);
    void InTheWay(const Row& source);

    void Rename();
    std::wstring NewName(const std::wstring& old);
    void RenameRoot();
    void Mean(const Row& source, const std::wstring& typed);
    void EndEdit(const std::vector<Shown>& rows);
    void LeaveEdit();

    void Note(const std::wstring& text) { m_log += text; }
    static void CALLBACK AnswerQuestion(HWND, UINT, UINT_PTR timer, DWORD);

    EventLog m_events{control};
    UINT_PTR m_answers;
    std::optional<Census> m_before;
    Meant m_meant;
    std::optional<POINT> m_whileOpening;  ///< where the hand lets go while a folder is being opened
    bool m_plain = false;                 ///< nothing is in the way of what is dragged
    HANDLE m_held = INVALID_HANDLE_VALUE;
    std::wstring m_log;
};

}  // namespace sylvex::test
