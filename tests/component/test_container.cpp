#include "tests/component/test_container.h"

namespace sylvex::test {

namespace {

constexpr wchar_t kFormClass[] = L"SylvexTestForm";

std::string NameOf(const MSG& message, DWORD modifiers)
{
    return "Key " + std::to_string(message.wParam) + (modifiers & 1 ? " shift" : "") +
           (modifiers & 2 ? " control" : "") + (modifiers & 4 ? " alt" : "");
}

}  // namespace

TestContainer::TestContainer()
{
    NewForm();
    ambients.emplace();
}

TestContainer::~TestContainer()
{
    active.Reset();
    DestroyForm();
}

void TestContainer::NewForm()
{
    WNDCLASSW form{};
    form.lpfnWndProc = DefWindowProcW;
    form.hInstance = GetModuleHandleW(nullptr);
    form.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
    form.lpszClassName = kFormClass;
    RegisterClassW(&form);
    m_form = CreateWindowW(kFormClass, L"Form", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN, 50, 50, 420, 320,
                           nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetForegroundWindow(m_form);
    DrainMessages();
}

void TestContainer::DestroyForm()
{
    if (m_form) DestroyWindow(std::exchange(m_form, nullptr));
}

bool TestContainer::Takes(MSG& message)
{
    const ComPtr<IOleInPlaceActiveObject> first = active;
    const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    return isKey && first && first->TranslateAccelerator(&message) == S_OK;
}

void TestContainer::Key(UINT message, WPARAM key)
{
    PostMessageW(GetFocus(), message, key, 1);
    MSG next;
    while (PeekMessageW(&next, nullptr, 0, 0, PM_REMOVE)) {
        if (Takes(next)) continue;
        TranslateMessage(&next);
        DispatchMessageW(&next);
    }
}

STDMETHODIMP TestContainer::QueryInterface(REFIID id, void** found)
{
    *found = nullptr;
    if (id == IID_IDispatch && !ambients) return E_NOINTERFACE;
    return TestObject::QueryInterface(id, found);
}

STDMETHODIMP TestContainer::GetWindow(HWND* window)
{
    *window = m_form;
    return S_OK;
}

STDMETHODIMP TestContainer::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                             LPRECT clip, LPOLEINPLACEFRAMEINFO info)
{
    *frame = this;
    AddRef();
    *document = nullptr;
    *position = place;
    *clip = {0, 0, 1000, 1000};
    *info = {sizeof *info, FALSE, m_form, nullptr, 0};
    return S_OK;
}

STDMETHODIMP TestContainer::OnPosRectChange(LPCRECT wanted)
{
    place = *wanted;
    if (const ComPtr<IOleInPlaceObject> sized = ComPtr<IOleObject>(resized).As<IOleInPlaceObject>()) {
        sized->SetObjectRects(&place, &place);
    }
    return Note("OnPosRectChange");
}

STDMETHODIMP TestContainer::TranslateAccelerator(LPMSG message, DWORD modifiers)
{
    if (message->message == WM_KEYDOWN) Note(NameOf(*message, modifiers));
    return keyAnswer;
}

STDMETHODIMP TestContainer::SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR)
{
    active = ComPtr<IOleInPlaceActiveObject>(object);
    return S_OK;
}

STDMETHODIMP TestContainer::Invoke(DISPID property, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*)
{
    if (!ambients || !ambients->contains(property)) return DISP_E_MEMBERNOTFOUND;
    return VariantCopy(result, &ambients->at(property).Raw());
}

HRESULT TestContainer::Note(const std::string& line, HRESULT answer)
{
    m_log += line + "\n";
    return answer;
}

Embedded::Embedded(TestContainer& container) : control(NewControl()), m_container(container)
{
    if (control) object = control.As<IOleObject>();
}

Embedded::~Embedded()
{
    Close();
}

HRESULT Embedded::Do(LONG verb)
{
    return object->DoVerb(verb, nullptr, &m_container, 0, m_container.Form(), &m_container.place);
}

HWND Embedded::Window() const
{
    HWND window = nullptr;
    As<IOleWindow>()->GetWindow(&window);
    return window;
}

void Embedded::Start()
{
    ASSERT_HRESULT_SUCCEEDED(SetSite());
    ASSERT_HRESULT_SUCCEEDED(InitNew());
    ASSERT_HRESULT_SUCCEEDED(Do(OLEIVERB_UIACTIVATE));
    DrainMessages();
}

void Embedded::Close()
{
    if (object) {
        object->Close(OLECLOSE_NOSAVE);
        object->SetClientSite(nullptr);
    }
    object.Reset();
    control.Reset();
    DrainMessages();
}

}  // namespace sylvex::test
