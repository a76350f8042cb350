#include "filelist/file_list.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "filelist/list_rows.h"
#include "platform/text.h"

namespace sylvex {

namespace {

/// The walk over a branch in the order in which the tree shows it, with the joined texts of the node's ancestors. It
/// keeps no stack: branches may be thousands of levels deep.
class BranchWalk {
public:
    explicit BranchWalk(Node& top)
        : m_top(top),
          m_separator(top.Collection().PathSeparator()),
          m_joined(top.FullPath() + m_separator),
          m_at(top.Child())
    {
    }
    /// Null at the end.
    Node* At() const { return m_at; }
    /// The texts from the root down to the present node.
    std::wstring FullPath() const { return m_joined + m_at->Text(); }
    std::wstring_view ParentFullPath() const
    {
        return std::wstring_view(m_joined).substr(0, m_joined.size() - m_separator.size());
    }
    /// To the node's first child if `descend` and it has one, otherwise to the next node that is not below it.
    void Advance(bool descend)
    {
        Node* const child = descend ? m_at->Child() : nullptr;
        if (child != nullptr) {
            m_joined += m_at->Text();
            m_joined += m_separator;
            m_at = child;
            return;
        }
        while (m_at->Next() == nullptr) {
            m_at = m_at->Parent();
            if (m_at == &m_top) {
                m_at = nullptr;
                return;
            }
            m_joined.resize(m_joined.size() - m_separator.size() - m_at->Text().size());
        }
        m_at = m_at->Next();
    }

private:
    Node& m_top;
    const std::wstring m_separator;
    std::wstring m_joined;
    Node* m_at;
};

}  // namespace

FileList::FileList(const Context& context, FolderTree& tree, const TreeSelect& checks, FileListState& state)
    : m_context(context),
      m_tree(tree),
      m_checks(checks),
      m_state(state),
      m_binding(context, tree, state),
      m_types(context, state)
{
}

/// The ticked nodes below `top`, and the folder listed last as SourcePath.
Ticked FileList::FindTicked(Node& top, std::wstring& sPath)
{
    Ticked ticked;
    const Node* listed = nullptr;
    for (BranchWalk walk(top); Node* const node = walk.At();) {
        const bool checked = node->Checked();
        if (checked) {
            const Node* const parent = node->Parent();
            sPath = m_tree.PathOf(walk.FullPath(), node->Text());
            if (sPath.ends_with(L'\\')) sPath.pop_back();
            ticked.Add(sPath, static_cast<std::size_t>(parent->Children()));
            if (parent != listed) {
                listed = parent;
                const std::wstring folder = m_tree.PathOf(walk.ParentFullPath(), parent->Text());
                if (folder.size() > 1 && folder[1] == L':') m_state.SourcePath = folder;
            }
        }
        walk.Advance(checked ? !m_checks.Recursive() : node->Bold());
    }
    return ticked;
}

void FileList::BuildFileList(Node* pNode, bool RecursiveCall)
{
    const NodeRef node(pNode);
    std::wstring sPath;
    const auto parameters = Variables("pNode,RecursiveCall", node, RecursiveCall);
    std::shared_ptr<Frozen> frozen;
    Trapped(m_context.module, parameters, VARIABLES(sPath), [&](int& line) {
        if (pNode == nullptr) return;
        // Once the list is written to, the host may do anything, also remove nodes.
        const Ticked ticked = FindTicked(*pNode, sPath);
        line = 2;
        ListRows rows(m_context, m_state, m_binding, m_types, ticked, sPath);
        line = 3;
        // Until the rows are in order: a list that keeps itself sorted would paint all of it with each cell.
        if (rows.Count() > 0) {
            const std::shared_ptr<ListView> list = m_state.BoundList();
            frozen = list->Freeze();
            rows.AddTo(*list, !RecursiveCall);
        }
        if (RecursiveCall) return;
        line = 4;
        m_binding.HideSortColumns();
        line = 5;
        m_binding.LoadCleanup(0);
    });
}

void FileList::Rebuild(int& line, bool refill)
{
    // The host may bind another list meanwhile: this one is shown again all the same.
    const std::shared_ptr<ListView> hidden = Bound();
    hidden->SetVisible(false);
    ++line;
    if (refill) Refill();
    ++line;
    hidden->SetVisible(true);
}

void FileList::Refill()
{
    Bound()->ClearItems();
    m_binding.LVColumnHeaders();
    BuildFileList(&m_context.TV.GetNodes().Item(1), false);
}

void FileList::MarkListed(const NodeRef& node, std::wstring& SearchString)
{
    const auto list = Bound();
    if (list->RowCount() == 0) return;
    Regional& regional = m_context.platform.regional;
    std::unordered_set<std::wstring> texts;
    for (const std::wstring& text : list->Texts())
        texts.insert(LowerText(regional, text));
    const std::wstring above = node->FullPath() + node->Collection().PathSeparator();
    for (Node* child = node->Child(); child != nullptr; child = child->Next()) {
        SearchString = LowerText(regional, m_tree.PathOf(above + child->Text(), child->Text()));
        // A file of a type that the filter does not list has a path that ends like a folder's; its row does not.
        const std::wstring unqualified = SearchString.substr(0, SearchString.find_last_not_of(L'\\') + 1);
        const auto isRow = [&](const std::wstring& pattern) {
            return texts.contains(unqualified + L'\\' + LowerText(regional, pattern));
        };
        const auto& patterns = m_state.m_BuildFileListFilter;
        if (texts.contains(SearchString) || texts.contains(unqualified) ||
            std::any_of(patterns.begin(), patterns.end(), isRow))
            child->WriteMarks(true, child->Bold());
    }
    node->Collection().MarksWritten();
}

std::wstring FileList::ReturnFileName(const std::wstring& Arq)
{
    std::size_t separator = 0;
    return Trapped(m_context.module, VARIABLES(Arq), VARIABLES(separator), [&] {
        separator = Arq.rfind(L'\\');
        return separator == std::wstring::npos ? std::wstring() : Arq.substr(separator + 1);
    });
}

std::wstring FileList::BuildFileListFilter() const
{
    std::wstring joined;
    for (const std::wstring& pattern : m_state.m_BuildFileListFilter)
        joined += (&pattern == &m_state.m_BuildFileListFilter.front() ? L"" : L"|") + pattern;
    return joined;
}

void FileList::LetBuildFileListFilter(const std::wstring& New_BuildFileListFilter)
{
    std::vector<std::wstring> patterns = SplitText(New_BuildFileListFilter, L'|');
    if (patterns.empty()) patterns.emplace_back();
    m_state.m_BuildFileListFilter = std::move(patterns);
}

}  // namespace sylvex
