#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tree/folder_tree.h"
#include "widgets/context.h"

namespace sylvex {

/// A text to be compared with many others, letter by letter in the user's lower case.
class CaselessText {
public:
    CaselessText(Regional& regional, std::wstring_view text);
    bool Equals(std::wstring_view other) const { return other.size() == m_text.size() && BeginsWith(other); }
    bool BeginsWith(std::wstring_view start) const;
    std::wstring_view Text() const { return m_text; }

private:
    Regional* m_regional;
    std::wstring m_text;
    std::wstring m_lower;
};

/// The child through which the way to a path goes on.
struct ChildOnPath {
    Node* child = nullptr;  ///< null: none of the children
    bool isTarget = false;  ///< the way ends at the child
};

/// A way down to a path, and how much of the path it has come to.
struct Descent {
    CaselessText target;
    std::size_t reached = 0;
};

/// Finds nodes by the paths that FolderTree::BuildFullPath gives them, letter case aside and with one separator at the
/// end of either. What one step of a descent and one pass over all nodes cost does not depend on how deep nodes lie.
class PathSearch {
public:
    PathSearch(const Context& context, FolderTree& tree) : m_context(context), m_tree(tree) {}

    /// The loaded node of that path with the lowest index, null when there is none. Reads no disk.
    Node* First(const std::wstring& path);
    /// Begins a descent to `pText`: a folder's path without its last separator or with "*" behind it.
    Descent To(const std::wstring& pText) const;
    /// The first child of `parent` that the descent leads to, as its target or on the way to it. Each step comes to a
    /// longer part of the path than any before, so that a descent ends whatever the texts of the nodes are.
    ChildOnPath Towards(Node& parent, Descent& descent);

private:
    static bool MayEnd(const Node& node, const std::vector<CaselessText>& parts);
    static bool MayBe(const Node& node, const std::vector<CaselessText>& parts);

    const Context& m_context;
    FolderTree& m_tree;
};

}  // namespace sylvex
