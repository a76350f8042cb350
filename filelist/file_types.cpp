#include "filelist/file_types.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace sylvex {

namespace {

/// The lengths to which the registry's texts are cut.
constexpr std::size_t kLongestClassName = 259;
constexpr std::size_t kLongestTypeName = 79;

std::wstring CutText(const std::optional<std::wstring>& value, std::size_t longest)
{
    if (!value) return {};
    return value->substr(0, std::min(longest, value->find(L'\0')));
}

}  // namespace

std::wstring FileTypes::GetFileType(const std::wstring& sExt, const std::wstring& FullPath, int& MyIcon)
{
    short i = -1;
    std::wstring sTypeName;
    const auto locals = VARIABLES(i, sTypeName);
    return Trapped(m_context.module, VARIABLES(sExt, FullPath, MyIcon), locals, [&](int& line) {
        if (sExt.empty()) return std::wstring();
        line = 2;
        std::vector<FTs>& TypeNew = m_state.TypeNew;
        i = BinarySearchTypeNew(sExt);
        if (i != -1) {
            MyIcon = TypeNew[static_cast<std::size_t>(i)].IconIndex;
            return TypeNew[static_cast<std::size_t>(i)].TypeName;
        }
        // The search does not meet every record.
        if (const auto known = m_known.find(sExt); known != m_known.end()) {
            MyIcon = known->second.IconIndex;
            return known->second.TypeName;
        }
        line = 3;
        sTypeName = RegisteredTypeName(sExt);
        line = 4;
        FTs record{sExt, sTypeName, 0};
        if (sTypeName.empty()) {
            record.TypeName = sTypeName = m_state.sNone;
        } else {
            record.IconIndex = m_context.platform.shell.SystemIconIndex(FullPath);
        }
        line = 5;
        MyIcon = record.IconIndex;
        m_known.emplace(sExt, record);
        // Positions are 16 bits; what no longer fits is known all the same.
        if (TypeNew.size() > static_cast<std::size_t>(std::numeric_limits<short>::max())) return sTypeName;
        TypeNew.push_back(std::move(record));
        ShellSortTypeNewArray();
        return sTypeName;
    });
}

std::wstring FileTypes::RegisteredTypeName(const std::wstring& sExt)
{
    System& system = m_context.platform.system;
    m_classReadLast = {sExt, system.ClassRootValue(L"." + sExt)};
    const std::wstring className = CutText(m_classReadLast.name, kLongestClassName);
    if (className.empty()) return {};
    return CutText(system.ClassRootValue(className), kLongestTypeName);
}

short FileTypes::BinarySearchTypeNew(const std::wstring& sExt)
{
    return Trapped(m_context.module, VARIABLES(sExt), [&](int& line) -> short {
        // By code units, in an array that is in order without regard to letter case: not every record is met.
        const std::vector<FTs>& TypeNew = m_state.TypeNew;
        int lo = 1;
        int hi = static_cast<int>(TypeNew.size()) - 1;
        line = 2;
        while (hi >= lo) {
            const int mid = (lo + hi) / 2;
            const int order = sExt.compare(TypeNew[static_cast<std::size_t>(mid)].Ext);
            if (order == 0) return static_cast<short>(mid);
            (order > 0 ? lo : hi) = order > 0 ? mid + 1 : mid - 1;
        }
        return -1;
    });
}

void FileTypes::ShellSortTypeNewArray()
{
    Trapped(m_context.module, [&](int& line) {
        std::vector<FTs>& TypeNew = m_state.TypeNew;
        const std::size_t count = TypeNew.size();
        for (std::size_t i = m_keys.size(); i < count; ++i)
            m_context.platform.regional.AppendSortKey(TypeNew[i].Ext, m_keys.emplace_back());
        // Nearly always one record has come behind those that are in order.
        if (std::exchange(m_inOrder, count) + 1 == count) return PlaceLast();
        const auto pass = [&](std::size_t i, std::size_t gap) {
            if (m_keys[i] <= m_keys[i + gap]) return;
            std::swap(m_keys[i], m_keys[i + gap]);
            std::swap(TypeNew[i], TypeNew[i + gap]);
        };
        for (std::size_t gap = count / 2; gap > 0; gap /= 2) {
            line = 2;
            for (std::size_t i = 0; i < count - gap; ++i)
                pass(i, gap);
            line = 3;
            for (std::size_t i = count - gap; i-- > 0;)
                pass(i, gap);
        }
    });
}

void FileTypes::PlaceLast()
{
    const auto place = std::upper_bound(m_keys.begin(), m_keys.end() - 1, m_keys.back()) - m_keys.begin();
    std::vector<FTs>& TypeNew = m_state.TypeNew;
    std::rotate(m_keys.begin() + place, m_keys.end() - 1, m_keys.end());
    std::rotate(TypeNew.begin() + place, TypeNew.end() - 1, TypeNew.end());
}

bool FileTypes::DrawnPerFile(const std::wstring& sExt)
{
    constexpr std::array<std::wstring_view, 10> kOwnPictures{L"exe", L"ico", L"cur", L"ani", L"lnk",
                                                             L"url", L"scr", L"pif", L"cpl", L"msc"};
    for (const std::wstring_view own : kOwnPictures)
        if (sExt == own) return true;
    if (sExt.empty()) return false;
    const auto known = m_drawnPerFile.find(sExt);
    if (known != m_drawnPerFile.end()) return known->second;
    // Kept only once it has been answered.
    return m_drawnPerFile[sExt] = RegisteredAsDrawnPerFile(sExt);
}

/// What is not registered has nothing below it, and most extensions of a long list are not.
bool FileTypes::RegisteredAsDrawnPerFile(const std::wstring& sExt)
{
    constexpr const wchar_t* kShared = L"SystemFileAssociations";
    System& system = m_context.platform.system;
    const bool readJustNow = m_classReadLast.ext == sExt;
    const std::optional<std::wstring> className =
        readJustNow ? m_classReadLast.name : system.ClassRootValue(L"." + sExt);
    if (className && (KeyDrawsPerFile(L"." + sExt) || KeyDrawsPerFile(*className))) return true;
    if (!m_hasSharedAssociations) m_hasSharedAssociations = system.ClassRootValue(kShared).has_value();
    return *m_hasSharedAssociations && KeyDrawsPerFile(std::wstring(kShared) + L"\\." + sExt);
}

/// Whether the registration below a key of the class root has its files drawn one by one.
bool FileTypes::KeyDrawsPerFile(const std::wstring& key)
{
    System& system = m_context.platform.system;
    if (key.empty() || !system.ClassRootValue(key)) return false;
    const std::optional<std::wstring> picture = system.ClassRootValue(key + L"\\DefaultIcon");
    if (picture && picture->find(L"%1") != std::wstring::npos) return true;
    return system.ClassRootValue(key + L"\\shellex\\IconHandler").has_value();
}

}  // namespace sylvex
