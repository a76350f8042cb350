#include "tests/component/test_bag.h"

namespace sylvex::test {

STDMETHODIMP TestBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*)
{
    read.push_back(Narrow(name));
    const auto made = m_classes.find(Narrow(name));
    if (made != m_classes.end()) return Make(made->second, *value);
    const auto entry = m_entries.find(Narrow(name));
    if (entry == m_entries.end()) return E_INVALIDARG;
    const VARTYPE wanted = V_VT(value);
    Variant given(entry->second.Raw());
    if (converts && wanted != VT_EMPTY && FAILED(given.ChangeType(wanted))) return E_FAIL;
    VariantClear(value);
    *value = given.Detach();
    return S_OK;
}

// As platforms' bags do: an object that is there is filled, otherwise one of the entry's class is made.
HRESULT TestBag::Make(const CLSID& id, VARIANT& value)
{
    if (V_VT(&value) == VT_UNKNOWN && V_UNKNOWN(&value)) return E_FAIL;
    V_VT(&value) = VT_UNKNOWN;
    return CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                            reinterpret_cast<void**>(&V_UNKNOWN(&value)));
}

STDMETHODIMP TestBag::Write(LPCOLESTR name, VARIANT* value)
{
    written.push_back(Narrow(name));
    Set(Narrow(name), Value(*value));
    return S_OK;
}

ComPtr<IStream> NewStream()
{
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, stream.Put());
    return stream;
}

ComPtr<IStorage> NewStorage()
{
    ComPtr<ILockBytes> bytes;
    ComPtr<IStorage> storage;
    if (SUCCEEDED(CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Put()))) {
        StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0,
                                     storage.Put());
    }
    return storage;
}

void Rewind(const ComPtr<IStream>& stream)
{
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
}

}  // namespace sylvex::test
