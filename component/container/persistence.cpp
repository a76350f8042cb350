#include "component/container/persistence.h"

#include "component/container/property_values.h"
#include "component/container/stream.h"
#include "diagnostics/trap.h"

#include "SylvexControl_h.h"

namespace sylvex {

namespace {

constexpr wchar_t kStreamName[] = L"Contents";

// A bag makes the object that its entry names, whatever that is, unless it is given one to fill.
Variant ReadObjectEntry(IPropertyBag& bag, const SavedProperty& property, IErrorLog* errors)
{
    Variant value = ObjectValue(NewSystemObject(property.kind).Get());
    if (FAILED(bag.Read(property.name, &value.Get(), errors))) return {};
    const bool refused =
        value.IsObject() && V_UNKNOWN(&value.Get()) && !IsSystemObject(property.kind, V_UNKNOWN(&value.Get()));
    return refused ? Variant() : value;
}

// Empty when the bag has no such entry. Who takes any type gets what there is: bags convert less than the control.
Variant ReadEntry(IPropertyBag& bag, const SavedProperty& property, IErrorLog* errors)
{
    const bool isPlain = property.kind == SavedKind::Number || property.kind == SavedKind::Text;
    if (!isPlain) return ReadObjectEntry(bag, property, errors);
    Variant value;
    return SUCCEEDED(bag.Read(property.name, &value.Get(), errors)) && !value.IsObject() ? value : Variant();
}

bool IsNothing(const VARIANT& value)
{
    return V_VT(&value) == VT_UNKNOWN && !V_UNKNOWN(&value);
}

}  // namespace

void* PersistencePart::Find(const IID& id)
{
    if (Answers<IPersistPropertyBag>(id)) return static_cast<IPersistPropertyBag*>(this);
    // The older stream interface is the newer one without its last member.
    if (id == IID_IPersistStreamInit || id == IID_IPersistStream) return static_cast<IPersistStreamInit*>(this);
    return id == IID_IPersistStorage ? static_cast<IPersistStorage*>(this) : nullptr;
}

HRESULT PersistencePart::GetClassID(CLSID* classId)
{
    return Border(IID_IPersist, [&] { Checked(classId) = __uuidof(::Sylvex); });
}

HRESULT PersistencePart::InitNew()
{
    return Border(Identity(), IID_IPersistStreamInit, [&] {
        Core().InitNew();
        // What a container has not saved it would load with other values: those of a new control are not the defaults.
        Core().SetDirty(true);
    });
}

HRESULT PersistencePart::Load(IPropertyBag* bag, IErrorLog* errors)
{
    return Border(Identity(), IID_IPersistPropertyBag, [&] {
        Checked(bag);
        PropertyValues values;
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = ReadEntry(*bag, SavedProperties()[i], errors);
        ApplyLoaded(values);
    });
}

void PersistencePart::ApplyLoaded(const PropertyValues& values)
{
    Embedded().SetFontInherited(ApplyProperties(Core(), values));
    Core().SetDirty(false);
    Embedded().View().Changed();
}

HRESULT PersistencePart::Save(IPropertyBag* bag, BOOL clearDirty, BOOL all)
{
    return Border(Identity(), IID_IPersistPropertyBag, [&] {
        Checked(bag);
        const Module& control = Core().Used().State();
        HRESULT result = S_OK;
        Trapped(control, L"UserControl_WriteProperties", Variables("PropBag", kPropertyBag), [&](int& line) {
            for (const SavedProperty& property : SavedProperties()) {
                ++line;
                Variant value = property.get(Core());
                // Bags write objects by calling them, so one that is nothing is left out like any other default.
                if (IsNothing(value.Get()) || (!all && IsStandard(Core(), property, value.Get()))) continue;
                result = bag->Write(property.name, &value.Get());
                if (FAILED(result)) return;
            }
        });
        if (SUCCEEDED(result) && clearDirty) Core().SetDirty(false);
        return result;
    });
}

HRESULT PersistencePart::Load(IStream* stream)
{
    return Border(Identity(), IID_IPersistStreamInit, [&] { LoadFrom(Checked(stream)); });
}

void PersistencePart::LoadFrom(IStream& stream)
{
    SavedControl control;
    try {
        control = ReadControl(stream);
    } catch (...) {
        ApplyLoaded({});
        throw;
    }
    Embedded().SetExtent(control.extent);
    ApplyLoaded(control.values);
}

SavedControl PersistencePart::Present()
{
    Core().Used();
    SavedControl control;
    control.extent = Embedded().Extent();
    for (std::size_t i = 0; i < control.values.size(); ++i)
        control.values[i] = SavedProperties()[i].get(Core());
    return control;
}

HRESULT PersistencePart::Save(IStream* stream, BOOL clearDirty)
{
    return Border(Identity(), IID_IPersistStreamInit, [&] {
        WriteControl(Checked(stream), Present());
        if (clearDirty) Core().SetDirty(false);
    });
}

HRESULT PersistencePart::GetSizeMax(ULARGE_INTEGER* bytes)
{
    return Border(Identity(), IID_IPersistStreamInit, [&] {
        const ComPtr<IStream> stream = MemoryStream();
        WriteControl(*stream, Present());
        Checked(bytes).QuadPart = SizeOf(*stream);
    });
}

HRESULT PersistencePart::Load(IStorage* storage)
{
    return Border(Identity(), IID_IPersistStorage, [&] {
        ComPtr<IStream> stream;
        const HRESULT opened =
            Checked(storage).OpenStream(kStreamName, nullptr, STGM_READ | STGM_SHARE_EXCLUSIVE, 0, stream.Put());
        if (FAILED(opened)) {
            ApplyLoaded({});
            throw ComError{opened};
        }
        LoadFrom(*stream);
    });
}

HRESULT PersistencePart::Save(IStorage* storage, BOOL sameAsLoad)
{
    return Border(Identity(), IID_IPersistStorage, [&] {
        ComPtr<IStream> stream;
        Check(Checked(storage).CreateStream(kStreamName, STGM_CREATE | STGM_WRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                                            stream.Put()));
        WriteControl(*stream, Present());
        Check(WriteClassStg(storage, __uuidof(::Sylvex)));
        m_savedInPlace = sameAsLoad != FALSE;
    });
}

HRESULT PersistencePart::SaveCompleted(IStorage* storage)
{
    return Border(IID_IPersistStorage, [&] {
        // Without a storage, and after a save into another one, that was a copy only.
        if (storage || m_savedInPlace) Core().SetDirty(false);
        m_savedInPlace = false;
    });
}

}  // namespace sylvex
