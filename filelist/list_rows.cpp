#include "filelist/list_rows.h"

#include <algorithm>

#include "platform/sort_keys.h"
#include "platform/text.h"

namespace sylvex {

namespace {

constexpr std::int32_t kFile = -1;
/// Attributes without which no folder has a picture of its own: read-only, system, reparse point.
constexpr std::uint32_t kMayHavePicture = 1 | 4 | 1024;

/// A path's drive, or server and share; empty for a path without one.
std::wstring_view VolumeOf(std::wstring_view path)
{
    if (path.size() >= 2 && path[1] == L':') return path.substr(0, 2);
    if (!path.starts_with(L"\\\\")) return {};
    const std::size_t server = path.find(L'\\', 2);
    return server == path.npos ? std::wstring_view() : path.substr(0, path.find(L'\\', server + 1));
}

/// Days since 1899-12-30: the first that the platform shows as a date, of the year 1601, and the one behind the last,
/// the first of the year 10000.
constexpr double kFirstDay = -109'205;
constexpr double kDayBehindLast = 2'958'466;

/// The extension as spelt, with the rule that a full stop at the end begins none.
std::wstring_view ExtensionIn(std::wstring_view name)
{
    const std::size_t dot = name.rfind(L'.');
    return dot == std::wstring_view::npos ? std::wstring_view() : name.substr(dot + 1);
}

std::wstring SizeKey(std::uint64_t size)
{
    constexpr std::size_t kDigits = 10;
    const std::wstring text = std::wstring(kDigits, L'0') + std::to_wstring(size);
    return text.substr(text.size() - kDigits);
}

}  // namespace

ListRows::ListRows(const Context& context, FileListState& state, ListBinding& binding, FileTypes& types,
                   const Ticked& ticked, std::wstring& sPath)
    : m_context(context),
      m_state(state),
      m_binding(binding),
      m_fileTypes(types),
      m_ticked(ticked),
      m_sPath(sPath),
      m_patterns(state.m_BuildFileListFilter),
      m_declares(context.platform),
      m_regional(context.platform.regional),
      m_records(context.platform.files, ticked)
{
    if (m_ticked.Count() == 0) return;
    FindColumns();
    m_rows.reserve(m_ticked.Count());
    for (std::uint32_t entry = 0; entry < m_ticked.Count(); ++entry) {
        sPath.clear();
        m_ticked.AppendPath(entry, sPath);
        m_state.IsFAT = IsFat(sPath);
        if (m_records.Of(entry).ShownAsFolder()) {
            AddFolder(entry, sPath);
        } else {
            m_rows.push_back({entry, kFile, TypeOf(entry), 0, m_state.IsFAT});
        }
    }
}

void ListRows::FindColumns()
{
    std::size_t count = 0;
    for (std::size_t column = 0; column < kColumnCount; ++column) {
        // Nothing is ever written there.
        if (column == static_cast<std::size_t>(Column::cmp2)) continue;
        m_places[column] = static_cast<std::size_t>(m_binding.LVIdx(kColumns[column].key));
        count = std::max(count, m_places[column] + 1);
    }
    m_row.cells.resize(count);
}

/// Whether the path's volume counts as FAT; asked once a volume. A path without one leaves the answer as it was.
bool ListRows::IsFat(std::wstring_view path)
{
    const std::wstring_view volume = VolumeOf(path);
    if (volume.empty()) return m_state.IsFAT;
    const auto found = m_fatVolumes.find(volume);
    if (found != m_fatVolumes.end()) return found->second;
    return m_fatVolumes.emplace(volume, m_binding.IsFatVolume(std::wstring(volume) + L'\\')).first->second;
}

void ListRows::AddFolder(std::uint32_t Item, const std::wstring& sPath)
{
    std::size_t k = 0;
    Trapped(m_context.module, VARIABLES(Item, sPath), VARIABLES(k), [&](int& line) {
        for (k = 0; k < m_patterns.size(); ++k) {
            line = 2;
            if (!EqualText(m_regional, m_state.TypeNew.front().TypeName, m_state.sFolder)) {
                // The shell may let messages through, and with them another list.
                const int icon = m_context.platform.shell.SystemIconIndex(sPath);
                m_state.TypeNew.front().IconIndex = icon;
                m_state.TypeNew.front().TypeName = m_state.sFolder;
            }
            line = 3;
            const int icon = m_state.TypeNew.front().IconIndex;
            m_rows.push_back({Item, static_cast<std::int32_t>(k), 0, icon, m_state.IsFAT});
        }
    });
}

std::uint32_t ListRows::TypeOf(std::uint32_t entry)
{
    const std::wstring_view spelt = ExtensionIn(m_records.Of(entry).name);
    const auto found = m_typePlaces.find(spelt);
    if (found != m_typePlaces.end()) return found->second;
    const std::wstring ext = LowerText(m_regional, spelt);
    // It may be another spelling of an extension met before.
    const auto [place, isNew] = m_lowerPlaces.try_emplace(ext, static_cast<std::uint32_t>(m_types.size()));
    if (isNew) m_types.push_back(ReadType(ext, m_ticked.Path(entry)));
    m_typePlaces.emplace(spelt, place->second);
    return place->second;
}

ListRows::Type ListRows::ReadType(const std::wstring& ext, const std::wstring& path)
{
    int MyIcon = 0;
    Type type{ext, m_fileTypes.GetFileType(ext, path, MyIcon), m_fileTypes.DrawnPerFile(ext), {}};
    return type;
}

bool ListRows::IsLastOfFolder(const LaidOut& row) const
{
    return row.pattern + 1 == static_cast<std::int32_t>(m_patterns.size());
}

std::wstring ListRows::ItemText(const LaidOut& row) const
{
    std::wstring text;
    m_ticked.AppendPath(row.entry, text);
    if (row.pattern != kFile) text += L'\\' + m_patterns[static_cast<std::size_t>(row.pattern)];
    return text;
}

void ListRows::AddTo(ListView& list, bool sortFollows)
{
    m_given = nullptr;
    try {
        list.AddRows(*this, sortFollows);
    } catch (...) {
        if (m_given == nullptr || m_given->pattern == kFile) throw;
        const std::uint32_t Item = m_given->entry;
        const std::int32_t k = m_given->pattern;
        Trapped(m_context.module, L"AddFolder", Variables("Item,sPath", Item, m_sPath), VARIABLES(k), [](int& line) {
            line = 4;
            throw;
        });
    }
}

const ListRow& ListRows::Row(std::size_t place)
{
    const LaidOut& row = m_rows[place];
    m_given = &row;
    const DirectoryRecord& record = m_records.Of(row.entry);
    for (std::wstring& cell : m_row.cells)
        cell.clear();
    m_row.image = row.image;
    m_sPath.clear();
    m_ticked.AppendPath(row.entry, m_sPath);
    m_row.cells.front() = ItemText(row);
    if (row.pattern == kFile) {
        FillFile(row, record);
    } else {
        Cell(Column::typ) = m_state.sFolder;
        if (!IsLastOfFolder(row)) return m_row;
        m_row.image = IconOfFolder(row, record);
    }
    FillDates(row, record);
    Cell(Column::atr) = GetAttrString(m_context.module, record.attributes);
    std::wstring& dos = Cell(Column::dos);
    dos = record.shortName.data();
    if (dos.empty()) dos = record.name;
    return m_row;
}

void ListRows::FillFile(const LaidOut& row, const DirectoryRecord& record)
{
    const Type& type = m_types[row.type];
    Cell(Column::ext) = type.ext;
    Cell(Column::typ) = type.name;
    Cell(Column::siz) = FormatSize(m_declares, m_regional, static_cast<double>(record.size));
    Cell(Column::siz2) = SizeKey(record.size);
    m_row.image = IconOfFile(row);
}

int ListRows::IconOfFile(const LaidOut& row)
{
    Shell& shell = m_context.platform.shell;
    Type& type = m_types[row.type];
    if (type.drawnPerFile) return shell.SystemIconIndex(m_ticked.Path(row.entry));
    if (!type.icon) {
        const DirectoryRecord& record = m_records.Of(row.entry);
        type.icon = shell.SystemIconIndexOfType(std::wstring(record.name), record.attributes);
    }
    return *type.icon;
}

int ListRows::IconOfFolder(const LaidOut& row, const DirectoryRecord& record)
{
    Shell& shell = m_context.platform.shell;
    const bool plain = !record.name.empty() && (record.attributes & kMayHavePicture) == 0;
    if (!plain) {
        const std::wstring path = m_ticked.Path(row.entry);
        // A drive without its root would be the drive's current folder.
        return shell.SystemIconIndex(path.ends_with(L':') ? path + L'\\' : path);
    }
    if (!m_folderIcon) m_folderIcon = shell.SystemIconIndexOfType(std::wstring(record.name), record.attributes);
    return *m_folderIcon;
}

/// A file's time as the user's date; nothing when that is beyond the year 9999, as damaged records tell.
std::optional<Date> ListRows::LocalDate(std::int64_t fileTime)
{
    constexpr std::int64_t kYear10000 = 2'650'467'744'000'000'000;
    constexpr std::int64_t kDay = 864'000'000'000;
    constexpr double kSecond = 1 / 86'400.0;
    // To the user's time it is a day at most; the platform takes no number that has the highest bit set.
    if (fileTime < 0 || fileTime >= kYear10000 + kDay) return std::nullopt;
    const Date local = UTCCurrToVbDate(m_declares, m_regional, Currency{fileTime}, true);
    if (local.days >= kDayBehindLast) return std::nullopt;
    // Half a second before its end the last day would be rounded into the next.
    return Date{std::clamp(local.days, kFirstDay, kDayBehindLast - kSecond)};
}

void ListRows::FillDates(const LaidOut& row, const DirectoryRecord& record)
{
    if (const auto written = LocalDate(record.lastWriteTime)) {
        Cell(Column::mod) = m_regional.ShortDate(*written);
        Cell(Column::mod2) = m_regional.Stamp(*written);
        Cell(Column::tim) = m_regional.LongTime(*written);
        Cell(Column::tim2) = Cell(Column::mod2).substr(kStampDateLength);
    }
    if (const auto created = LocalDate(record.creationTime)) {
        Cell(Column::cre) = FormGenDatTim(m_context.module, m_regional, *created);
        Cell(Column::cre2) = m_regional.Stamp(*created);
    }
    if (const auto accessed = LocalDate(record.lastAccessTime)) {
        // Such volumes keep no access time.
        Cell(Column::acc) =
            row.isFat ? m_regional.ShortDate(*accessed) : FormGenDatTim(m_context.module, m_regional, *accessed);
        Cell(Column::acc2) = m_regional.Stamp(*accessed);
    }
}

std::vector<std::uint32_t> ListRows::SortedPlaces(bool descending) const
{
    SortKeys keys(m_rows.size());
    for (const LaidOut& row : m_rows)
        m_context.platform.regional.AppendSortKey(ItemText(row), keys.Next());
    return keys.Sorted(descending);
}

}  // namespace sylvex
