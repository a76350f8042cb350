#include "component/objects/tree_objects.h"

#include <limits>

#include "com/late_call.h"
#include "component/objects/node_object.h"
#include "component/objects/nodes_object.h"
#include "component/objects/tree_object.h"
#include "platform/win32/handles.h"

namespace sylvex {

namespace {

/// What an image list's object tells as its handle; empty when it tells none.
Variant HandleProperty(const VARIANT& object)
{
    const ComPtr<IDispatch> list = Incoming<IDispatch>(object);
    Variant handle;
    if (!list) return Variant(0L);
    const HRESULT asked = Guarded([&] {
        DISPID member = DISPID_UNKNOWN;
        const HRESULT found = FindMember(*list, L"hImageList", member);
        return FAILED(found) ? found : CallMember(*list, member, DISPATCH_PROPERTYGET, {}, handle.Put());
    });
    if (FAILED(asked)) ThrowTypeMismatch();
    return handle;
}

/// Whether there is an image list at that address; what is not one may be anything, and fault.
bool IsImageList(ImageListHandle handle)
{
    try {
        int width = 0;
        int height = 0;
        return Guarded([&] { return ImageList_GetIconSize(HandleOf<HIMAGELIST>(handle), &width, &height); }) != FALSE;
    } catch (...) {
        return false;
    }
}

ImageListHandle ImageListOf(const VARIANT& given)
{
    Variant handle(given);
    if (handle.IsObject()) handle = HandleProperty(given);
    if (handle.Type() == VT_BSTR || FAILED(handle.ChangeType(VT_I8))) {
        ThrowTypeMismatch();
    }
    // An address has no sign: callers that know 32 bits only, with a sign, may have made one of them.
    const LONGLONG wide = V_I8(&handle.Get());
    const auto address = wide < 0 ? static_cast<ULONG>(wide) : static_cast<ULONGLONG>(wide);
    if (address > std::numeric_limits<ImageListHandle>::max()) ThrowTypeMismatch();
    const auto list = static_cast<ImageListHandle>(address);
    if (list != 0 && !IsImageList(list)) ThrowTypeMismatch();
    return list;
}

}  // namespace

TreeObjects::TreeObjects(TreeOwner& owner) : m_link(std::make_shared<TreeLink>(owner, *this)) {}

TreeObjects::~TreeObjects()
{
    Close();
}

void TreeObjects::Close()
{
    m_link->Cut();
}

const ComPtr<ITreeView>& TreeObjects::TreeObject()
{
    if (!m_tree) m_tree = ComPtr<ITreeView>(Make<TreeViewObject>(m_link).Get());
    return m_tree;
}

const ComPtr<INodes>& TreeObjects::NodesObject()
{
    if (!m_nodes) m_nodes = ComPtr<INodes>(Make<NodeCollection>(m_link).Get());
    return m_nodes;
}

ComPtr<INode> TreeObjects::ObjectOf(Node* node)
{
    if (!node) return nullptr;
    // Only these objects are companions of nodes.
    if (NodeCompanion* const present = node->Companion()) return ComPtr<INode>(static_cast<NodeObject*>(present));
    return ComPtr<INode>(Make<NodeObject>(m_link, *node).Get());
}

Node* TreeObjects::NodeOf(IUnknown* object)
{
    const ComPtr<INode> given = Incoming<INode>(object);
    if (!given) return nullptr;
    NodeObject& known = NodeObject::Known(*given);
    Node& node = known.Live();
    if (!known.BelongsTo(*m_link)) throw ElementNotFound();
    return &node;
}

const Variant& TreeObjects::ImageList() const
{
    static const Variant own;
    return m_link->Tree().ShownImages() == m_imageListHandle ? m_imageList : own;
}

ImageListHandle TreeObjects::TakeImageList(const VARIANT& given)
{
    const Variant value(given);
    if (value.Type() == VT_EMPTY) return m_link->Tree().BoundImages();
    m_imageListHandle = ImageListOf(given);
    m_imageList = value;
    return m_imageListHandle;
}

}  // namespace sylvex
