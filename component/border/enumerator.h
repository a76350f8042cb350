#pragma once

#include <utility>
#include <vector>

#include "com/object.h"

namespace sylvex {

/// An enumerator of a fixed list. `Interface` is the enumeration's interface and `Held` what the list keeps; a function
/// Raw HandOut(const Held&) beside that type makes what the caller of the enumerator gets and owns.
template <class Interface, class Raw, class Held>
class ListEnumerator final : public CountedObject<Interface> {
public:
    explicit ListEnumerator(std::vector<Held> items, std::size_t at = 0) : m_items(std::move(items)), m_at(at) {}

    STDMETHODIMP Next(ULONG count, Raw* items, ULONG* fetched) override
    {
        if (!items || (!fetched && count != 1)) return E_POINTER;
        ULONG given = 0;
        while (given < count && m_at < m_items.size())
            items[given++] = HandOut(m_items[m_at++]);
        if (fetched) *fetched = given;
        return given == count ? S_OK : S_FALSE;
    }
    STDMETHODIMP Skip(ULONG count) override
    {
        const std::size_t left = m_items.size() - m_at;
        m_at += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    STDMETHODIMP Reset() override
    {
        m_at = 0;
        return S_OK;
    }
    STDMETHODIMP Clone(Interface** copy) override
    {
        if (!copy) return E_POINTER;
        return Border(__uuidof(Interface), [&] { *copy = Make<ListEnumerator>(m_items, m_at).Detach(); });
    }

private:
    std::vector<Held> m_items;
    std::size_t m_at;
};

/// An enumerator of objects that may come and go meanwhile. `Walk` stands somewhere among them and is copied with the
/// enumerator: Step() goes on and tells whether there is something, Object() is what it stands on, Restart() goes back
/// before the first.
template <class Walk>
class LiveEnumerator final : public CountedObject<IEnumVARIANT> {
public:
    explicit LiveEnumerator(Walk walk) : m_walk(std::move(walk)) {}

    STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override
    {
        if (!items || (!fetched && count != 1)) return E_POINTER;
        ULONG given = 0;
        const HRESULT result = Border(IID_IEnumVARIANT, [&] {
            for (; given < count && m_walk.Step(); ++given)
                items[given] = Variant(m_walk.Object().Get()).Detach();
            return given == count ? S_OK : S_FALSE;
        });
        if (fetched) *fetched = given;
        return result;
    }
    STDMETHODIMP Skip(ULONG count) override
    {
        return Border(IID_IEnumVARIANT, [&] {
            while (count > 0 && m_walk.Step())
                --count;
            return count == 0 ? S_OK : S_FALSE;
        });
    }
    STDMETHODIMP Reset() override
    {
        m_walk.Restart();
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT** copy) override
    {
        if (!copy) return E_POINTER;
        return Border(IID_IEnumVARIANT, [&] { *copy = Make<LiveEnumerator>(m_walk).Detach(); });
    }

private:
    Walk m_walk;
};

}  // namespace sylvex
