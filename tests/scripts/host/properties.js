// Run by the sample host: reads every property, writes it and reads it again, and writes a bad value, which must leave it.
function check(name, good, bad) {
    var before = typeof Sylvex[name];
    var text = name + ": " + before;
    try {
        Sylvex[name] = good;
        text += ", " + Sylvex[name];
    } catch (error) {
        text += ", refused " + (error.number & 0xFFFF);
    }
    try {
        Sylvex[name] = bad;
        text += ", took " + Sylvex[name];
    } catch (error) {
        text += ", bad " + (error.number & 0xFFFF) + " leaves " + Sylvex[name];
    }
    Host.Echo(text);
}

check("Appearance", 0, 7);
check("BackColor", 255, "red");
check("BorderStyle", 0, 2);
check("BuildFileListFilter", "*.txt|*.doc", "");
check("Checkboxes", false, "maybe");
check("DragDropEnable", true, "maybe");
check("Enabled", false, "maybe");
check("FileFilter", "*.txt", "");
check("FullRowSelect", true, "maybe");
check("HideSelection", true, "maybe");
check("HotTracking", true, "maybe");
check("LabelEdit", 0, 2);
check("LineStyle", 1, 2);
check("MousePointer", 11, 100);
check("Path", "C:\\windows", "C:\\none");
check("PathSeparator", "/", "");
check("RecursiveCheck", false, "maybe");

try {
    Sylvex.hWnd = 1;
} catch (error) {
    Host.Echo("hWnd: " + (Sylvex.hWnd != 0) + ", " + (error.number & 0xFFFF));
}
Sylvex.Font.Bold = true;
Host.Echo("Font: " + Sylvex.Font.Bold);
Sylvex.Font = Sylvex.Font;
Host.Echo("Pictures: " + Sylvex.MouseIcon + ", " + Sylvex.Picture);
function takesImages(images) {
    try {
        Sylvex.ImageList = images;
        return "taken " + (Sylvex.TreeView.ImageList === images);
    } catch (error) {
        return "refused " + (error.number & 0xFFFF);
    }
}
var own = Sylvex.TreeView.ImageList;
Host.Echo("ImageList: " + [takesImages({ hImageList: 0 }), takesImages({}), takesImages("none"), takesImages(own)]);
Sylvex.SelectedItem = Sylvex.TreeView.Nodes(1);
Host.Echo("SelectedItem: " + Sylvex.SelectedItem.Key);
Host.Echo("ReqListView: " + Sylvex.ReqListView.ColumnHeaders.Count + " columns");
Sylvex.ReqListView = Host.ListWindow;
Host.Echo("ReqListView: " + Sylvex.ReqListView.ColumnHeaders.Count + " columns");
Host.Quit(0);
