#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/component/test_control.h"

namespace sylvex::test {

/// A property bag on the test's stack.
class TestBag final : public IPropertyBag {
public:
    TestBag() = default;
    TestBag(const TestBag&) = delete;
    TestBag& operator=(const TestBag&) = delete;
    ~TestBag();

    /// Whether Read() converts to the type that the caller wants, and fails where it cannot; otherwise it gives what it
    /// has, whatever was wanted.
    bool converts = true;
    /// The names in the order of Read() and Write().
    std::vector<std::string> read, written;

    /// Takes the value over.
    void Set(const std::string& name, VARIANT value);
    void SetText(const std::string& name, const wchar_t* text);
    void SetNumber(const std::string& name, long number);
    /// An entry that holds an object of this class.
    void SetClass(const std::string& name, const CLSID& id) { m_classes[name] = id; }
    const std::map<std::string, VARIANT>& Entries() const { return m_entries; }

    STDMETHODIMP QueryInterface(REFIID id, void** found) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 1; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) override;
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override;

private:
    HRESULT Make(const CLSID& id, VARIANT& value);

    std::map<std::string, VARIANT> m_entries;
    std::map<std::string, CLSID> m_classes;
};

/// An empty stream, and a storage, in memory.
ComPtr<IStream> NewStream();
ComPtr<IStorage> NewStorage();
void Rewind(const ComPtr<IStream>& stream);

}  // namespace sylvex::test
