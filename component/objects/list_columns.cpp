#include "component/border/object_ref.h"
#include "component/objects/list_member.h"

#include <commctrl.h>

#include <algorithm>
#include <vector>

namespace sylvex {

namespace {

/// The width of a column that the host gave none.
constexpr double kUsualWidth = 1440;

int ColumnNamed(WindowListView& list, const VARIANT& index)
{
    const Variant value(index);
    if (value.Type() == VT_BSTR) return list.PlaceOfColumn(TextOf(value.Get()));
    const long number = IndexOf(value.Get());
    if (number < 1 || number > list.ColumnCount()) throw IndexOutOfBounds();
    return static_cast<int>(number) - 1;
}

double WidthOf(const VARIANT& value)
{
    if (IsMissing(value)) return kUsualWidth;
    Variant width(value);
    if (FAILED(width.ChangeType(VT_R8))) ThrowTypeMismatch();
    if (!(V_R8(&width.Get()) >= 0)) throw InvalidPropertyValue();
    return V_R8(&width.Get());
}

Alignment AlignmentOf(long value)
{
    if (value < lvwColumnLeft || value > lvwColumnCenter) throw InvalidPropertyValue();
    return static_cast<Alignment>(value);
}

class ColumnHeaderObject final : public ListMember<IColumnHeader, ::ColumnHeader> {
public:
    ColumnHeaderObject(std::shared_ptr<WindowListView> list, ColumnId column)
        : ListMember(std::move(list)), m_column(column)
    {
        Held().column[m_column] = this;
    }

    STDMETHODIMP get_Text(BSTR* value) override
    {
        return Get(value, [&] { return List().Caption(Place()); });
    }
    STDMETHODIMP put_Text(BSTR value) override
    {
        return Member([&] { List().SetCaption(Place(), std::wstring(ViewOf(value))); });
    }
    STDMETHODIMP get_Key(BSTR* value) override
    {
        return Get(value, [&] { return List().ColumnKey(Place()); });
    }
    STDMETHODIMP put_Key(BSTR value) override
    {
        return Member([&] { List().SetColumnKey(Place(), std::wstring(ViewOf(value))); });
    }
    STDMETHODIMP get_Index(LONG* value) override
    {
        return Get(value, [&] { return Place() + 1; });
    }
    STDMETHODIMP get_SubItemIndex(short* value) override
    {
        return Get(value, [&] { return Place(); });
    }
    STDMETHODIMP put_SubItemIndex(short value) override
    {
        // A column of the window always shows the sub-item of its own number.
        return Member([&] {
            if (value != Place()) throw InvalidPropertyValue();
        });
    }
    STDMETHODIMP get_Width(float* value) override
    {
        return Get(value, [&] { return List().Width(Place()); });
    }
    STDMETHODIMP put_Width(float value) override
    {
        return Member([&] { List().SetWidth(Place(), value); });
    }
    STDMETHODIMP get_Alignment(ListColumnAlignmentConstants* value) override
    {
        return Get(value, [&] { return List().AlignmentOf(Place()); });
    }
    STDMETHODIMP put_Alignment(ListColumnAlignmentConstants value) override
    {
        return Member([&] { List().SetAlignment(Place(), AlignmentOf(value)); });
    }
    STDMETHODIMP get_Position(short* value) override;
    STDMETHODIMP put_Position(short value) override;
    STDMETHODIMP get_Tag(VARIANT* value) override
    {
        return Get(value, [&] { return ValueBehind(List().ColumnTag(Place())); });
    }
    STDMETHODIMP put_Tag(VARIANT value) override
    {
        return Member([&] {
            // The old tag's release may run code of the host, which may remove the column.
            const ObjectRef before = List().ColumnTag(Place());
            List().SetColumnTag(Place(), ReferTo(value));
        });
    }

private:
    ~ColumnHeaderObject() override { Held().column.erase(m_column); }
    int Place() const { return List().PlaceOfColumn(m_column); }
    std::vector<int> Order() const;

    const ColumnId m_column;
};

/// The columns from the left.
std::vector<int> ColumnHeaderObject::Order() const
{
    std::vector<int> order(static_cast<std::size_t>(List().ColumnCount()));
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = static_cast<int>(i);
    Send(LVM_GETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
    return order;
}

STDMETHODIMP ColumnHeaderObject::get_Position(short* value)
{
    return Get(value, [&] {
        const int place = Place();
        const std::vector<int> order = Order();
        return std::find(order.begin(), order.end(), place) - order.begin() + 1;
    });
}

STDMETHODIMP ColumnHeaderObject::put_Position(short value)
{
    return Member([&] {
        const int place = Place();
        std::vector<int> order = Order();
        if (value < 1 || value > static_cast<short>(order.size())) throw InvalidPropertyValue();
        std::erase(order, place);
        order.insert(order.begin() + (value - 1), place);
        Send(LVM_SETCOLUMNORDERARRAY, order.size(), reinterpret_cast<LPARAM>(order.data()));
        List().Refresh();
    });
}

/// The columns as an enumerator walks them.
struct ColumnPlaces {
    std::shared_ptr<WindowListView> list;
    int Count() const { return list->ColumnCount(); }
    std::intptr_t Id(int place) const { return static_cast<std::intptr_t>(list->ColumnAt(place)); }
    ComPtr<IColumnHeader> Object(int place) const { return ColumnObject(list, place); }
};

class ColumnHeadersObject final : public ListMember<IColumnHeaders, ::ColumnHeaders> {
public:
    explicit ColumnHeadersObject(std::shared_ptr<WindowListView> list) : ListMember(std::move(list))
    {
        Held().columns = this;
    }

    STDMETHODIMP get_Item(VARIANT Index, IColumnHeader** value) override
    {
        return Get(value, [&] { return ColumnObject(Shared(), ColumnNamed(List(), Index)); });
    }
    STDMETHODIMP get_Count(LONG* value) override
    {
        return Get(value, [&] { return List().ColumnCount(); });
    }
    STDMETHODIMP Add(VARIANT Index, VARIANT Key, VARIANT Text, VARIANT Width, VARIANT Alignment, VARIANT Icon,
                     IColumnHeader** result) override;
    STDMETHODIMP Remove(VARIANT Index) override
    {
        return Member([&] { List().RemoveColumn(ColumnNamed(List(), Index)); });
    }
    STDMETHODIMP Clear() override
    {
        return Member([&] { List().ClearColumns(); });
    }
    STDMETHODIMP get__NewEnum(IUnknown** value) override
    {
        return Get(value, [&] { return EnumeratorOf(ColumnPlaces{Shared()}); });
    }

private:
    ~ColumnHeadersObject() override { Held().columns = nullptr; }
};

STDMETHODIMP ColumnHeadersObject::Add(VARIANT Index, VARIANT Key, VARIANT Text, VARIANT Width, VARIANT alignment,
                                      VARIANT Icon, IColumnHeader** result)
{
    return Get(result, [&] {
        const int count = List().ColumnCount();
        const long number = IsMissing(Index) ? count + 1 : IndexOf(Index);
        if (number < 1 || number > count + 1) throw IndexOutOfBounds();
        PictureNamed(Icon);
        const auto aligned = AlignmentOf(IsMissing(alignment) ? 0L : IndexOf(alignment));
        const ColumnId column =
            List().InsertColumn(static_cast<int>(number) - 1, TextOf(Key), TextOf(Text), WidthOf(Width), aligned);
        return ColumnObject(Shared(), List().PlaceOfColumn(column));
    });
}

}  // namespace

ComPtr<IColumnHeader> ColumnObject(const std::shared_ptr<WindowListView>& list, int place)
{
    const ColumnId column = list->ColumnAt(place);
    auto& held = HeldObjects::Of(*list).column;
    const auto found = held.find(column);
    if (found != held.end()) return ComPtr<IColumnHeader>(found->second);
    return ComPtr<IColumnHeader>(Make<ColumnHeaderObject>(list, column).Get());
}

ComPtr<IColumnHeaders> ColumnsObject(const std::shared_ptr<WindowListView>& list)
{
    return HeldOrNew<ColumnHeadersObject>(HeldObjects::Of(*list).columns, list);
}

}  // namespace sylvex
