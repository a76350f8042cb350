#include "component/nodes_object.h"

#include "component/node_object.h"
#include "component/values.h"

namespace sylvex {

namespace {

bool IsObject(const VARIANT& value)
{
    const VARTYPE type = V_VT(&value) & static_cast<VARTYPE>(~VT_BYREF);
    return type == VT_DISPATCH || type == VT_UNKNOWN;
}

bool IsAbsent(const VARIANT& value)
{
    return IsMissing(value) || V_VT(&value) == VT_EMPTY;
}

/// A number of the enumeration; without one a new node comes right behind its relative, or last among the roots.
Relationship RelationshipOf(const VARIANT& value, const Node* relative)
{
    if (IsAbsent(value)) return relative ? Relationship::Next : Relationship::Last;
    const long number = IndexOf(value);
    if (number < static_cast<long>(Relationship::First) || number > static_cast<long>(Relationship::Child)) {
        throw InvalidPropertyValue();
    }
    return static_cast<Relationship>(number);
}

/// Walks the nodes by index. The walk stands on the node that it gave last, so nodes may come and go meanwhile: when
/// that one has gone, the node that moved to its place comes next.
class NodeEnumerator final : public CountedObject<IEnumVARIANT> {
public:
    explicit NodeEnumerator(std::shared_ptr<TreeLink> link) : m_link(std::move(link)) {}

    STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override
    {
        if (!items) return E_POINTER;
        ULONG given = 0;
        const HRESULT result = Border(IID_IEnumVARIANT, [&] {
            for (Node* node = nullptr; given < count && (node = Step()) != nullptr; ++given) {
                items[given] = Variant(m_link->Objects().ObjectOf(node).Get()).Detach();
            }
            return given == count ? S_OK : S_FALSE;
        });
        if (fetched) *fetched = given;
        return result;
    }
    STDMETHODIMP Skip(ULONG count) override
    {
        return Border(IID_IEnumVARIANT, [&] {
            for (; count > 0; --count) {
                if (!Step()) return S_FALSE;
            }
            return S_OK;
        });
    }
    STDMETHODIMP Reset() override
    {
        m_last = NodeRef();
        m_at = 1;
        return S_OK;
    }
    STDMETHODIMP Clone(IEnumVARIANT** copy) override
    {
        if (!copy) return E_POINTER;
        return Border(IID_IEnumVARIANT, [&] {
            ComPtr<NodeEnumerator> other = Make<NodeEnumerator>(m_link);
            other->m_last = m_last;
            other->m_at = m_at;
            *copy = other.Detach();
        });
    }

private:
    Node* Step()
    {
        Nodes& nodes = m_link->Tree().GetNodes();
        if (const Node* last = m_last.IfAlive()) m_at = last->Index() + 1;
        if (m_at > nodes.Count()) return nullptr;
        Node& node = nodes.Item(m_at);
        m_last = NodeRef(&node);
        return &node;
    }

    std::shared_ptr<TreeLink> m_link;
    NodeRef m_last;
    int m_at = 1;
};

}  // namespace

Node& NodeCollection::At(const VARIANT& index) const
{
    const Variant value(index);
    Nodes& nodes = Tree().GetNodes();
    if (value.Type() == VT_BSTR) return nodes.Item(std::wstring(ViewOf(V_BSTR(&value.Get()))));
    return nodes.Item(static_cast<int>(IndexOf(value.Get())));
}

Node* NodeCollection::Relative(const VARIANT& relative) const
{
    if (IsAbsent(relative)) return nullptr;
    const Variant value(relative);
    if (!IsObject(value.Get())) return &At(value.Get());
    return Objects().NodeOf(V_UNKNOWN(&value.Get()));
}

STDMETHODIMP NodeCollection::get_Item(VARIANT Index, INode** value)
{
    return Member([&] { Checked(value) = nullptr, *value = Objects().ObjectOf(&At(Index)).Detach(); });
}

STDMETHODIMP NodeCollection::get_Count(LONG* value)
{
    return Member([&] { Checked(value) = Tree().GetNodes().Count(); });
}

STDMETHODIMP NodeCollection::Add(VARIANT relative, VARIANT relationship, VARIANT key, VARIANT text, VARIANT image,
                                 VARIANT selectedImage, INode** result)
{
    return Member([&] {
        Checked(result) = nullptr;
        Nodes& nodes = Tree().GetNodes();
        Node* const neighbour = Relative(relative);
        const Relationship place = RelationshipOf(relationship, neighbour);
        const ImageName shown = ImageNameOf(image);
        const ImageName shownSelected = ImageNameOf(selectedImage);
        CheckPicture(nodes.Images(), shown);
        CheckPicture(nodes.Images(), shownSelected);
        Node& added = nodes.Add(neighbour, place, TextOf(key), TextOf(text), shown, shownSelected);
        if (!added.Parent() && Objects().RootsSorted()) nodes.Sort(nullptr);
        *result = Objects().ObjectOf(&added).Detach();
    });
}

STDMETHODIMP NodeCollection::Remove(VARIANT Index)
{
    return Member([&] { Tree().GetNodes().Remove(At(Index)); });
}

STDMETHODIMP NodeCollection::Clear()
{
    return Member([&] { Tree().GetNodes().Clear(); });
}

STDMETHODIMP NodeCollection::get__NewEnum(IUnknown** value)
{
    return Member([&] { Checked(value) = Make<NodeEnumerator>(Link()).Detach(); });
}

}  // namespace sylvex
