#pragma once

#include <memory>
#include <unordered_map>

#include "component/border/dispatch.h"
#include "component/border/enumerator.h"
#include "component/border/values.h"
#include "component/objects/list_objects.h"
#include "platform/runtime_error.h"
#include "platform/win32/regional.h"

#include <ocidl.h>

namespace sylvex {

/// The objects of one list that somebody holds: each part of the list has at most one. They take themselves out.
class HeldObjects final : public ListCompanion {
public:
    /// Those of a list; made when first asked for.
    static HeldObjects& Of(WindowListView& list);
    HeldObjects() = default;
    /// Puts the window's own font back: the host's goes.
    ~HeldObjects() override;
    HeldObjects(const HeldObjects&) = delete;
    HeldObjects& operator=(const HeldObjects&) = delete;

    IListView* view = nullptr;
    IListItems* items = nullptr;
    IColumnHeaders* columns = nullptr;
    std::unordered_map<RowId, IListItem*> item;
    std::unordered_map<ColumnId, IColumnHeader*> column;
    /// The font that the host gave; null when it gave none.
    const ComPtr<IFont>& Font() const { return m_font; }
    /// Gives the window a host's font, null for the system's, and keeps it for as long as the window shows it. Raises
    /// 380 for a font without a handle, 398 when the window is gone.
    void SetFont(HWND window, const ComPtr<IFont>& font);

private:
    ComPtr<IFont> m_font;
    HWND m_window = nullptr;  // that shows it
    LRESULT m_before = 0;     // what it showed before
};

/// An automation object of a list: answers `Interface`, as the class `Class` of the type library.
template <class Interface, class Class, class... Parts>
class ListMember : public CountedObject<Dispatch<Interface>, ClassInfo<Class>, Parts...> {
protected:
    explicit ListMember(std::shared_ptr<WindowListView> list) : m_list(std::move(list)) {}

    const std::shared_ptr<WindowListView>& Shared() const { return m_list; }
    WindowListView& List() const { return *m_list; }
    ListWindow& Window() const { return m_list->Window(); }
    HeldObjects& Held() const { return HeldObjects::Of(*m_list); }
    /// Sends the list's window a message; raises 398 when it has gone.
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const
    {
        return SendMessageW(reinterpret_cast<HWND>(m_list->hWnd()), message, wParam, lParam);
    }

    /// Runs a member. What it does may run code of the host, which may let go of this object.
    template <class Body>
    HRESULT Member(Body&& body) noexcept
    {
        return Border(static_cast<Interface*>(this), __uuidof(Interface), std::forward<Body>(body));
    }

    template <class Value, class Read>
    HRESULT Get(Value* value, Read&& read) noexcept
    {
        return Member([&] { Give(value, read); });
    }

private:
    std::shared_ptr<WindowListView> m_list;
};

/// Walks places from 0 on and stands on the thing met last: when that one has been removed, the one that moved to its
/// place comes next. `Places` tells Count(), Id(place) and the object of a place.
template <class Places>
class PlaceWalk {
public:
    explicit PlaceWalk(Places places) : m_places(std::move(places)) {}
    bool Step()
    {
        const int count = m_places.Count();
        if (m_started && m_at < count && m_places.Id(m_at) == m_last) ++m_at;
        if (m_at >= count) return false;
        m_last = m_places.Id(m_at);
        return m_started = true;
    }
    auto Object() const { return m_places.Object(m_at); }
    void Restart()
    {
        m_started = false;
        m_at = 0;
    }

private:
    Places m_places;
    bool m_started = false;
    int m_at = 0;
    std::intptr_t m_last = 0;
};

template <class Places>
ComPtr<IUnknown> EnumeratorOf(Places places)
{
    return ComPtr<IUnknown>(Make<LiveEnumerator<PlaceWalk<Places>>>(PlaceWalk<Places>(std::move(places))).Get());
}

/// The object of the row or column at a place from 0.
ComPtr<IListItem> ItemObject(const std::shared_ptr<WindowListView>& list, int place);
ComPtr<IColumnHeader> ColumnObject(const std::shared_ptr<WindowListView>& list, int place);
/// The collections.
ComPtr<IListItems> ItemsObject(const std::shared_ptr<WindowListView>& list);
ComPtr<IColumnHeaders> ColumnsObject(const std::shared_ptr<WindowListView>& list);

/// Place of the row that a host names by its key or by its number from 1. Raises 35600, 35601, or 13.
int RowNamed(WindowListView& list, const VARIANT& index);
/// Place of the row behind an item object that a host handed in. Raises 13 when it is none of ours, 35601 when it
/// belongs to another list, 35605 when the row has been removed.
int RowBehind(WindowListView& list, IUnknown* item);
/// A picture's place in the image list as a host names it by number from 1; -1 for none. Raises 35601 for a key, since
/// the system's image list has none.
int PictureNamed(const VARIANT& picture);

/// A collection's or list's own object: the held one, otherwise a new one that notes itself.
template <class Object, class Interface>
ComPtr<Interface> HeldOrNew(Interface* held, const std::shared_ptr<WindowListView>& list)
{
    return held ? ComPtr<Interface>(held) : ComPtr<Interface>(Make<Object>(list).Get());
}

}  // namespace sylvex
