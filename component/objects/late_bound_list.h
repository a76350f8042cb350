#pragma once

#include <memory>

#include "component/border/late_object.h"
#include "platform/platform.h"
#include "widgets/listview.h"

namespace sylvex {

/// A list view that is an automation object of the host, called by name as a script would call it.
class LateBoundListView final : public ListView {
public:
    /// Raises 13 when the object lacks ListItems, ColumnHeaders, hWnd, SortKey or Sorted.
    explicit LateBoundListView(const ComPtr<IDispatch>& object);

    WindowHandle hWnd() override;
    std::shared_ptr<Frozen> Freeze() override;
    void SetVisible(bool visible) override;
    void Refresh() override;
    void ClearItems() override;
    void ClearColumns() override;
    void AddColumn(const ListColumn& column) override;
    int SubItemIndex(const std::wstring& key) override;
    void SetColumnWidth(const std::wstring& key, double twips) override;
    void AddRows(RowSource& rows, bool sortFollows) override;
    void SortBy(int column) override;
    int RowCount() override;
    std::vector<std::wstring> Texts() override;
    std::optional<std::wstring> SelectedCell(int column) override;
    bool IsSelectedItemSelected() override;
    ObjectRef HostObject() override;

    const ComPtr<IDispatch>& Dispatch() const { return m_list.Object(); }

private:
    ComPtr<IDispatch> AddItem();
    void AddRow(const ListRow& row);
    void SetIcon(const ComPtr<IDispatch>& item, int image);
    LateCaller& ItemCaller(const ComPtr<IDispatch>& item);
    LateCaller& Items();
    LateCaller& Columns();
    LateCaller& ColumnNamed(const std::wstring& key);

    LateCaller m_list;
    LateCaller m_items;
    LateCaller m_item;
    LateCaller m_columns;
    LateCaller m_column;
    WindowHandle m_window = 0;  // that takes pictures while rows are added
    bool m_addTakesAll = false;
};

/// The list view that a host hands over: nothing gives null; a number is a list-view window's handle; an object is one
/// of ours or any with the members of a list view. Raises 13 for anything else.
std::shared_ptr<ListView> ListViewFromVariant(Platform& platform, const VARIANT& given);

/// The object of a list view for the host: its own, or ours for a list given by handle; nothing for null.
Variant VariantFromListView(const std::shared_ptr<ListView>& list);

}  // namespace sylvex
