#pragma once

#include <atomic>
#include <type_traits>
#include <utility>

#include "com/module_lock.h"
#include "com/pointer.h"

#include <ocidl.h>

namespace sylvex {

template <class Base>
struct Extending {
    using Type = Base;
};

/// The interface that `Interface` extends and that an object answers for as well; void when there is none.
template <class Interface>
struct BaseInterface : Extending<void> {
};
template <>
struct BaseInterface<IProvideClassInfo2> : Extending<IProvideClassInfo> {
};
template <>
struct BaseInterface<IViewObject2> : Extending<IViewObject> {
};
template <>
struct BaseInterface<IViewObjectEx> : Extending<IViewObject2> {
};
template <>
struct BaseInterface<IOleInPlaceObject> : Extending<IOleWindow> {
};
template <>
struct BaseInterface<IOleInPlaceActiveObject> : Extending<IOleWindow> {
};
template <>
struct BaseInterface<IOleInPlaceSite> : Extending<IOleWindow> {
};
template <>
struct BaseInterface<IOleInPlaceUIWindow> : Extending<IOleWindow> {
};
template <>
struct BaseInterface<IOleInPlaceFrame> : Extending<IOleInPlaceUIWindow> {
};
template <>
struct BaseInterface<IPersistStreamInit> : Extending<IPersist> {
};
template <>
struct BaseInterface<IPersistStorage> : Extending<IPersist> {
};
template <>
struct BaseInterface<IPersistPropertyBag> : Extending<IPersist> {
};

/// Whether `Interface` or one that it extends has this identifier.
template <class Interface>
bool Answers(const IID& id)
{
    if constexpr (std::is_void_v<Interface>) {
        return false;
    } else {
        return id == __uuidof(Interface) || Answers<typename BaseInterface<Interface>::Type>(id);
    }
}

/// A part of an object: an interface, or a class that implements interfaces and finds them itself.
template <class Part>
void* FindInPart(Part* part, const IID& id)
{
    if constexpr (requires { part->Find(id); }) {
        return part->Find(id);
    } else {
        return id == IID_IUnknown || Answers<Part>(id) ? part : nullptr;
    }
}

/// The interface of an object made of parts, without a reference added; null when it has none. The first part is
/// the object's identity.
template <class... Parts, class Object>
void* FindInParts(Object* object, const IID& id)
{
    void* found = nullptr;
    ((found = found ? found : FindInPart<Parts>(object, id)), ...);
    return found;
}

/// A reference count that starts at 1.
class ReferenceCount {
public:
    ULONG Add() { return ++m_count; }
    /// True when the last reference went; the object must then be destroyed.
    bool Remove(ULONG& left)
    {
        left = --m_count;
        // Whoever touches the object while it is being destroyed must not destroy it again.
        if (left == 0) m_count = kDestroying;
        return left == 0;
    }

private:
    static constexpr ULONG kDestroying = 1u << 30;
    std::atomic<ULONG> m_count{1};
};

/// Makes a class a COM object with the given parts; made by Make(), destroyed by its last release.
template <class... Parts>
class CountedObject : public Parts... {
public:
    CountedObject() = default;
    CountedObject(const CountedObject&) = delete;
    CountedObject& operator=(const CountedObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override
    {
        if (!found) return E_POINTER;
        *found = FindInParts<Parts...>(this, id);
        if (!*found) return E_NOINTERFACE;
        m_references.Add();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return m_references.Add(); }
    STDMETHODIMP_(ULONG) Release() override
    {
        ULONG left;
        if (m_references.Remove(left)) delete this;
        return left;
    }

protected:
    virtual ~CountedObject() = default;

private:
    ReferenceCount m_references;
    ModuleLock m_lock;
};

/// As CountedObject, for a class that may be part of another object: then `outer` answers for the interfaces of both.
/// Make it with MakeInner().
template <class... Parts>
class AggregableObject : public Parts... {
public:
    /// `outer` is null when the object stands alone; it is not counted, since it outlives its inner object.
    explicit AggregableObject(IUnknown* outer) : m_inner(*this), m_outer(outer ? outer : &m_inner) {}
    AggregableObject(const AggregableObject&) = delete;
    AggregableObject& operator=(const AggregableObject&) = delete;

    STDMETHODIMP QueryInterface(REFIID id, void** found) override { return m_outer->QueryInterface(id, found); }
    STDMETHODIMP_(ULONG) AddRef() override { return m_outer->AddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return m_outer->Release(); }

    /// The object's own identity, to be given to its creator only.
    IUnknown* Inner() { return &m_inner; }
    /// The identity that the world knows.
    IUnknown* Outer() const { return m_outer; }

protected:
    virtual ~AggregableObject() = default;

private:
    class InnerUnknown : public IUnknown {
    public:
        explicit InnerUnknown(AggregableObject& owner) : m_owner(owner) {}
        STDMETHODIMP QueryInterface(REFIID id, void** found) override
        {
            if (!found) return E_POINTER;
            *found = id == IID_IUnknown ? static_cast<IUnknown*>(this) : FindInParts<Parts...>(&m_owner, id);
            if (!*found) return E_NOINTERFACE;
            static_cast<IUnknown*>(*found)->AddRef();
            return S_OK;
        }
        STDMETHODIMP_(ULONG) AddRef() override { return m_references.Add(); }
        STDMETHODIMP_(ULONG) Release() override
        {
            ULONG left;
            if (m_references.Remove(left)) delete &m_owner;
            return left;
        }

    private:
        AggregableObject& m_owner;
        ReferenceCount m_references;
    };

    InnerUnknown m_inner;
    IUnknown* m_outer;
    ModuleLock m_lock;
};

/// A new object of a class derived from CountedObject.
template <class Class, class... Arguments>
ComPtr<Class> Make(Arguments&&... arguments)
{
    return ComPtr<Class>::Adopt(new Class(std::forward<Arguments>(arguments)...));
}

/// A new object of a class derived from AggregableObject, as its creator holds it.
template <class Class, class... Arguments>
ComPtr<IUnknown> MakeInner(IUnknown* outer, Arguments&&... arguments)
{
    Class* const object = new Class(outer, std::forward<Arguments>(arguments)...);
    return ComPtr<IUnknown>::Adopt(object->Inner());
}

}  // namespace sylvex
