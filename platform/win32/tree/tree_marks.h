#pragma once

#include <optional>
#include <vector>

#include "platform/treewindow.h"
#include "platform/win32/handles.h"

namespace sylvex {

class TreeCore;

/// Keeps the marks of the rows in view in line with the owner's model. Rows out of view are left as they are until
/// they come into view or somebody reads them, so that a change of a million marks costs one screen of rows.
class TreeMarks {
public:
    static constexpr UINT kStateMask = TVIS_BOLD | TVIS_STATEIMAGEMASK;

    explicit TreeMarks(TreeCore& core) : m_core(core) {}
    /// The item state that shows the marks.
    UINT StateOf(bool checked, bool bold) const;
    /// The rows in view are others than before, or their marks may be.
    void Stale() noexcept { m_stale = true; }
    /// Likewise, and the window shows it soon.
    void Changed();
    void BeforePaint();
    /// Item messages of other programs: readers find the marks of the model, writers of a check mark ask for a flip.
    std::optional<LRESULT> OnItemMessage(UINT message, WPARAM wParam, LPARAM lParam);

private:
    std::vector<TVITEMW> Differing(HTREEITEM first);
    std::optional<TVITEMW> Difference(HTREEITEM row);
    void Apply(const std::vector<TVITEMW>& changes);
    void Update(HTREEITEM row);
    std::optional<LRESULT> OnWrite(UINT message, WPARAM wParam, const TVITEMW& item);

    TreeCore& m_core;
    HTREEITEM m_first = nullptr;  // the first row in view when they were looked at last
    bool m_stale = true;
};

}  // namespace sylvex
