#pragma once

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "control/sylvex.h"
#include "platform/win32/win32_platform.h"

namespace sylvex::bench {

/// Milliseconds since some moment.
double Now();
/// The median of five runs of `run`, which gives milliseconds; `prepare` is not timed and comes before each.
double Median(const std::function<double()>& run, int runs = 5);

/// One line of the table.
struct Row {
    std::string name;
    double ours = 0;
    double floor = 0;
    double atMost = 0;  ///< times the floor
    const char* unit = "ms";
};
void Print(const Row& row);

/// Where the folders below lie.
std::wstring ScratchFolder();
/// A folder of so many files with 200 extensions.
std::wstring FlatFolder(int files);
/// A folder of so many folders, every other one with a folder in it.
std::wstring FolderOfFolders(int folders);
/// Folders "d" nested 100 deep, with 1000 files each.
std::wstring DeepFolder();

/// A visible top-level window of 600 by 800 pixels that goes with the object.
class Frame {
public:
    Frame();
    ~Frame() { DestroyWindow(m_window); }
    Frame(const Frame&) = delete;
    Frame& operator=(const Frame&) = delete;
    HWND Window() const { return m_window; }

private:
    HWND m_window;
};

/// A control in a frame, enumerated, check boxes on, with a host that listens to nothing.
class Subject : public Container, public SylvexEvents {
public:
    /// `iconsByType`: as on the systems where files show the icon of their type.
    explicit Subject(bool iconsByType = false);
    ~Subject() override;
    Sylvex& Control() { return *m_control; }
    /// The node of a folder, its ancestors opened, itself not.
    Node& NodeOf(const std::wstring& path);
    /// Opens or closes the node and paints the whole tree; milliseconds.
    double Open(Node& node);
    double Paint();
    /// Binds a list-view window in a frame of its own.
    HWND BindList();
    HWND TreeHandle() { return reinterpret_cast<HWND>(m_control->Tree().hWnd()); }
    Win32Platform platform;

private:
    /// The machine, but reporting version 5.0.
    class OldSystem final : public System {
    public:
        explicit OldSystem(System& real) : m_real(real) {}
        SystemVersion Version() override { return {2, 5, 0}; }
        int Metric(int number) override { return m_real.Metric(number); }
        std::optional<std::wstring> ClassRootValue(const std::wstring& key) override
        {
            return m_real.ClassRootValue(key);
        }
        Point CursorPosition() override { return m_real.CursorPosition(); }
        void ResetPointer() override { m_real.ResetPointer(); }
        std::uint32_t Now() override { return m_real.Now(); }
        std::uint32_t InputTime() override { return m_real.InputTime(); }
        std::wstring ProgramName() override { return m_real.ProgramName(); }

    private:
        System& m_real;
    };
    Platform Services(bool iconsByType);
    std::shared_ptr<void> KeepAlive() override { return {}; }
    bool UserMode() override { return true; }
    void PropertyChanged(Property) override {}
    bool MayChange(Property) override { return true; }
    void NodeCheck(Node&) override {}
    void NodeClick(Node&) override {}
    void Collapse(Node&) override {}
    void DblClick() override {}
    void Expand(Node&) override {}
    void KeyDown(short&, short&) override {}
    void KeyPress(short&) override {}
    void KeyUp(short&, short&) override {}
    void MouseUp(short, short, Point) override {}
    void MouseMove(short, short, Point) override {}
    void MouseDown(short, short, Point) override {}

    Frame m_frame;
    OldSystem m_oldSystem{platform.Get().system};
    Platform m_services;
    std::unique_ptr<Sylvex> m_control;
    std::unique_ptr<Frame> m_listFrame;
};

/// A list-view window that fills a frame.
HWND NewList(const Frame& frame);

/// The least that a program must do for the same: a bare window, the listing, one sort, the rows, the paint.
class BareTree {
public:
    explicit BareTree(bool checkBoxes);
    ~BareTree();
    HWND Window() const { return m_tree; }
    HTREEITEM Root() const { return m_root; }
    /// Reads a folder, sorts it once, inserts it below the closed root, opens and paints; milliseconds.
    double Fill(const std::wstring& folder, bool buttonsAskedWhenPainted);
    double Paint();
    std::vector<HTREEITEM> items;

private:
    Frame m_frame;
    HWND m_tree;
    HTREEITEM m_root;
    HIMAGELIST m_pictures;
};

/// The rows of the table.
void OpeningRows();
void CheckingRows();
void ListRows();
void LateListRows();
void NavigationRows();
void TrapRows();

}  // namespace sylvex::bench
