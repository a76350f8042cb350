#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/runtime_error.h"
#include "widgets/listview.h"

namespace sylvex {

/// What the file-type cache knows of one extension.
struct FTs {
    static constexpr const wchar_t* kRecordName = L"{FTs}";
    std::wstring Ext;
    std::wstring TypeName;
    int IconIndex = 0;
};

/// The list's variables of one control, under the names that reports print.
struct FileListState {
    std::wstring WinDir, SysDir, TempDir, SourcePath;
    std::wstring sFolder, sName, sExtension, sSize, sType, sModified, sTime, sCreated, sAccessed, sAttribute, sMsDos,
        sNone;
    bool IsFAT = false;
    std::vector<FTs> TypeNew{FTs{}};
    std::shared_ptr<ListView> m_ReqListView;
    std::vector<std::wstring> m_BuildFileListFilter{L"*"};

    /// The list view bound, kept in existence by the caller. Raises 91 when none is.
    std::shared_ptr<ListView> BoundList() const
    {
        if (!m_ReqListView) throw ObjectNotSet();
        return m_ReqListView;
    }
};

}  // namespace sylvex
