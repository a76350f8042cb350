#include <windows.h>

#include <commctrl.h>
#include <commdlg.h>

#include "com/font.h"
#include "host/automation.h"
#include "host/console.h"
#include "host/file_list.h"
#include "host/form.h"
#include "host/path_walker.h"
#include "host/resource.h"
#include "host/session.h"

namespace sylvex::host {
namespace {

constexpr wchar_t kProgId[] = L"SylvexControl.Sylvex";

/// Parts of the status bar.
constexpr WPARAM kTextPart = 0;
constexpr WPARAM kCountPart = 1;

/// Shows the wait cursor while it exists.
class WaitCursor {
public:
    WaitCursor() : m_before(SetCursor(LoadCursorW(nullptr, IDC_WAIT))) {}
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
    ~WaitCursor() { SetCursor(m_before); }

private:
    HCURSOR m_before;
};

/// Name that the user chose, or empty.
std::wstring AskForFile(HWND owner)
{
    wchar_t name[32768] = L"list.csv";
    OPENFILENAMEW question{};
    question.lStructSize = sizeof question;
    question.hwndOwner = owner;
    question.lpstrFilter = L"Comma-separated values (*.csv)\0*.csv\0All files\0*.*\0";
    question.lpstrDefExt = L"csv";
    question.lpstrFile = name;
    question.nMaxFile = std::size(name);
    question.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetSaveFileNameW(&question) ? name : L"";
}

}  // namespace

class Form::Busy {
public:
    explicit Busy(Form& form) : m_form(form) { ++m_form.m_busy; }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;
    ~Busy()
    {
        if (--m_form.m_busy == 0 && m_form.m_leaving) m_form.Leave();
    }

private:
    Form& m_form;
};

std::shared_ptr<void> Form::Hold()
{
    return std::make_shared<Busy>(*this);
}

void Form::Start()
{
    const Busy busy(*this);
    RunSession(*this, m_options);
}

void Form::OpenControl()
{
    const ComPtr<IFontDisp> font = MakeFont(m_fontDescription);
    m_container = std::make_unique<ControlContainer>(Handle(), m_place.Handle());
    try {
        m_container->Open(kProgId, font,
                          {[this](const ControlEvent& event) { HearEvent(event); },
                           [this](DISPID member) { HearProperty(member); }, [this](bool back) { TabOut(back); }});
    } catch (const AutomationError& error) {
        m_container.reset();
        ShowUnavailable(error.Message());
        throw;
    }
    _Sylvex& control = Control();
    PutProperty(control, L"ReqListView", ValueOf(Item(IDC_LIST)));
    if (font) Check(control.putref_Font(font.Get()), L"Font");
    Check(control.put_HideSelection(VARIANT_FALSE), L"HideSelection");
    ApplyCheckboxes();
    ApplyDragDrop();
    ApplyRecursive();
    ApplyPatterns();
    if (GetFocus() == m_place.Handle()) m_container->Activate(nullptr);
}

void Form::ShowUnavailable(const std::wstring& reason)
{
    m_place.SetText(L"The Sylvex control cannot be used on this computer.\n\n" + reason +
                    L"\n\nRegister the component and start this program again:\n\n    regsvr32 SylvexControl.ocx");
    for (const int id :
         {IDC_RECURSIVE, IDC_CHECKBOXES, IDC_DRAG_DROP, IDC_ENUMERATE, IDC_REFRESH, IDC_EXPORT, IDC_COPY}) {
        EnableWindow(Item(id), FALSE);
    }
}

void Form::Attempt(const Command& command)
{
    if (!m_container) return;
    const Busy busy(*this);
    try {
        std::invoke(command, *this);
    } catch (const Failure& failure) {
        ReportFailure(failure.Message());
    }
}

Form::Command Form::FindCommand(int id)
{
    switch (id) {
        case IDC_ENUMERATE:
            return &Form::Enumerate;
        case IDC_REFRESH:
            return &Form::Refresh;
        case IDC_EXPORT:
            return &Form::Export;
        case IDC_COPY:
            return &Form::Copy;
        case IDC_RECURSIVE:
            return &Form::ApplyRecursive;
        case IDC_CHECKBOXES:
            return &Form::ApplyCheckboxes;
        case IDC_DRAG_DROP:
            return &Form::ApplyDragDrop;
        default:
            return {};
    }
}

void Form::OnCommand(int id, int notification)
{
    switch (id) {
        case IDOK:
            OnDefaultKey();
            break;
        case IDC_LEAVE:
            Leave();
            break;
        case IDC_FILE_FILTER:
            if (notification == EN_KILLFOCUS) Attempt(&Form::ApplyFileFilter);
            break;
        case IDC_PATTERNS:
            if (notification == EN_KILLFOCUS) Attempt(&Form::ApplyPatterns);
            break;
        default:
            if (const auto command = FindCommand(id)) Attempt(command);
            break;
    }
}

void Form::OnDefaultKey()
{
    const HWND focus = GetFocus();
    if (focus == Item(IDC_PATH)) Attempt([this](Form&) { GoTo(WindowText(Item(IDC_PATH))); });
    if (focus == Item(IDC_FILE_FILTER)) Attempt(&Form::Enumerate);
    if (focus == Item(IDC_PATTERNS)) Attempt(&Form::Refresh);
    if (focus == Item(IDC_LIST)) Attempt(&Form::FindSelected);
}

void Form::OnListNotice(const NMHDR& header)
{
    switch (header.code) {
        case LVN_COLUMNCLICK:
            Attempt([&](Form&) { SortByColumn(Control(), reinterpret_cast<const NMLISTVIEW&>(header).iSubItem); });
            break;
        case LVN_ITEMACTIVATE:
            Attempt(&Form::FindSelected);
            break;
        case LVN_KEYDOWN:
            OnListKey(reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey);
            break;
        default:
            break;
    }
}

void Form::OnListKey(WORD key)
{
    if (key == VK_DELETE || key == VK_INSERT) Attempt([&](Form&) { CheckSelected(key == VK_INSERT); });
}

void Form::GoTo(const std::wstring& text)
{
    const std::optional<TreePath> path = ParseTreePath(text);
    if (!path) throw Failure(text + L": not an absolute path with a drive");
    // The control finds loaded nodes only, and knows no path of a drive.
    const PathWalker walker(Control());
    path->names.empty() ? walker.Open(*path) : static_cast<void>(walker.Find(*path));
    Check(Control().put_Path(Bstr(path->Text()).Get()), L"Path");
    SetWindowTextW(Item(IDC_PATH), path->Text().c_str());
    ShowStatus(path->Text());
}

void Form::UseRow(const RowCommand& command)
{
    if (!SelectRow(Item(IDC_LIST), command.row)) throw Failure(command.row + L": the list has no such row");
    if (command.what == RowCommand::Find) return FindSelected();
    CheckSelected(command.what == RowCommand::Tick);
}

void Form::FindSelected()
{
    Check(Control().SetNode(), L"SetNode");
}

void Form::CheckSelected(bool checked)
{
    VARIANT_BOOL tick = FlagOf(checked);
    VARIANT_BOOL buildList = VARIANT_TRUE;
    Check(Control().SetNodeChecked(&tick, &buildList), L"SetNodeChecked");
    ShowRowCount();
}

void Form::ApplyFileFilter()
{
    const std::wstring wished = WindowText(Item(IDC_FILE_FILTER));
    if (ReadText(Control(), &_Sylvex::get_FileFilter, L"FileFilter") == wished) return;
    Check(Control().put_FileFilter(Bstr(wished).Get()), L"FileFilter");
}

void Form::ApplyPatterns()
{
    const std::wstring wished = WindowText(Item(IDC_PATTERNS));
    if (ReadText(Control(), &_Sylvex::get_BuildFileListFilter, L"BuildFileListFilter") == wished) return;
    Check(Control().put_BuildFileListFilter(Bstr(wished).Get()), L"BuildFileListFilter");
}

void Form::ApplyRecursive()
{
    Check(Control().put_RecursiveCheck(FlagOf(IsDlgButtonChecked(Handle(), IDC_RECURSIVE))), L"RecursiveCheck");
}

void Form::ApplyCheckboxes()
{
    Check(Control().put_Checkboxes(FlagOf(IsDlgButtonChecked(Handle(), IDC_CHECKBOXES))), L"Checkboxes");
}

void Form::ApplyDragDrop()
{
    const bool on = IsDlgButtonChecked(Handle(), IDC_DRAG_DROP) == BST_CHECKED;
    Check(Control().put_DragDropEnable(FlagOf(on)), L"DragDropEnable");
    Check(Control().put_LabelEdit(on ? tvwAutomatic : tvwManual), L"LabelEdit");
    m_watch.reset();
    if (!on) return;
    m_watch = std::make_unique<PathWatch>(
        Control(), [this](auto what, auto& before, auto& after) { HearChange(what, before, after); });
}

void Form::Enumerate()
{
    const WaitCursor cursor;
    ApplyFileFilter();
    Check(Control().Enumerate(), L"Enumerate");
    ShowStatus(L"Tick folders and files. In the list, a double click finds the entry in the tree; Delete unticks it.");
    ShowRowCount();
}

void Form::Refresh()
{
    const WaitCursor cursor;
    ApplyPatterns();
    Check(Control().Refresh(), L"Refresh");
    ShowRowCount();
}

Table Form::List() const
{
    return ReadList(Item(IDC_LIST), Control());
}

void Form::Export()
{
    const std::wstring name = AskForFile(Handle());
    if (name.empty()) return;
    WriteFileBytes(name, ToUtf8(CsvText(List())));
    m_log.Add(L"Exported", name);
}

void Form::Copy()
{
    if (!CopyText(Handle(), CsvText(List()))) throw Failure(L"The clipboard is in use by another program");
    m_log.Add(L"Copied", std::to_wstring(CountRows(Item(IDC_LIST))) + L" rows");
}

void Form::ShowRowCount()
{
    const int rows = CountRows(Item(IDC_LIST));
    const std::wstring text = std::to_wstring(rows) + (rows == 1 ? L" row" : L" rows");
    SendMessageW(Item(IDC_STATUS), SB_SETTEXTW, kCountPart, reinterpret_cast<LPARAM>(text.c_str()));
}

void Form::ShowStatus(const std::wstring& text)
{
    SendMessageW(Item(IDC_STATUS), SB_SETTEXTW, kTextPart, reinterpret_cast<LPARAM>(text.c_str()));
}

void Form::ReportFailure(const std::wstring& message)
{
    m_log.Add(L"Error", message);
    ShowStatus(message);
}

std::wstring Form::DescribeNode(INode& node)
{
    Bstr path;
    Check(Control().BuildFullPath(&node, path.Put()), L"BuildFullPath");
    return ReadText(node, &INode::get_Text, L"Node.Text") + L"   " + path.Text();
}

void Form::HearEvent(const ControlEvent& event)
{
    if (event.id == dispidMouseMove) {
        m_log.AddLatest(event.name, event.arguments);
        return;
    }
    if (m_watch) Attempt([&](Form&) { m_watch->Hear(event); });
    if (!event.node || !m_container) {
        m_log.Add(event.name, event.arguments);
        return;
    }
    Attempt([&](Form&) {
        const std::wstring description = DescribeNode(*event.node);
        m_log.Add(event.name, description);
        ShowStatus(description);
    });
    if (event.id == dispidNodeCheck) ShowRowCount();
}

void Form::LookAtPaths()
{
    // What a box of the control waits for is looked at when it has been answered.
    if (m_watch && m_busy == 0) Attempt([&](Form&) { m_watch->Look(); });
}

void Form::HearChange(std::wstring_view what, const std::wstring& before, const std::wstring& after)
{
    const bool done = GetFileAttributesW((L"\\\\?\\" + after).c_str()) != INVALID_FILE_ATTRIBUTES;
    const std::wstring details = before + L"  ->  " + after + (done ? L"" : L"   (not on the disk)");
    m_log.Add(what, details);
    ShowStatus(std::wstring(what) + L": " + details);
}

void Form::HearProperty(DISPID member)
{
    if (m_container && m_container->IsOpen()) m_log.Add(L"PropertyChanged", MemberName(Control(), member));
}

}  // namespace sylvex::host
