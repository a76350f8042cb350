#pragma once

#include <memory>

#include "component/border/dispatch.h"
#include "component/border/units.h"
#include "component/border/values.h"
#include "platform/runtime_error.h"
#include "widgets/treeview.h"

#include <ocidl.h>

namespace sylvex {

class TreeObjects;

/// What the automation objects of a tree ask of the control that the tree belongs to.
class TreeOwner {
public:
    virtual ~TreeOwner() = default;
    /// The control's object as the world knows it.
    virtual IUnknown& ControlIdentity() = 0;
    virtual TreeView& Tree() = 0;
    virtual Point PixelsOf(ContainerPoint place) = 0;
    virtual ContainerPoint UnitsOf(Point pixels) = 0;
    /// Never empty.
    virtual ComPtr<IFontDisp> Font() = 0;
    /// Null: the system's own font.
    virtual void SetFont(IFontDisp* font) = 0;
};

/// The way from a tree's automation objects to its control, which outlive each other in any order.
class TreeLink {
public:
    TreeLink(TreeOwner& owner, TreeObjects& objects) : m_owner(&owner), m_objects(&objects) {}

    /// Raises 35605 when the control is gone.
    TreeOwner& Owner() const
    {
        if (!m_owner) throw NodeGone();
        return *m_owner;
    }
    TreeView& Tree() const { return Owner().Tree(); }
    TreeObjects& Objects() const { return *m_objects; }
    /// The control goes.
    void Cut() { m_owner = nullptr; }

private:
    TreeOwner* m_owner;
    TreeObjects* m_objects;
};

/// An automation object of a tree: answers `Interface`, as the class `Class` of the type library.
template <class Interface, class Class, class... Parts>
class TreeMember : public CountedObject<Dispatch<Interface>, ClassInfo<Class>, Parts...> {
protected:
    explicit TreeMember(std::shared_ptr<TreeLink> link) : m_link(std::move(link)) {}

    const std::shared_ptr<TreeLink>& Link() const { return m_link; }
    TreeOwner& Owner() const { return m_link->Owner(); }
    TreeView& Tree() const { return m_link->Tree(); }
    TreeObjects& Objects() const { return m_link->Objects(); }

    /// Runs a member. What it does may run code of the host, which may let go of this object and of the control.
    template <class Body>
    HRESULT Member(Body&& body) noexcept
    {
        return Border(static_cast<Interface*>(this), __uuidof(Interface), [&] {
            const ComPtr<IUnknown> control(&Owner().ControlIdentity());
            return Guarded(body);
        });
    }

    template <class Value, class Read>
    HRESULT Get(Value* value, Read&& read) noexcept
    {
        return Member([&] { Give(value, read); });
    }

private:
    std::shared_ptr<TreeLink> m_link;
};

}  // namespace sylvex
