#include "component/objects/nodes_object.h"

#include "component/border/enumerator.h"
#include "component/border/values.h"
#include "component/objects/node_object.h"

namespace sylvex {

namespace {

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

/// Walks the nodes by index and stands on the node met last: when that one has gone, the node that moved to its place
/// comes next.
class NodeWalk {
public:
    explicit NodeWalk(std::shared_ptr<TreeLink> link) : m_link(std::move(link)) {}
    bool Step()
    {
        Nodes& nodes = m_link->Tree().GetNodes();
        if (const Node* last = m_last.IfAlive()) m_at = last->Index() + 1;
        if (m_at > nodes.Count()) return false;
        m_last = NodeRef(&nodes.Item(m_at));
        return true;
    }
    auto Object() const { return m_link->Objects().ObjectOf(m_last.IfAlive()); }
    void Restart()
    {
        m_last = NodeRef();
        m_at = 1;
    }

private:
    std::shared_ptr<TreeLink> m_link;
    NodeRef m_last;
    int m_at = 1;
};

}  // namespace

Node& NodeCollection::At(const VARIANT& index) const
{
    const Variant value(index);
    Nodes& nodes = Tree().GetNodes();
    if (value.Type() == VT_BSTR) return nodes.Item(std::wstring(value.Text()));
    return nodes.Item(static_cast<int>(IndexOf(value.Get())));
}

Node* NodeCollection::Relative(const VARIANT& relative) const
{
    if (IsAbsent(relative)) return nullptr;
    const Variant value(relative);
    if (!value.IsObject()) return &At(value.Get());
    return Objects().NodeOf(V_UNKNOWN(&value.Get()));
}

STDMETHODIMP NodeCollection::get_Item(VARIANT Index, INode** value)
{
    return Get(value, [&] { return Objects().ObjectOf(&At(Index)); });
}

STDMETHODIMP NodeCollection::get_Count(LONG* value)
{
    return Get(value, [&] { return Tree().GetNodes().Count(); });
}

STDMETHODIMP NodeCollection::Add(VARIANT relative, VARIANT relationship, VARIANT key, VARIANT text, VARIANT image,
                                 VARIANT selectedImage, INode** result)
{
    return Get(result, [&] {
        Nodes& nodes = Tree().GetNodes();
        Node* const neighbour = Relative(relative);
        const Relationship place = RelationshipOf(relationship, neighbour);
        const ImageName shown = ImageNameOf(image);
        const ImageName shownSelected = ImageNameOf(selectedImage);
        nodes.Images().NumberOfShown(shown);
        nodes.Images().NumberOfShown(shownSelected);
        Node& added = nodes.Add(neighbour, place, TextOf(key), TextOf(text), shown, shownSelected);
        if (!added.Parent() && nodes.Sorted()) nodes.Sort(nullptr);
        return Objects().ObjectOf(&added);
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
    return Member([&] { Checked(value) = Make<LiveEnumerator<NodeWalk>>(NodeWalk(Link())).Detach(); });
}

}  // namespace sylvex
