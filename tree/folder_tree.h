#pragma once

#include <string>
#include <string_view>

#include "tree/disk_places.h"
#include "tree/tree_state.h"
#include "widgets/context.h"

namespace sylvex {

class Relocation;

/// The folder tree: its roots, the folders read when they are opened, and the paths of its nodes.
class FolderTree {
public:
    /// The arguments outlive the tree.
    FolderTree(const Context& context, TreeState& state);

    /// Loads the fixed icons into ImageList1.
    void LoadSystemIcons();
    /// Builds Desktop, My Documents, My Computer and the drives. Does not empty the tree.
    void LoadTree6();
    /// Removes all nodes; expansion and check handling rest meanwhile.
    void Clear();
    /// For a node that opens: when it holds only a placeholder (or one childless child), reads its folder anew.
    void LoadChildren(Node& node);
    /// Notes the tree's window: it is about to be used, or has been made anew or has gone.
    void NoteWindow() { m_state.m_hwndTV = m_context.TV.hWnd(); }
    /// How near to the tree's edge a drag scrolls it, in pixels.
    int ScrollBand() const { return m_state.m_cxyAutoScroll; }
    /// How far the pointer is moved before a drag begins, in pixels.
    Size DragThreshold() const { return m_state.m_szDrag; }
    /// Where nodes are whose texts do not tell it.
    DiskPlaces& Places() { return m_places; }
    /// The folder of a node, ending in a separator, as it has to be read.
    std::wstring FolderOf(const Node& node);
    /// The node's place where it is known to be another than its texts tell, else its key when that is a path,
    /// otherwise its path without the separator at its end; empty for a node without a text, whose path would be that
    /// of its folder.
    std::wstring DiskPathOf(Node& node);
    /// True for the folder under which a Relocation is just putting its node: opening it reads and ticks nothing.
    bool IsArriving(const Node& folder) const;
    /// A folder that looks empty now but is not can be opened again.
    void RestoreButton(Node& folder);
    /// Reads the node's folder and adds its subfolders, then its files, each group sorted by name.
    void EnumFilesUnder(Node& n);
    /// True when the folder (ending in a separator) holds a subfolder or a file that a pattern of the file filter
    /// matches.
    bool hasSubDirectory(const std::wstring& sPath);

    /// The node's path on disk; folders end in a separator, listed files do not. Null raises 91.
    std::wstring BuildFullPath(const Node* nod);
    /// The same from the node's joined texts and its own text, when the caller has them at hand.
    std::wstring PathOf(std::wstring_view fullPath, std::wstring_view text);

    std::wstring QualifyPath(const std::wstring& MyString);
    /// The text up to its first null character, otherwise without blanks at its ends. Nothing of ours calls it any
    /// more: it stays as one of the procedures that reports are known to name.
    std::wstring StripNull(const std::wstring& strIn);
    /// The lower-cased text behind the last full stop, empty without one or when it ends the name.
    std::wstring GetExt(std::wstring_view Name);
    std::wstring FolderLocation(int lFolder);
    /// Asks the platform for the documents folder, under which paths of nodes below it begin.
    void ReadDocumentsFolder();
    const std::wstring& DocumentsFolder() const { return m_state.m_MyDocs; }
    std::wstring GetResourceStringFromFile(const std::wstring& sModule, unsigned idString);

private:
    friend class Relocation;
    struct Listing;
    struct RootLocals;
    struct FolderLocals;
    void MeasureRow(Rect& rc);
    Node& AddDesktop(RootLocals& own, int& line);
    Node& AddBelow(Node& desktop, RootLocals& own, int& line);
    void AddDrives(Node& myComputer, RootLocals& own, int& line);
    Listing ReadFolder(FolderLocals& own);
    void AddFolders(Node& n, const Listing& listing, FolderLocals& own);
    void AddFiles(const Listing& listing, FolderLocals& own);
    int ImageOfFile(std::wstring_view name, bool byType, FolderLocals& own);
    bool MatchesFilter(std::wstring_view name);

    const Context& m_context;
    TreeState& m_state;
    DiskPlaces m_places;
    Relocation* m_relocation = nullptr;  // the one under way
};

/// Text-compare pattern match with "*" and "?".
bool LikePattern(Regional& regional, std::wstring_view text, std::wstring_view pattern);

}  // namespace sylvex
