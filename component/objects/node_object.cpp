#include "component/objects/node_object.h"

#include "component/border/object_ref.h"
#include "component/border/values.h"

namespace sylvex {

const IID NodeIdentity::kId = {0x5e0c8b1e, 0x4c36, 0x4d0a, {0x9b, 0x5d, 0x27, 0xe1, 0x6a, 0x83, 0xc0, 0x4f}};

namespace {

// The window draws labels in the system's colours.
constexpr OLE_COLOR kLabelColor = 0x80000000 | COLOR_WINDOWTEXT;
constexpr OLE_COLOR kLabelBackColor = 0x80000000 | COLOR_WINDOW;

Variant ValueOf(const ImageName& image)
{
    if (const auto* key = std::get_if<std::wstring>(&image)) return Variant(*key);
    if (const auto* number = std::get_if<int>(&image)) return Variant(static_cast<long>(*number));
    return {};
}

}  // namespace

ImageName ImageNameOf(const VARIANT& value)
{
    const Variant image(IsMissing(value) ? VARIANT{} : value);
    if (image.Type() == VT_EMPTY || image.Type() == VT_NULL) return {};
    if (image.Type() != VT_BSTR) {
        const long number = IndexOf(image.Get());
        return number == 0 ? ImageName() : ImageName(static_cast<int>(number));
    }
    const std::wstring_view key = ViewOf(V_BSTR(&image.Get()));
    return key.empty() ? ImageName() : ImageName(std::wstring(key));
}

NodeObject::NodeObject(std::shared_ptr<TreeLink> link, Node& node) : TreeMember(std::move(link)), m_node(&node)
{
    node.SetCompanion(this);
}

NodeObject::~NodeObject()
{
    if (m_node) m_node->SetCompanion(nullptr);
}

NodeObject& NodeObject::Known(INode& object)
{
    void* identity = nullptr;
    const HRESULT asked = Guarded([&] { return object.QueryInterface(NodeIdentity::kId, &identity); });
    if (FAILED(asked) || !identity) ThrowTypeMismatch();
    // The caller's own reference keeps the object.
    object.Release();
    // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.UndefReturn): a call that succeeds has given it.
    return static_cast<NodeObject&>(*static_cast<NodeIdentity*>(identity));
}

Node& NodeObject::Live() const
{
    if (!m_node) throw NodeGone();
    return *m_node;
}

HRESULT NodeObject::GetImage(VARIANT* value, ImageName (Node::*read)() const)
{
    return TreeMember::Get(value, [&] { return ValueOf((Live().*read)()); });
}

HRESULT NodeObject::LetImage(const VARIANT& value, void (Node::*write)(const ImageName&))
{
    return Member([&] { (Live().*write)(ImageNameOf(value)); });
}

STDMETHODIMP NodeObject::get_Tag(VARIANT* value)
{
    return TreeMember::Get(value, [&] { return ValueBehind(Live().Tag()); });
}

STDMETHODIMP NodeObject::put_Tag(VARIANT value)
{
    return Member([&] {
        Node& node = Live();
        // The old tag's release may run code of the host, which may remove the node.
        const ObjectRef before = node.Tag();
        node.SetTag(ReferTo(value));
    });
}

STDMETHODIMP NodeObject::putref_Parent(INode* value)
{
    return Member([&] {
        Node& node = Live();
        Node* const parent = Objects().NodeOf(value);
        if (!parent) throw ObjectNotSet();
        node.SetParent(*parent);
    });
}

STDMETHODIMP NodeObject::get_ForeColor(OLE_COLOR* value)
{
    return TreeMember::Get(value, [&] { return Live(), kLabelColor; });
}

STDMETHODIMP NodeObject::put_ForeColor(OLE_COLOR)
{
    return NotImplemented(__uuidof(INode));
}

STDMETHODIMP NodeObject::get_BackColor(OLE_COLOR* value)
{
    return TreeMember::Get(value, [&] { return Live(), kLabelBackColor; });
}

STDMETHODIMP NodeObject::put_BackColor(OLE_COLOR)
{
    return NotImplemented(__uuidof(INode));
}

}  // namespace sylvex
