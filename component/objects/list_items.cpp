#include "component/border/object_ref.h"
#include "component/objects/list_member.h"

#include <commctrl.h>

namespace sylvex {

namespace {

/// How the component knows its own item objects among others that answer the same interface.
class ItemIdentity {
public:
    static const IID kId;
    void* Find(const IID& id) { return id == kId ? this : nullptr; }
    /// Place of the row; raises 35605 when it has been removed, 35601 when it belongs to another list.
    virtual int PlaceIn(const WindowListView& list) const = 0;

protected:
    ~ItemIdentity() = default;
};

const IID ItemIdentity::kId = {0x2f94c7d1, 0x5ab0, 0x43ee, {0x8c, 0x16, 0xe9, 0x70, 0x4b, 0xd2, 0x58, 0x3a}};

class ListItemObject final : public ListMember<IListItem, ::ListItem, ItemIdentity> {
public:
    ListItemObject(std::shared_ptr<WindowListView> list, RowId row) : ListMember(std::move(list)), m_row(row)
    {
        Held().item[m_row] = this;
    }

    STDMETHODIMP get_Text(BSTR* value) override
    {
        return Get(value, [&] { return Window().Cell(Place(), 0); });
    }
    STDMETHODIMP put_Text(BSTR value) override
    {
        return Member([&] { List().SetCell(Place(), 0, std::wstring(ViewOf(value))); });
    }
    STDMETHODIMP get_Key(BSTR* value) override
    {
        return Get(value, [&] { return Place(), List().KeyOf(m_row); });
    }
    STDMETHODIMP put_Key(BSTR value) override
    {
        return Member([&] { Place(), List().SetKey(m_row, std::wstring(ViewOf(value))); });
    }
    STDMETHODIMP get_Index(LONG* value) override
    {
        return Get(value, [&] { return Place() + 1; });
    }
    STDMETHODIMP get_SubItems(short Index, BSTR* value) override
    {
        return Get(value, [&] { return Window().Cell(Place(), SubItem(Index)); });
    }
    STDMETHODIMP put_SubItems(short Index, BSTR value) override
    {
        return Member([&] { List().SetCell(Place(), SubItem(Index), std::wstring(ViewOf(value))); });
    }
    STDMETHODIMP get_Checked(VARIANT_BOOL* value) override
    {
        return Get(value, [&] { return Window().IsChecked(Place()); });
    }
    STDMETHODIMP put_Checked(VARIANT_BOOL value) override
    {
        return Member([&] { Window().CheckRow(Place(), value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_Selected(VARIANT_BOOL* value) override
    {
        return Get(value, [&] { return Window().IsSelected(Place()); });
    }
    STDMETHODIMP put_Selected(VARIANT_BOOL value) override
    {
        return Member([&] { Window().SelectRow(Place(), value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_Ghosted(VARIANT_BOOL* value) override;
    STDMETHODIMP put_Ghosted(VARIANT_BOOL value) override;
    STDMETHODIMP get_Icon(VARIANT* value) override;
    STDMETHODIMP put_Icon(VARIANT value) override { return put_SmallIcon(value); }
    STDMETHODIMP get_SmallIcon(VARIANT* value) override { return get_Icon(value); }
    STDMETHODIMP put_SmallIcon(VARIANT value) override
    {
        return Member([&] { Window().SetRowImage(Place(), PictureNamed(value)); });
    }
    STDMETHODIMP get_Tag(VARIANT* value) override;
    STDMETHODIMP put_Tag(VARIANT value) override;
    STDMETHODIMP EnsureVisible(VARIANT_BOOL* result) override;

    int PlaceIn(const WindowListView& list) const override
    {
        if (&list != &List()) throw ElementNotFound();
        return Place();
    }

private:
    ~ListItemObject() override { Held().item.erase(m_row); }
    int Place() const { return List().PlaceOf(m_row); }
    int SubItem(int index) const
    {
        if (index < 1 || index >= List().ColumnCount()) throw IndexOutOfBounds();
        return index;
    }

    const RowId m_row;
};

STDMETHODIMP ListItemObject::get_Ghosted(VARIANT_BOOL* value)
{
    return Get(value, [&] { return (Send(LVM_GETITEMSTATE, static_cast<WPARAM>(Place()), LVIS_CUT) & LVIS_CUT) != 0; });
}

STDMETHODIMP ListItemObject::put_Ghosted(VARIANT_BOOL value)
{
    return Member([&] {
        LVITEMW item{};
        item.stateMask = LVIS_CUT;
        item.state = value != VARIANT_FALSE ? LVIS_CUT : 0;
        Send(LVM_SETITEMSTATE, static_cast<WPARAM>(Place()), reinterpret_cast<LPARAM>(&item));
    });
}

STDMETHODIMP ListItemObject::get_Icon(VARIANT* value)
{
    return Get(value, [&] { return Variant(static_cast<long>(Window().RowImage(Place()) + 1)); });
}

STDMETHODIMP ListItemObject::get_Tag(VARIANT* value)
{
    return Get(value, [&] { return Place(), ValueBehind(List().TagOf(m_row)); });
}

STDMETHODIMP ListItemObject::put_Tag(VARIANT value)
{
    return Member([&] {
        Place();
        // The old tag's release may run code of the host, which may remove the row.
        const ObjectRef before = List().TagOf(m_row);
        List().SetTag(m_row, ReferTo(value));
    });
}

STDMETHODIMP ListItemObject::EnsureVisible(VARIANT_BOOL* result)
{
    return Get(result, [&] {
        const LRESULT top = Send(LVM_GETTOPINDEX);
        Window().EnsureVisible(Place());
        return Send(LVM_GETTOPINDEX) != top;
    });
}

/// The rows as an enumerator walks them.
struct RowPlaces {
    std::shared_ptr<WindowListView> list;
    int Count() const { return list->RowCount(); }
    std::intptr_t Id(int place) const { return list->IdAt(place); }
    ComPtr<IListItem> Object(int place) const { return ItemObject(list, place); }
};

class ListItemsObject final : public ListMember<IListItems, ::ListItems> {
public:
    explicit ListItemsObject(std::shared_ptr<WindowListView> list) : ListMember(std::move(list))
    {
        Held().items = this;
    }

    STDMETHODIMP get_Item(VARIANT Index, IListItem** value) override
    {
        return Get(value, [&] { return ItemObject(Shared(), RowNamed(List(), Index)); });
    }
    STDMETHODIMP get_Count(LONG* value) override
    {
        return Get(value, [&] { return List().RowCount(); });
    }
    STDMETHODIMP Add(VARIANT Index, VARIANT Key, VARIANT Text, VARIANT Icon, VARIANT SmallIcon,
                     IListItem** result) override;
    STDMETHODIMP Remove(VARIANT Index) override
    {
        return Member([&] { List().RemoveRow(RowNamed(List(), Index)); });
    }
    STDMETHODIMP Clear() override
    {
        return Member([&] { List().ClearItems(); });
    }
    STDMETHODIMP get__NewEnum(IUnknown** value) override
    {
        return Get(value, [&] { return EnumeratorOf(RowPlaces{Shared()}); });
    }

private:
    ~ListItemsObject() override { Held().items = nullptr; }
    int PlaceForNew(const VARIANT& index, std::wstring_view text) const;
};

STDMETHODIMP ListItemsObject::Add(VARIANT Index, VARIANT Key, VARIANT Text, VARIANT Icon, VARIANT SmallIcon,
                                  IListItem** result)
{
    return Get(result, [&] {
        const std::wstring text = TextOf(Text);
        const int image = PictureNamed(IsMissing(SmallIcon) ? Icon : SmallIcon);
        const RowId row = List().InsertRow(PlaceForNew(Index, text), text, image, TextOf(Key));
        return ItemObject(Shared(), List().PlaceOf(row));
    });
}

/// Where a host wants a new row; in a sorted list without such a wish, where it belongs.
int ListItemsObject::PlaceForNew(const VARIANT& index, std::wstring_view text) const
{
    const int count = List().RowCount();
    if (!IsMissing(index)) {
        const long number = IndexOf(index);
        if (number < 1 || number > count + 1) throw IndexOutOfBounds();
        return static_cast<int>(number) - 1;
    }
    if (!List().Sorted()) return count;
    const std::wstring_view sorted = List().SortKey() == 0 ? text : std::wstring_view();
    int first = 0;
    int last = count;
    while (first < last) {
        const int middle = first + (last - first) / 2;
        const int order = CompareTexts(Window().Cell(middle, List().SortKey()), sorted);
        const bool goesBehind = List().Descending() ? order >= 0 : order <= 0;
        (goesBehind ? first : last) = goesBehind ? middle + 1 : middle;
    }
    return first;
}

}  // namespace

ComPtr<IListItem> ItemObject(const std::shared_ptr<WindowListView>& list, int place)
{
    const RowId row = list->IdAt(place);
    auto& held = HeldObjects::Of(*list).item;
    const auto found = held.find(row);
    if (found != held.end()) return ComPtr<IListItem>(found->second);
    return ComPtr<IListItem>(Make<ListItemObject>(list, row).Get());
}

ComPtr<IListItems> ItemsObject(const std::shared_ptr<WindowListView>& list)
{
    return HeldOrNew<ListItemsObject>(HeldObjects::Of(*list).items, list);
}

int RowNamed(WindowListView& list, const VARIANT& index)
{
    const Variant value(index);
    if (value.Type() == VT_BSTR) return list.PlaceOf(TextOf(value.Get()));
    const long number = IndexOf(value.Get());
    if (number < 1 || number > list.RowCount()) throw IndexOutOfBounds();
    return static_cast<int>(number) - 1;
}

int RowBehind(WindowListView& list, IUnknown* item)
{
    void* identity = nullptr;
    if (FAILED(item->QueryInterface(ItemIdentity::kId, &identity))) ThrowTypeMismatch();
    // The caller's own reference keeps the object.
    item->Release();
    return static_cast<const ItemIdentity*>(identity)->PlaceIn(list);
}

int PictureNamed(const VARIANT& picture)
{
    if (IsMissing(picture) || V_VT(&picture) == VT_EMPTY) return -1;
    const Variant value(picture);
    if (value.Type() == VT_BSTR && SysStringLen(V_BSTR(&value.Get())) > 0) throw ElementNotFound();
    return value.Type() == VT_BSTR ? -1 : static_cast<int>(IndexOf(value.Get())) - 1;
}

}  // namespace sylvex
