#pragma once

#include "component/container/ole_embedding.h"
#include "component/container/property_stream.h"

namespace sylvex {

/// The part that containers save the control by and load it with: a property bag, a stream or a storage.
class PersistencePart : public IPersistPropertyBag, public IPersistStreamInit, public IPersistStorage, public OlePart {
public:
    void* Find(const IID& id);

    STDMETHODIMP GetClassID(CLSID* classId) override;
    /// A newly placed control.
    STDMETHODIMP InitNew() override;
    STDMETHODIMP IsDirty() override { return Core().Dirty() ? S_OK : S_FALSE; }

    /// Entries that are missing or make no sense give way to their defaults; succeeds whatever the bag holds.
    STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* errors) override;
    STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL all) override;

    /// Fails, with every property at its default, when the stream is cut short or of another version.
    STDMETHODIMP Load(IStream* stream) override;
    STDMETHODIMP Save(IStream* stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* bytes) override;

    STDMETHODIMP InitNew(IStorage*) override { return InitNew(); }
    /// As from a stream.
    STDMETHODIMP Load(IStorage* storage) override;
    STDMETHODIMP Save(IStorage* storage, BOOL sameAsLoad) override;
    STDMETHODIMP SaveCompleted(IStorage* storage) override;
    STDMETHODIMP HandsOffStorage() override { return S_OK; }

private:
    void ApplyLoaded(const PropertyValues& values);
    void LoadFrom(IStream& stream);
    SavedControl Present();

    bool m_savedInPlace = false;
};

}  // namespace sylvex
