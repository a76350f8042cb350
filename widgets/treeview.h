#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/platform.h"
#include "widgets/image_names.h"
#include "widgets/nodes.h"

namespace sylvex {

/// The events of a tree view. A handler may change or remove any node, and may raise.
class TreeViewEvents {
public:
    virtual ~TreeViewEvents() = default;
    /// Keeps the tree and its owner in existence while a call from the window runs: a handler may let go of both.
    virtual std::shared_ptr<void> KeepAlive() { return {}; }
    virtual void TV_Expand(Node& node) = 0;
    virtual void TV_Collapse(Node& node) = 0;
    virtual void TV_NodeClick(Node& node) = 0;
    virtual void TV_NodeCheck(Node& node) = 0;
    virtual void TV_DblClick() = 0;
    virtual void TV_KeyDown(short& keyCode, short shift) = 0;
    virtual void TV_KeyPress(short& keyAscii) = 0;
    virtual void TV_KeyUp(short& keyCode, short shift) = 0;
    /// Mouse positions in pixels of the tree's client area.
    virtual void TV_MouseDown(short button, short shift, Point where) = 0;
    virtual void TV_MouseMove(short button, short shift, Point where) = 0;
    virtual void TV_MouseUp(short button, short shift, Point where) = 0;
    virtual void TV_BeforeLabelEdit(bool& cancel) = 0;
    virtual void TV_AfterLabelEdit(bool& cancel, const std::wstring& newString) = 0;
};

/// The tree view: the node model with its window. A node has a row in the window once its parent has been opened; the
/// window's rows are written from the model and never read back.
class TreeView : private NodesMirror, private TreeWindowListener {
public:
    /// Makes the window below `parent`. The platform and the events outlive the tree.
    TreeView(Platform& platform, TreeViewEvents& events, WindowHandle parent);
    ~TreeView() override;

    Nodes& GetNodes() { return m_nodes; }
    ImageNames& Images() { return m_images; }
    /// Binds the pictures; the list outlives the binding.
    void SetImageList(const ImageList* images);
    /// Shows the pictures of a foreign image list (0: none) in place of the bound one's: each node that at its place.
    void SetImageListHandle(ImageListHandle images);
    ImageListHandle ShownImages() const { return m_imageList; }
    /// The bound list; 0 when there is none.
    ImageListHandle BoundImages() const { return m_images.Handle(); }

    Node* SelectedItem() const { return m_selected.IfAlive(); }
    /// Null: no selection. Opens the ancestors.
    void SetSelectedItem(Node* node);
    Node* DropHighlight() const { return m_dropHighlight.IfAlive(); }
    void SetDropHighlight(Node* node);
    /// The window's highlight has been moved by a message of its own.
    void DropHighlightMoved(Node* node) { m_dropHighlight = NodeRef(node); }
    /// The node at a point of the client area in pixels, null beside any.
    Node* HitTest(Point where);
    /// The row of a node in the window, 0 while it has none.
    ItemHandle ItemOf(const Node& node) const { return node.m_item; }
    /// The node of a row that the window has just told of, null for 0 and for a row that somebody else has inserted.
    Node* NodeOfItem(ItemHandle item);
    /// Opens the selected node's label for editing; nothing without a selection.
    void StartLabelEdit();
    /// The same with a text in it that is not the label.
    void StartLabelEdit(const std::wstring& typed);
    /// The node whose label is being edited, or was last; null when it is gone.
    Node* EditedNode() const { return m_edited.IfAlive(); }
    void Refresh();
    WindowHandle hWnd() const;
    int VisibleCount();
    /// Another number each time that rows come, go, or are opened and closed.
    unsigned LayoutVersion() const { return m_layoutVersion; }

    bool Visible() const { return m_visible; }
    void SetVisible(bool visible);
    /// Pixels in the parent window.
    void Move(const Rect& place);
    /// Between its beginning and End, or its own end, nothing is painted; they nest. A host that has stopped the
    /// painting by message keeps it stopped beyond that.
    class Updating {
    public:
        explicit Updating(TreeView& tree);
        ~Updating();
        Updating(const Updating&) = delete;
        Updating& operator=(const Updating&) = delete;
        void End();

    private:
        TreeView* m_tree;
    };

    /// A setting as its property holds it. Writing raises 380 outside the setting's values.
    int Setting(TreeSetting setting) const { return m_settings[static_cast<std::size_t>(setting)]; }
    void SetSetting(TreeSetting setting, int value);
    const ObjectRef& Font() const { return m_font; }
    void SetFont(const ObjectRef& font);
    const ObjectRef& MouseIcon() const { return m_mouseIcon; }
    void SetMouseIcon(const ObjectRef& picture);
    /// Draws the boxes with the control's own pictures, for as long as there are boxes.
    void InstallCheckPictures();

    /// The window has gone or goes; the model stays. Everything that needs the window does nothing until AttachWindow.
    void DetachWindow();
    void AttachWindow(WindowHandle parent);

private:
    // NodesMirror
    void Added(Node& node) override;
    void Removing(Node& node) override;
    void RemovingAll() override;
    void TextChanged(Node& node) override;
    void ImagesChanged(Node& node) override;
    void MarksChanged() override;
    void ChildrenChanged(Node& parent) override;
    void Reordered(Node* parent) override;
    void Open(Node& node, bool expanded) override;
    bool Show(Node& node) override;
    void Select(Node* node) override { SetSelectedItem(node); }
    Node* SelectedNode() override { return SelectedItem(); }

    // TreeWindowListener
    bool Owns(ItemHandle row, ItemData item) const noexcept override;
    bool Expanding(ItemData item, bool expand) override;
    void Expanded(ItemData item, bool expand) override;
    bool HasChildren(ItemData item) override;
    RowMarks Marks(ItemData item) override;
    void CheckClicked(ItemData item) override;
    void Selected(ItemData item, bool byUser) override;
    void Clicked(ItemData item) override;
    void DoubleClicked() override;
    void KeyDown(short& key, short shift) override;
    void KeyPress(short& character) override;
    void KeyUp(short& key, short shift) override;
    void MouseDown(short button, short shift, Point where) override;
    void MouseMove(short button, short shift, Point where) override;
    void MouseUp(short button, short shift, Point where) override;
    bool LabelEditing(ItemData item) override;
    bool LabelEdited(ItemData item, const std::optional<std::wstring>& text) override;
    void Destroying() override;

    bool HasRow(const Node& node) const;
    ItemLook LookOf(const Node& node) const;
    ExpandButton ButtonOf(const Node& node) const;
    void InsertRow(Node& node, ItemHandle after);
    void Realise(Node* parent);
    void InsertRowsOf(Node* parent);
    void Forget(Node* parent);
    std::vector<ItemHandle> PiecesOf(Node* top) const;
    void DeleteRows(Node* top);
    bool OpenModel(Node& node);
    void CloseModel(Node& node);
    bool OpenLevels(const std::vector<NodeRef>& levels);
    void WriteSettings();
    template <class Body>
    void FromWindow(Body&& body) noexcept;

    Platform& m_platform;
    TreeViewEvents& m_events;
    ImageNames m_images;
    Nodes m_nodes;
    std::unique_ptr<TreeWindow> m_window;
    bool m_rootsRealised = false;
    bool m_byWindow = false;           // the window is changing the selection by itself
    const Node* m_asked = nullptr;     // the window is asking whether this node has children
    const Node* m_inserted = nullptr;  // gets its row just now
    NodeRef m_selected;
    NodeRef m_dropHighlight;
    NodeRef m_edited;
    bool m_editEnds = false;  // what the end of an edit sets off runs, which may end the edit once more
    int m_settings[10] = {1, 0, 0, 1, 0, 1, 0, 0, 0, 0};
    ObjectRef m_font;
    ObjectRef m_mouseIcon;
    ImageListHandle m_imageList = 0;
    bool m_visible = true;
    bool m_hasCheckPictures = false;
    int m_updates = 0;
    unsigned m_layoutVersion = 0;
    Rect m_place;
};

}  // namespace sylvex
