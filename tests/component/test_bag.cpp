#include "tests/component/test_bag.h"

namespace sylvex::test {

namespace {

std::string Narrow(LPCOLESTR text)
{
    const std::wstring wide(text);
    return std::string(wide.begin(), wide.end());
}

}  // namespace

TestBag::~TestBag()
{
    for (auto& [name, value] : m_entries)
        VariantClear(&value);
}

void TestBag::Set(const std::string& name, VARIANT value)
{
    VariantClear(&m_entries[name]);
    m_entries[name] = value;
}

void TestBag::SetText(const std::string& name, const wchar_t* text)
{
    VARIANT value{};
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = SysAllocString(text);
    Set(name, value);
}

void TestBag::SetNumber(const std::string& name, long number)
{
    VARIANT value{};
    V_VT(&value) = VT_I4;
    V_I4(&value) = number;
    Set(name, value);
}

STDMETHODIMP TestBag::QueryInterface(REFIID id, void** found)
{
    *found = id == IID_IUnknown || id == IID_IPropertyBag ? this : nullptr;
    return *found ? S_OK : E_NOINTERFACE;
}

STDMETHODIMP TestBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*)
{
    read.push_back(Narrow(name));
    const auto made = m_classes.find(Narrow(name));
    if (made != m_classes.end()) return Make(made->second, *value);
    const auto entry = m_entries.find(Narrow(name));
    if (entry == m_entries.end()) return E_INVALIDARG;
    const VARTYPE wanted = V_VT(value);
    VARIANT given{};
    VariantCopy(&given, &entry->second);
    if (converts && wanted != VT_EMPTY && FAILED(VariantChangeType(&given, &given, 0, wanted))) {
        VariantClear(&given);
        return E_FAIL;
    }
    VariantClear(value);
    *value = given;
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
    VARIANT copy{};
    const HRESULT copied = VariantCopy(&copy, value);
    if (SUCCEEDED(copied)) Set(Narrow(name), copy);
    return copied;
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
