#include <array>
#include <span>

#include "bench/bench.h"
#include "com/late_call.h"
#include "com/object.h"
#include "com/variant.h"
#include "platform/text.h"
#include "SylvexControl_h.h"

namespace sylvex::bench {

namespace {

/// A run over many files takes seconds.
int RunsFor(int files)
{
    return files > 1000 ? 3 : 9;
}

/// An automation object that is known by its members' names only, as a list view of another maker is: it passes calls
/// on to one of the component's, and wraps the objects that it gives out.
class Stranger final : public CountedObject<IDispatch> {
public:
    explicit Stranger(IDispatch* inner) : m_inner(inner) {}
    STDMETHODIMP GetTypeInfoCount(UINT* count) override { return m_inner->GetTypeInfoCount(count); }
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override
    {
        return m_inner->GetTypeInfo(index, locale, info);
    }
    STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale, DISPID* members) override
    {
        return m_inner->GetIDsOfNames(id, names, count, locale, members);
    }
    STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD kind, DISPPARAMS* arguments, VARIANT* result,
                        EXCEPINFO* exception, UINT* bad) override
    {
        const HRESULT done = m_inner->Invoke(member, id, locale, kind, arguments, result, exception, bad);
        if (FAILED(done) || result == nullptr || result->vt != VT_DISPATCH || result->pdispVal == nullptr) return done;
        const auto inner = ComPtr<IDispatch>::Adopt(result->pdispVal);
        result->pdispVal = Make<Stranger>(inner.Get()).Detach();
        return done;
    }

private:
    ComPtr<IDispatch> m_inner;
};

DISPID MemberOf(IDispatch& object, const wchar_t* name)
{
    DISPID member = DISPID_UNKNOWN;
    Check(FindMember(object, name, member));
    return member;
}

/// `reversed`: the arguments, last first.
void Invoke(IDispatch& object, DISPID member, WORD kind, std::span<VARIANT> reversed, VARIANT* result)
{
    Check(CallMember(object, member, kind, reversed, result));
}

/// A control of the component beside the program, in a window of its own.
ComPtr<_Sylvex> NewControl()
{
    wchar_t path[MAX_PATH];
    const std::wstring program(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
    static const HMODULE module =
        LoadLibraryW((program.substr(0, program.rfind(L'\\') + 1) + L"SylvexControl.ocx").c_str());
    if (module == nullptr) throw RuntimeError{53, L"SylvexControl.ocx is not beside the benchmark"};
    using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    const auto get =
        reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
    ComPtr<IClassFactory> factory;
    Check(get(__uuidof(::Sylvex), IID_IClassFactory, factory.PutAny()));
    ComPtr<_Sylvex> control;
    Check(factory->CreateInstance(nullptr, __uuidof(_Sylvex), control.PutAny()));
    return control;
}

/// As after a sort: what a list does with rows that are added while it is sorted is the list's own affair.
void PutSorted(IDispatch& list, bool sorted)
{
    Variant value(sorted);
    Invoke(list, MemberOf(list, L"Sorted"), DISPATCH_PROPERTYPUT, {&value.Get(), 1}, nullptr);
}

/// The list object that a control makes of a list-view window, as a stranger.
ComPtr<IDispatch> ListObject(_Sylvex& maker, HWND list)
{
    const Variant window(static_cast<long>(reinterpret_cast<LONG_PTR>(list)));
    Check(maker.putref_ReqListView(window.Get()));
    Variant object;
    Check(maker.get_ReqListView(object.Put()));
    if (!object.As<IDispatch>()) throw RuntimeError{424, L"Object required"};
    return ComPtr<IDispatch>::Adopt(Make<Stranger>(object.As<IDispatch>().Get()).Detach());
}

/// The calls that fill one row, and nothing else.
class BareRows {
public:
    explicit BareRows(IDispatch& list)
    {
        Variant items;
        Invoke(list, MemberOf(list, L"ListItems"), DISPATCH_PROPERTYGET, {}, items.Put());
        m_items = items.As<IDispatch>();
        m_add = MemberOf(*m_items.Get(), L"Add");
    }
    void Add(const std::wstring& path)
    {
        Variant added;
        Invoke(*m_items.Get(), m_add, DISPATCH_METHOD, {}, added.Put());
        IDispatch& item = *V_DISPATCH(&added.Get());
        if (m_text == DISPID_UNKNOWN) {
            m_text = MemberOf(item, L"Text");
            m_subItems = MemberOf(item, L"SubItems");
            m_index = MemberOf(item, L"Index");
        }
        Variant text(path);
        Invoke(item, m_text, DISPATCH_PROPERTYPUT, {&text.Get(), 1}, nullptr);
        for (long column = 1; column < 16; ++column) {
            if (column == 10) continue;
            // As long as the columns' texts are on average.
            const Variant cell(L"01/01/2026A");
            std::array<VARIANT, 2> reversed{cell.Get(), Variant(column).Get()};
            Invoke(item, m_subItems, DISPATCH_PROPERTYPUT, reversed, nullptr);
        }
        Variant index;
        Invoke(item, m_index, DISPATCH_PROPERTYGET, {}, index.Put());
    }

private:
    ComPtr<IDispatch> m_items;
    DISPID m_add = 0;
    DISPID m_text = DISPID_UNKNOWN;
    DISPID m_subItems = 0;
    DISPID m_index = 0;
};

double FloorLateList(const std::wstring& folder, int runs)
{
    return Median(
        [&] {
            Frame frame;
            const ComPtr<_Sylvex> maker = NewControl();
            const HWND window = NewList(frame);
            const ComPtr<IDispatch> list = ListObject(*maker.Get(), window);
            BareRows rows(*list.Get());
            const double start = Now();
            SendMessageW(window, WM_SETREDRAW, FALSE, 0);
            WIN32_FIND_DATAW entry;
            const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &entry);
            do
                if (entry.cFileName[0] != L'.') rows.Add(folder + L"\\" + entry.cFileName);
            while (FindNextFileW(search, &entry) != 0);
            FindClose(search);
            SendMessageW(window, WM_SETREDRAW, TRUE, 0);
            PutSorted(*list.Get(), true);
            return Now() - start;
        },
        runs);
}

std::wstring TextOf(INode& node)
{
    Bstr text;
    Check(node.get_Text(text.Put()));
    return text.Text();
}

ComPtr<INode> ChildOf(INode& parent, const std::wstring& text)
{
    Check(parent.put_Expanded(VARIANT_TRUE));
    ComPtr<INode> child;
    Check(parent.get_Child(child.Put()));
    while (child && TextOf(*child.Get()) != text) {
        ComPtr<INode> next;
        Check(child->get_Next(next.Put()));
        child = next;
    }
    if (!child) throw ElementNotFound();
    return child;
}

/// The node of a folder, opened like all above it.
ComPtr<INode> NodeAt(_Sylvex& control, const std::wstring& path)
{
    Variant tree;
    Check(control.get_TreeView(tree.Put()));
    ComPtr<INodes> nodes;
    Check(tree.As<ITreeView>()->get_Nodes(nodes.Put()));
    const auto parts = SplitText(path, L'\\');
    const Variant drive(parts[0] + L"\\");
    ComPtr<INode> node;
    Check(nodes->get_Item(drive.Get(), node.Put()));
    for (std::size_t i = 1; i < parts.size(); ++i)
        node = ChildOf(*node.Get(), parts[i]);
    Check(node->put_Expanded(VARIANT_TRUE));
    return node;
}

/// Ticks the folder, which fills the list once; timed is the second filling of the emptied list.
double OursLateList(const std::wstring& folder, int runs)
{
    return Median(
        [&] {
            Frame frame;
            const HWND window = NewList(frame);
            const ComPtr<_Sylvex> maker = NewControl();
            const ComPtr<IDispatch> list = ListObject(*maker.Get(), window);
            const ComPtr<_Sylvex> control = NewControl();
            Check(control->put_FileFilter(Bstr(L"*").Get()));
            Check(control->put_Checkboxes(VARIANT_TRUE));
            Check(control->Enumerate());
            Check(control->putref_ReqListView(Variant(list.Get()).Get()));
            const ComPtr<INode> node = NodeAt(*control.Get(), folder);
            Check(node->put_Checked(VARIANT_TRUE));
            INode* ticked = node.Get();
            VARIANT_BOOL answer = VARIANT_FALSE;
            Check(control->CheckNodeSelective(&ticked, &answer));
            ListView_DeleteAllItems(window);
            PutSorted(*list.Get(), false);
            VARIANT_BOOL nested = VARIANT_FALSE;
            const double start = Now();
            Check(control->BuildFileList(&ticked, &nested));
            const double taken = Now() - start;
            if (ListView_GetItemCount(window) == 0) throw ElementNotFound();
            return taken;
        },
        runs);
}

}  // namespace

void LateListRows()
{
    for (const int files : {1000, 10000, 100000}) {
        const std::wstring folder = FlatFolder(files);
        Print({"late-bound list of " + std::to_string(files) + " ticked files", OursLateList(folder, RunsFor(files)),
               FloorLateList(folder, RunsFor(files)), 1.3});
    }
}

}  // namespace sylvex::bench
