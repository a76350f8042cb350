#include "component/objects/list_objects.h"

#include "component/border/fonts.h"
#include "component/border/object_ref.h"
#include "component/objects/list_member.h"

#include <commctrl.h>

#include <algorithm>
#include <array>

namespace sylvex {

namespace {

/// How the component knows its own list objects among others that answer the same interface.
class ListIdentity {
public:
    static const IID kId;
    void* Find(const IID& id) { return id == kId ? this : nullptr; }
    virtual const std::shared_ptr<WindowListView>& OwnList() const = 0;

protected:
    ~ListIdentity() = default;
};

const IID ListIdentity::kId = {0x6b2d5f0a, 0x91c7, 0x4e38, {0xa4, 0x7e, 0x0d, 0x35, 0xc8, 0x1f, 0x62, 0x9b}};

/// The styles of the views, by the views' numbers.
constexpr std::array<LONG_PTR, 4> kViewStyles{LVS_ICON, LVS_SMALLICON, LVS_LIST, LVS_REPORT};

/// What FindItem looks at.
enum class SearchIn { Text = 0, SubItem = 1, Tag = 2 };

long NumberOr(const VARIANT& value, long otherwise)
{
    return IsMissing(value) ? otherwise : IndexOf(value);
}

class ListViewObject final : public ListMember<IListView, ::ListView, ListIdentity> {
public:
    explicit ListViewObject(std::shared_ptr<WindowListView> list) : ListMember(std::move(list)) { Held().view = this; }
    const std::shared_ptr<WindowListView>& OwnList() const override { return Shared(); }

    STDMETHODIMP get_ListItems(IListItems** value) override
    {
        return Get(value, [&] { return ItemsObject(Shared()); });
    }
    STDMETHODIMP get_ColumnHeaders(IColumnHeaders** value) override
    {
        return Get(value, [&] { return ColumnsObject(Shared()); });
    }
    STDMETHODIMP get_SelectedItem(IListItem** value) override;
    STDMETHODIMP putref_SelectedItem(IListItem* value) override;
    STDMETHODIMP get_SortKey(short* value) override
    {
        return Get(value, [&] { return List().SortKey(); });
    }
    STDMETHODIMP put_SortKey(short value) override
    {
        return Member([&] { List().SetSortKey(value); });
    }
    STDMETHODIMP get_SortOrder(ListSortOrderConstants* value) override
    {
        return Get(value, [&] { return List().Descending() ? lvwDescending : lvwAscending; });
    }
    STDMETHODIMP put_SortOrder(ListSortOrderConstants value) override;
    STDMETHODIMP get_Sorted(VARIANT_BOOL* value) override
    {
        return Get(value, [&] { return List().Sorted(); });
    }
    STDMETHODIMP put_Sorted(VARIANT_BOOL value) override
    {
        return Member([&] { List().SetSorted(value != VARIANT_FALSE); });
    }
    STDMETHODIMP get_Visible(VARIANT_BOOL* value) override
    {
        return Get(value, [&] { return Window().Visible(); });
    }
    STDMETHODIMP put_Visible(VARIANT_BOOL value) override
    {
        return Member([&] { List().SetVisible(value != VARIANT_FALSE); });
    }
    STDMETHODIMP Refresh() override
    {
        return Member([&] { List().Refresh(); });
    }
    STDMETHODIMP get_hWnd(LONG* value) override
    {
        return Get(value, [&] { return List().hWnd(); });
    }
    STDMETHODIMP get_View(short* value) override;
    STDMETHODIMP put_View(short value) override;
    STDMETHODIMP FindItem(BSTR Text, VARIANT Where, VARIANT Index, VARIANT Match, IListItem** result) override;
    STDMETHODIMP get_Font(IFontDisp** value) override;
    STDMETHODIMP putref_Font(IFontDisp* value) override;

private:
    ~ListViewObject() override { Held().view = nullptr; }
    HWND Handle() const { return reinterpret_cast<HWND>(List().hWnd()); }
    bool Matches(int place, std::wstring_view text, SearchIn where, bool beginning) const;
};

STDMETHODIMP ListViewObject::get_SelectedItem(IListItem** value)
{
    return Get(value, [&] {
        const int place = Window().SelectedRow();
        return place >= 0 ? ItemObject(Shared(), place) : nullptr;
    });
}

STDMETHODIMP ListViewObject::putref_SelectedItem(IListItem* value)
{
    return Member([&] {
        const int place = value ? RowBehind(List(), value) : -1;
        const auto next = [&](LRESULT after) {
            return Send(LVM_GETNEXTITEM, static_cast<WPARAM>(after), LVNI_SELECTED);
        };
        for (LRESULT selected = next(-1); selected >= 0; selected = next(selected))
            if (selected != place) Window().SelectRow(static_cast<int>(selected), false);
        if (place >= 0) Window().SelectRow(place, true);
    });
}

STDMETHODIMP ListViewObject::put_SortOrder(ListSortOrderConstants value)
{
    return Member([&] {
        if (value != lvwAscending && value != lvwDescending) throw InvalidPropertyValue();
        List().SetDescending(value == lvwDescending);
    });
}

STDMETHODIMP ListViewObject::get_View(short* value)
{
    return Get(value, [&] {
        const LONG_PTR style = GetWindowLongPtrW(Handle(), GWL_STYLE) & LVS_TYPEMASK;
        return std::find(kViewStyles.begin(), kViewStyles.end(), style) - kViewStyles.begin();
    });
}

STDMETHODIMP ListViewObject::put_View(short value)
{
    return Member([&] {
        if (value < 0 || value >= static_cast<short>(kViewStyles.size())) throw InvalidPropertyValue();
        const LONG_PTR others = GetWindowLongPtrW(Handle(), GWL_STYLE) & ~static_cast<LONG_PTR>(LVS_TYPEMASK);
        SetWindowLongPtrW(Handle(), GWL_STYLE, others | kViewStyles[static_cast<std::size_t>(value)]);
    });
}

STDMETHODIMP ListViewObject::FindItem(BSTR Text, VARIANT Where, VARIANT Index, VARIANT Match, IListItem** result)
{
    return Get(result, [&]() -> ComPtr<IListItem> {
        const long where = NumberOr(Where, 0);
        if (where < 0 || where > static_cast<long>(SearchIn::Tag)) throw InvalidPropertyValue();
        const bool beginning = NumberOr(Match, 0) != 0;
        const int count = Window().RowCount();
        for (int place = IsMissing(Index) ? 0 : RowNamed(List(), Index); place < count; ++place) {
            if (!Matches(place, ViewOf(Text), static_cast<SearchIn>(where), beginning)) continue;
            return ItemObject(Shared(), place);
        }
        return nullptr;
    });
}

bool ListViewObject::Matches(int place, std::wstring_view text, SearchIn where, bool beginning) const
{
    const auto same = [&](const std::wstring& found) {
        const std::wstring_view compared(found);
        return CompareTexts(beginning ? compared.substr(0, text.size()) : compared, text) == 0;
    };
    if (where == SearchIn::Text) return same(Window().Cell(place, 0));
    if (where == SearchIn::Tag) {
        const Variant tag = ValueBehind(List().TagOf(List().IdAt(place)));
        return tag.Type() == VT_BSTR && same(TextOf(tag.Get()));
    }
    for (int column = 1; column < List().ColumnCount(); ++column) {
        if (same(Window().Cell(place, column))) return true;
    }
    return false;
}

STDMETHODIMP ListViewObject::get_Font(IFontDisp** value)
{
    return Get(value, [&] {
        const auto shown = reinterpret_cast<HFONT>(Send(WM_GETFONT));
        HFONT given = nullptr;
        const ComPtr<IFont>& font = Held().Font();
        const bool isGiven = font && SUCCEEDED(font->get_hFont(&given)) && given == shown;
        return isGiven ? font.As<IFontDisp>() : FontLike(shown);
    });
}

STDMETHODIMP ListViewObject::putref_Font(IFontDisp* value)
{
    return Member([&] { Held().SetFont(Handle(), Incoming<IFont>(value)); });
}

}  // namespace

HeldObjects::~HeldObjects()
{
    HFONT given = nullptr;
    if (!m_font || !IsWindow(m_window) || FAILED(m_font->get_hFont(&given))) return;
    if (SendMessageW(m_window, WM_GETFONT, 0, 0) == reinterpret_cast<LRESULT>(given))
        SendMessageW(m_window, WM_SETFONT, static_cast<WPARAM>(m_before), TRUE);
}

void HeldObjects::SetFont(HWND window, const ComPtr<IFont>& font)
{
    HFONT handle = nullptr;
    if (font && FAILED(font->get_hFont(&handle))) throw InvalidPropertyValue();
    if (!m_font) m_before = SendMessageW(window, WM_GETFONT, 0, 0);
    m_window = window;
    // The window draws with the old one until it has the new one.
    SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(handle), TRUE);
    m_font = font;
}

HeldObjects& HeldObjects::Of(WindowListView& list)
{
    // Nothing else becomes the companion of a list.
    if (!list.companion) list.companion = std::make_unique<HeldObjects>();
    return static_cast<HeldObjects&>(*list.companion);
}

ComPtr<IListView> ListObject(const std::shared_ptr<WindowListView>& list)
{
    return HeldOrNew<ListViewObject>(HeldObjects::Of(*list).view, list);
}

std::shared_ptr<WindowListView> ListBehind(IUnknown* object)
{
    void* identity = nullptr;
    if (!object || FAILED(object->QueryInterface(ListIdentity::kId, &identity))) return nullptr;
    // The caller's own reference keeps the object.
    object->Release();
    return static_cast<ListIdentity*>(identity)->OwnList();
}

}  // namespace sylvex
