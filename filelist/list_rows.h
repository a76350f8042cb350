#pragma once

#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagnostics/trap.h"
#include "filelist/cached_regional.h"
#include "filelist/columns.h"
#include "filelist/directory_records.h"
#include "filelist/file_types.h"
#include "filelist/formatting.h"
#include "filelist/list_binding.h"
#include "filelist/ticked.h"
#include "widgets/listview.h"

namespace sylvex {

/// The rows of one list: laid out at once in the order written, their texts made when the list view takes them.
class ListRows final : public RowSource {
public:
    /// The paths are complete; all arguments outlive the rows. Asks the bound list for its columns. `sPath` holds the
    /// path of the entry that is being worked on.
    ListRows(const Context& context, FileListState& state, ListBinding& binding, FileTypes& types, const Ticked& ticked,
             std::wstring& sPath);

    /// Has the list take all rows, as ListView::AddRows does. A failure at a folder's row is AddFolder's.
    void AddTo(ListView& list, bool sortFollows);

    std::size_t Count() const override { return m_rows.size(); }
    const ListRow& Row(std::size_t place) override;
    std::vector<std::uint32_t> SortedPlaces(bool descending) const override;

private:
    /// What all files of one extension share.
    struct Type {
        std::wstring ext;
        std::wstring name;
        bool drawnPerFile = false;
        std::optional<int> icon;
    };
    struct LaidOut {
        std::uint32_t entry;
        std::int32_t pattern;  ///< of a folder's row; -1 for a file
        std::uint32_t type;    ///< of a file's row
        int image;             ///< of a folder's row but its last
        bool isFat;
    };
    /// Finds an extension as it is spelt without making a text of it.
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::wstring_view text) const { return std::hash<std::wstring_view>()(text); }
    };

    void FindColumns();
    std::wstring& Cell(Column column) { return m_row.cells[m_places[static_cast<std::size_t>(column)]]; }
    void AddFolder(std::uint32_t Item, const std::wstring& sPath);
    std::uint32_t TypeOf(std::uint32_t entry);
    Type ReadType(const std::wstring& ext, const std::wstring& path);
    bool IsFat(std::wstring_view path);
    std::wstring ItemText(const LaidOut& row) const;
    bool IsLastOfFolder(const LaidOut& row) const;
    void FillFile(const LaidOut& row, const DirectoryRecord& record);
    void FillDates(const LaidOut& row, const DirectoryRecord& record);
    int IconOfFile(const LaidOut& row);
    int IconOfFolder(const LaidOut& row, const DirectoryRecord& record);
    std::optional<Date> LocalDate(std::int64_t fileTime);

    const Context& m_context;
    FileListState& m_state;
    ListBinding& m_binding;
    FileTypes& m_fileTypes;
    const Ticked& m_ticked;
    std::wstring& m_sPath;
    const std::vector<std::wstring> m_patterns;
    DeclaresModule m_declares;
    CachedRegional m_regional;
    DirectoryRecords m_records;
    std::array<std::size_t, kColumnCount> m_places{};  // of the columns in the list
    std::vector<LaidOut> m_rows;
    const LaidOut* m_given = nullptr;  // the row that the list has asked for last
    std::vector<Type> m_types;
    std::unordered_map<std::wstring, std::uint32_t, TextHash, std::equal_to<>> m_typePlaces;  // by extension as spelt
    std::unordered_map<std::wstring, std::uint32_t> m_lowerPlaces;  // by extension in lower case
    std::map<std::wstring, bool, std::less<>> m_fatVolumes;
    std::optional<int> m_folderIcon;
    ListRow m_row;
};

}  // namespace sylvex
