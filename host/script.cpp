#include "host/script.h"

#include <activscp.h>

#include <algorithm>
#include <map>

#include "com/late_call.h"
#include "com/object.h"
#include "host/automation.h"
#include "host/system_text.h"

namespace sylvex::host {
namespace {

std::wstring LanguageOf(const std::wstring& file)
{
    const std::wstring extension = file.substr(std::min(file.rfind(L'.'), file.size()));
    if (lstrcmpiW(extension.c_str(), L".vbs") == 0) return L"VBScript";
    if (lstrcmpiW(extension.c_str(), L".js") == 0) return L"JScript";
    throw Failure(L"a script ends in .vbs or .js: " + file);
}

/// The text of a file in UTF-8.
std::wstring ReadText(const std::wstring& file)
{
    std::string bytes;
    {
        const HANDLE opened =
            CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        if (opened == INVALID_HANDLE_VALUE) throw Failure(L"the script cannot be read: " + file);
        char block[4096];
        DWORD read = 0;
        while (ReadFile(opened, block, sizeof block, &read, nullptr) != 0 && read > 0)
            bytes.append(block, read);
        CloseHandle(opened);
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
    const int size = static_cast<int>(bytes.size());
    std::wstring text(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, bytes.data(), size, text.data(), static_cast<int>(text.size()));
    return text;
}

}  // namespace

/// What the engine sees of the program: the objects by name, and where to tell errors.
class Script::Site final : public CountedObject<IActiveScriptSite, IActiveScriptSiteWindow> {
public:
    Site(std::wstring file, HWND window) : m_file(std::move(file)), m_window(window) {}
    void Add(const std::wstring& name, ComPtr<IDispatch> object) { m_objects[name] = std::move(object); }
    std::wstring TakeError() { return std::exchange(m_error, {}); }

    STDMETHODIMP GetLCID(LCID*) override { return E_NOTIMPL; }
    STDMETHODIMP GetItemInfo(LPCOLESTR name, DWORD wanted, IUnknown** object, ITypeInfo** info) override
    {
        if (object) *object = nullptr;
        if (info) *info = nullptr;
        const auto found = m_objects.find(name);
        if (found == m_objects.end()) return TYPE_E_ELEMENTNOTFOUND;
        if ((wanted & SCRIPTINFO_IUNKNOWN) != 0 && object) found->second.CopyTo(object);
        if ((wanted & SCRIPTINFO_ITYPEINFO) != 0 && info) return found->second->GetTypeInfo(0, 0, info);
        return S_OK;
    }
    STDMETHODIMP GetDocVersionString(BSTR*) override { return E_NOTIMPL; }
    STDMETHODIMP OnScriptTerminate(const VARIANT*, const EXCEPINFO*) override { return S_OK; }
    STDMETHODIMP OnStateChange(SCRIPTSTATE) override { return S_OK; }
    STDMETHODIMP OnScriptError(IActiveScriptError* error) override
    {
        if (!m_error.empty()) return S_OK;
        DWORD context = 0;
        ULONG line = 0;
        LONG column = 0;
        ExceptionInfo exception;
        error->GetSourcePosition(&context, &line, &column);
        error->GetExceptionInfo(exception.Put());
        const EXCEPINFO& what = exception.Get();
        m_error = m_file + L" line " + std::to_wstring(line + 1) + L": " +
                  (what.bstrDescription ? std::wstring(what.bstrDescription) : DescribeResult(what.scode));
        return S_OK;
    }
    STDMETHODIMP OnEnterScript() override { return S_OK; }
    STDMETHODIMP OnLeaveScript() override { return S_OK; }
    STDMETHODIMP GetWindow(HWND* window) override
    {
        *window = m_window;
        return S_OK;
    }
    STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }

private:
    std::wstring m_file;
    HWND m_window;
    std::wstring m_error;
    std::map<std::wstring, ComPtr<IDispatch>> m_objects;
};

struct Script::Engine {
    ComPtr<IActiveScript> script;
    ComPtr<IActiveScriptParse> parser;
};

Script::Script(const std::wstring& file, HWND window)
    : m_file(file), m_site(Make<Site>(file, window)), m_engine(std::make_unique<Engine>())
{
    const std::wstring language = LanguageOf(file);
    CLSID classId;
    Check(CLSIDFromProgID(language.c_str(), &classId), language);
    Check(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IActiveScript), m_engine->script.PutAny()),
          language);
    m_engine->parser = m_engine->script.As<IActiveScriptParse>();
    if (!m_engine->parser) throw AutomationError(language, E_NOINTERFACE, {});
    Check(m_engine->parser->InitNew(), L"IActiveScriptParse.InitNew");
    Check(m_engine->script->SetScriptSite(m_site.Get()), L"IActiveScript.SetScriptSite");
}

Script::~Script()
{
    m_engine->script->Close();
}

void Script::AddObject(const std::wstring& name, ComPtr<IDispatch> object)
{
    m_site->Add(name, std::move(object));
    Check(m_engine->script->AddNamedItem(name.c_str(), SCRIPTITEM_ISVISIBLE), L"IActiveScript.AddNamedItem");
}

void Script::Run()
{
    const std::wstring text = ReadText(m_file);
    ExceptionInfo what;
    const HRESULT parsed = m_engine->parser->ParseScriptText(text.c_str(), nullptr, nullptr, nullptr, 0, 0,
                                                             SCRIPTTEXT_ISVISIBLE, nullptr, what.Put());
    const HRESULT run = SUCCEEDED(parsed) ? m_engine->script->SetScriptState(SCRIPTSTATE_CONNECTED) : parsed;
    const std::wstring error = TakeError();
    if (!error.empty()) throw Failure(error);
    Check(run, m_file);
}

HRESULT Script::Call(const std::wstring& name, std::span<VARIANT> reversed)
{
    ComPtr<IDispatch> procedures;
    if (FAILED(m_engine->script->GetScriptDispatch(nullptr, procedures.Put()))) return S_FALSE;
    DISPID member = DISPID_UNKNOWN;
    if (FAILED(FindMember(*procedures, name.c_str(), member))) return S_FALSE;
    return CallMember(*procedures, member, DISPATCH_METHOD, reversed, nullptr);
}

std::wstring Script::TakeError()
{
    return m_site->TakeError();
}

}  // namespace sylvex::host
