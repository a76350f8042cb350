#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "filelist/list_state.h"
#include "widgets/context.h"

namespace sylvex {

/// The type name and picture of each file extension, looked up once per extension and kept while the control lives
/// (FileListState::TypeNew).
class FileTypes {
public:
    /// The arguments outlive the object.
    FileTypes(const Context& context, FileListState& state) : m_context(context), m_state(state) {}

    /// The type name of an extension (without its full stop); sets `MyIcon` to its index in the system's small image
    /// list. An empty extension gives an empty name and leaves `MyIcon`. The first file of an extension decides.
    std::wstring GetFileType(const std::wstring& sExt, const std::wstring& FullPath, int& MyIcon);
    /// Index of the record whose extension is `sExt` to the letter, -1 when the search does not meet it.
    short BinarySearchTypeNew(const std::wstring& sExt);
    /// One forward and one backward exchange pass per gap.
    void ShellSortTypeNewArray();
    /// Whether files of an extension show pictures of their own, so that each has to be asked for its icon. Looked up
    /// once per extension.
    bool DrawnPerFile(const std::wstring& sExt);

private:
    std::wstring RegisteredTypeName(const std::wstring& sExt);
    bool RegisteredAsDrawnPerFile(const std::wstring& sExt);
    bool KeyDrawsPerFile(const std::wstring& key);
    void PlaceLast();

    const Context& m_context;
    FileListState& m_state;
    std::vector<std::string> m_keys;                        // that TypeNew is sorted by, record for record
    std::size_t m_inOrder = 0;                              // records in order, from the first
    std::unordered_map<std::wstring, FTs> m_known;          // by extension
    std::unordered_map<std::wstring, bool> m_drawnPerFile;  // by extension
    /// The class of the extension whose type name was looked up last.
    struct RegisteredClass {
        std::wstring ext;
        std::optional<std::wstring> name;
    } m_classReadLast;
    std::optional<bool> m_hasSharedAssociations;
};

}  // namespace sylvex
