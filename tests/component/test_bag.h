#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/component/automation.h"
#include "tests/component/test_control.h"

namespace sylvex::test {

/// A property bag on the test's stack.
class TestBag final : public TestObject<IPropertyBag> {
public:
    /// Whether Read() converts to the type that the caller wants, and fails where it cannot; otherwise it gives what it
    /// has, whatever was wanted.
    bool converts = true;
    /// The names in the order of Read() and Write().
    std::vector<std::string> read, written;

    void Set(const std::string& name, const Value& value) { m_entries[name] = value; }
    /// An entry that holds an object of this class.
    void SetClass(const std::string& name, const CLSID& id) { m_classes[name] = id; }
    const VARIANT& Entry(const std::string& name) const { return m_entries.at(name).Raw(); }

    STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog* errors) override;
    STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override;

private:
    HRESULT Make(const CLSID& id, VARIANT& value);

    std::map<std::string, Value> m_entries;
    std::map<std::string, CLSID> m_classes;
};

/// An empty stream, and a storage, in memory.
ComPtr<IStream> NewStream();
ComPtr<IStorage> NewStorage();
void Rewind(const ComPtr<IStream>& stream);

}  // namespace sylvex::test
