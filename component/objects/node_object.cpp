#include "component/objects/node_object.h"

#include "component/border/object_ref.h"
#include "component/border/values.h"

namespace sylvex {

const IID NodeIdentity::kId = {0x5e0c8b1e, 0x4c36, 0x4d0a, {0x9b, 0x5d, 0x27, 0xe1, 0x6a, 0x83, 0xc0, 0x4f}};

namespace {

// The window draws labels in the system's colours.
constexpr OLE_COLOR kLabelColor = 0x80000000 | COLOR_WINDOWTEXT;
constexpr OLE_COLOR kLabelBackColor = 0x80000000 | COLOR_WINDOW;

VARIANT ValueOf(const ImageName& image)
{
    if (const auto* key = std::get_if<std::wstring>(&image)) return Variant(std::wstring_view(*key)).Detach();
    if (const auto* number = std::get_if<int>(&image)) return Variant(static_cast<long>(*number)).Detach();
    return Variant().Detach();
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
    if (FAILED(asked)) ThrowTypeMismatch();
    // The caller's own reference keeps the object.
    object.Release();
    return static_cast<NodeObject&>(*static_cast<NodeIdentity*>(identity));
}

Node& NodeObject::Live() const
{
    if (!m_node) throw NodeGone();
    return *m_node;
}

template <class Read>
HRESULT NodeObject::GetText(BSTR* value, Read&& read)
{
    return Member([&] { Checked(value) = nullptr, *value = TextOf(read(Live())); });
}

template <class Read>
HRESULT NodeObject::GetFlag(VARIANT_BOOL* value, Read&& read)
{
    return Member([&] { Checked(value) = BoolOf(read(Live())); });
}

template <class Read>
HRESULT NodeObject::GetImage(VARIANT* value, Read&& read)
{
    return Member([&] { VariantInit(&Checked(value)), *value = ValueOf(read(Live())); });
}

template <class Read>
HRESULT NodeObject::GetNode(INode** value, Read&& read)
{
    return Member([&] { Checked(value) = nullptr, *value = Objects().ObjectOf(read(Live())).Detach(); });
}

template <class Write>
HRESULT NodeObject::Let(Write&& write)
{
    return Member([&] { write(Live()); });
}

STDMETHODIMP NodeObject::get_Text(BSTR* value)
{
    return GetText(value, [](const Node& node) { return node.Text(); });
}

STDMETHODIMP NodeObject::put_Text(BSTR value)
{
    return Let([&](Node& node) { node.SetTextAlone(ViewOf(value)); });
}

STDMETHODIMP NodeObject::get_Key(BSTR* value)
{
    return GetText(value, [](const Node& node) { return node.Key(); });
}

STDMETHODIMP NodeObject::put_Key(BSTR value)
{
    return Let([&](Node& node) { node.SetKey(std::wstring(ViewOf(value))); });
}

STDMETHODIMP NodeObject::get_Image(VARIANT* value)
{
    return GetImage(value, [](const Node& node) { return node.Image(); });
}

STDMETHODIMP NodeObject::put_Image(VARIANT value)
{
    return Let([&](Node& node) { node.SetImage(ImageNameOf(value)); });
}

STDMETHODIMP NodeObject::get_SelectedImage(VARIANT* value)
{
    return GetImage(value, [](const Node& node) { return node.SelectedImage(); });
}

STDMETHODIMP NodeObject::put_SelectedImage(VARIANT value)
{
    return Let([&](Node& node) { node.SetSelectedImage(ImageNameOf(value)); });
}

STDMETHODIMP NodeObject::get_ExpandedImage(VARIANT* value)
{
    return GetImage(value, [](const Node& node) { return node.ExpandedImage(); });
}

STDMETHODIMP NodeObject::put_ExpandedImage(VARIANT value)
{
    return Let([&](Node& node) { node.SetExpandedImage(ImageNameOf(value)); });
}

STDMETHODIMP NodeObject::get_Checked(VARIANT_BOOL* value)
{
    return GetFlag(value, [](const Node& node) { return node.Checked(); });
}

STDMETHODIMP NodeObject::put_Checked(VARIANT_BOOL value)
{
    return Let([&](Node& node) { node.SetChecked(value != VARIANT_FALSE); });
}

STDMETHODIMP NodeObject::get_Bold(VARIANT_BOOL* value)
{
    return GetFlag(value, [](const Node& node) { return node.Bold(); });
}

STDMETHODIMP NodeObject::put_Bold(VARIANT_BOOL value)
{
    return Let([&](Node& node) { node.SetBold(value != VARIANT_FALSE); });
}

STDMETHODIMP NodeObject::get_Expanded(VARIANT_BOOL* value)
{
    return GetFlag(value, [](const Node& node) { return node.Expanded(); });
}

STDMETHODIMP NodeObject::put_Expanded(VARIANT_BOOL value)
{
    return Let([&](Node& node) { node.SetExpanded(value != VARIANT_FALSE); });
}

STDMETHODIMP NodeObject::get_Selected(VARIANT_BOOL* value)
{
    return GetFlag(value, [](const Node& node) { return node.Selected(); });
}

STDMETHODIMP NodeObject::put_Selected(VARIANT_BOOL value)
{
    return Let([&](Node& node) { node.SetSelected(value != VARIANT_FALSE); });
}

STDMETHODIMP NodeObject::get_Sorted(VARIANT_BOOL* value)
{
    return GetFlag(value, [](const Node& node) { return node.Sorted(); });
}

STDMETHODIMP NodeObject::put_Sorted(VARIANT_BOOL value)
{
    return Let([&](Node& node) { node.SetSorted(value != VARIANT_FALSE); });
}

STDMETHODIMP NodeObject::get_Tag(VARIANT* value)
{
    return Member([&] { VariantInit(&Checked(value)), *value = ValueBehind(Live().Tag()).Detach(); });
}

STDMETHODIMP NodeObject::put_Tag(VARIANT value)
{
    return Let([&](Node& node) {
        // The old tag's release may run code of the host, which may remove the node.
        const ObjectRef before = node.Tag();
        node.SetTag(ReferTo(value));
    });
}

STDMETHODIMP NodeObject::get_Index(LONG* value)
{
    return Member([&] { Checked(value) = Live().Index(); });
}

STDMETHODIMP NodeObject::get_Children(LONG* value)
{
    return Member([&] { Checked(value) = Live().Children(); });
}

STDMETHODIMP NodeObject::get_Child(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.Child(); });
}

STDMETHODIMP NodeObject::get_FirstSibling(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.FirstSibling(); });
}

STDMETHODIMP NodeObject::get_LastSibling(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.LastSibling(); });
}

STDMETHODIMP NodeObject::get_Next(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.Next(); });
}

STDMETHODIMP NodeObject::get_Previous(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.Previous(); });
}

STDMETHODIMP NodeObject::get_Parent(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.Parent(); });
}

STDMETHODIMP NodeObject::putref_Parent(INode* value)
{
    return Let([&](Node& node) {
        Node* const parent = Objects().NodeOf(value);
        if (!parent) throw ObjectNotSet();
        node.SetParent(*parent);
    });
}

STDMETHODIMP NodeObject::get_Root(INode** value)
{
    return GetNode(value, [](const Node& node) { return node.Root(); });
}

STDMETHODIMP NodeObject::get_FullPath(BSTR* value)
{
    return GetText(value, [](const Node& node) { return node.FullPath(); });
}

STDMETHODIMP NodeObject::EnsureVisible(VARIANT_BOOL* result)
{
    return GetFlag(result, [](Node& node) { return node.EnsureVisible(); });
}

STDMETHODIMP NodeObject::get_ForeColor(OLE_COLOR* value)
{
    return Member([&] { Live(), Checked(value) = kLabelColor; });
}

STDMETHODIMP NodeObject::put_ForeColor(OLE_COLOR)
{
    return NotImplemented(__uuidof(INode));
}

STDMETHODIMP NodeObject::get_BackColor(OLE_COLOR* value)
{
    return Member([&] { Live(), Checked(value) = kLabelBackColor; });
}

STDMETHODIMP NodeObject::put_BackColor(OLE_COLOR)
{
    return NotImplemented(__uuidof(INode));
}

}  // namespace sylvex
