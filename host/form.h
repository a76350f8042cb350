#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "host/container.h"
#include "host/csv.h"
#include "host/event_log.h"
#include "host/layout.h"
#include "host/options.h"
#include "host/path_watch.h"
#include "host/script_session.h"
#include "host/window.h"

namespace sylvex::host {

/// The form: the control, the list that it fills, their settings, and the log of events.
class Form : public Window {
public:
    /// `description` is the font of everything in the form; `options` must outlive it.
    Form(const LOGFONTW& description, const Options& options);
    ~Form() override;

    /// Creates the window and shows it as `show` (SW_...) says; false when the system does not let it.
    bool Create(int show);
    /// Serves messages until the form is closed; the result is the program's exit status.
    int Run();

    /// Creates the control and gives it its list and its settings; throws AutomationError.
    void OpenControl();
    _Sylvex& Control() const { return m_container->Control(); }
    EventLog& Log() { return m_log; }
    /// Loads the tree with the file filter that the form shows; throws AutomationError.
    void Enumerate();
    /// Selects the node of a path, loading what leads there; throws Failure when there is none.
    void GoTo(const std::wstring& text);
    /// Carries out a command on the list's row of that text; throws Failure when there is none.
    void UseRow(const RowCommand& command);
    /// The list as a table; throws AutomationError.
    Table List() const;
    void ShowRowCount();
    /// Runs a script that drives the control and hears its events until the form goes; throws Failure.
    void RunScript(const std::wstring& file);
    /// Shows what went wrong in the status bar and the log.
    void ReportFailure(const std::wstring& message);
    /// Paints what is still to be painted, and carries out `action` once that has reached the screen.
    void WhenPainted(std::function<void()> action);
    /// What Run() will return.
    void SetStatus(int status) { m_status = status; }
    /// Closes the form, once the command being carried out is done.
    void Leave();

private:
    LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    /// The messages about the window itself.
    LRESULT AnswerFrame(UINT message, WPARAM wParam, LPARAM lParam);
    bool CreateChildren();
    void CreatePanes();
    HWND Item(int id) const { return GetDlgItem(Handle(), id); }
    void ServeMessage(MSG& message);
    void ServeMessagesFor(int milliseconds);
    bool TakeTab(const MSG& message);
    void TabOut(bool back);
    void MoveFocus(WPARAM where, bool isWindow);
    void OnSize();
    void OnActivate(bool active);
    void OnMinMax(MINMAXINFO& info) const;
    void OnListNotice(const NMHDR& header);
    void OnListKey(WORD key);
    void OnCommand(int id, int notification);
    void OnDefaultKey();
    void OnTimer(UINT_PTR timer);
    void OnClose();
    void Start();

    using Command = std::function<void(Form&)>;
    /// Keeps the form from going while a command is carried out, in which messages may be served.
    class Busy;
    std::shared_ptr<void> Hold();
    /// Runs a command, if there is a control; its failures are shown, not thrown.
    void Attempt(const Command& command);
    /// What a button or its accelerator does; empty when there is no such button.
    static Command FindCommand(int id);
    void ApplyPatterns();
    void ApplyRecursive();
    void ApplyCheckboxes();
    void ApplyDragDrop();
    void ApplyFileFilter();
    void Refresh();
    void Export();
    void Copy();
    void FindSelected();
    void CheckSelected(bool checked);
    void ShowStatus(const std::wstring& text);
    void HearEvent(const ControlEvent& event);
    void HearProperty(DISPID member);
    void LookAtPaths();
    void HearChange(std::wstring_view what, const std::wstring& before, const std::wstring& after);
    std::wstring DescribeNode(INode& node);
    void ShowUnavailable(const std::wstring& reason);

    const Options& m_options;
    Font m_font;
    LOGFONTW m_fontDescription;
    Metrics m_metrics;
    std::optional<Layout> m_layout;
    PlaceWindow m_place;
    Splitter m_panesSplitter;
    Splitter m_logSplitter;
    EventLog m_log;
    std::unique_ptr<ControlContainer> m_container;
    std::unique_ptr<PathWatch> m_watch;  // while nodes can be dragged and renamed
    std::unique_ptr<ScriptSession> m_script;
    HACCEL m_accelerators = nullptr;
    HWND m_lastFocus = nullptr;
    std::function<void()> m_whenPainted;
    bool m_started = false;
    int m_busy = 0;
    bool m_leaving = false;
    int m_status = 0;
};

}  // namespace sylvex::host
