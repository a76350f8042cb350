' Loads the tree, opens a drive and a folder, and reads what it finds there.
Option Explicit

Const Scratch = "C:\SylvexTypical"

Dim files, selector, nodes, drive, folder, node, index, below

Set files = CreateObject("Scripting.FileSystemObject")
If files.FolderExists(Scratch) Then files.DeleteFolder Scratch, True
files.CreateFolder Scratch
files.CreateFolder Scratch & "\Letters"
files.CreateFolder Scratch & "\Letters\Old"
files.CreateFolder Scratch & "\Empty"
files.CreateTextFile(Scratch & "\notes.txt").Close
files.CreateTextFile(Scratch & "\picture.bmp").Close
files.CreateTextFile(Scratch & "\Letters\aunt.txt").Close

Set selector = CreateObject("SylvexControl.Sylvex")
Set nodes = selector.TreeView.Nodes
WScript.Echo "New: " & nodes.Count & " node, " & nodes(1).Key & ", " & nodes(1).Text

WScript.Echo "BackColor: " & Hex(selector.BackColor + 0) & ", button face " & (selector.BackColor = &H8000000F)
selector.BackColor = &H80000005
WScript.Echo "Window: " & Hex(selector.BackColor) & ", a label's is a " & TypeName(nodes(1).ForeColor)

selector.FileFilter = "*.txt;*.log"
selector.Checkboxes = True
selector.Enumerate

' The desktop is the first node; its places and every drive have keys. (Where the place of the drives stands depends on
' whether the documents folder exists.)
WScript.Echo "1: " & nodes(1).Key & ", parent " & NameOf(nodes(1).Parent)
Set node = nodes("MyComputer")
WScript.Echo nodes(node.Index).Key & ", parent " & NameOf(node.Parent)
Set drive = nodes("C:\")
WScript.Echo "Drive: " & selector.BuildFullPath(drive) & ", below " & drive.Parent.Key & ", " & _
    drive.Children & " child, expanded " & drive.Expanded

drive.Expanded = True
Set folder = Nothing
Set node = drive.Child
Do Until node Is Nothing
    If LCase(node.Text) = "sylvextypical" Then Set folder = node
    Set node = node.Next
Loop
WScript.Echo "Folder: " & selector.BuildFullPath(folder) & ", image " & folder.Image & ", opened " & _
    folder.ExpandedImage & ", key '" & folder.Key & "'"

folder.Expanded = True
Set node = folder.Child
Do Until node Is Nothing
    WScript.Echo "  " & node.Text & ": " & selector.BuildFullPath(node) & ", children " & node.Children
    Set node = node.Next
Loop

folder.Child.Next.Expanded = True
below = 0
For Each node In nodes
    If InStr(node.FullPath, "\SylvexTypical\") > 0 Then below = below + 1
Next
WScript.Echo "For Each: " & below & " nodes below the folder"

folder.Tag = "mine"
Set selector.SelectedItem = folder
WScript.Echo "Selected: " & selector.SelectedItem.Text & ", same object " & (selector.SelectedItem Is folder) & _
    ", tag " & folder.Tag

selector.Path = Scratch & "\letters"
WScript.Echo "Path: " & selector.Path & ", selected " & selector.SelectedItem.Text
selector.Path = Scratch & "\absent"
WScript.Echo "Path: " & selector.Path

WScript.Echo "FreezeCtl: " & TypeName(selector.FreezeCtl(True)) & ", " & TypeName(selector.FreezeCtl(False))
WScript.Echo "CVC: " & selector.CVC("12345678")
WScript.Echo "ReturnFileName: " & selector.ReturnFileName(Scratch & "\notes.txt")
WScript.Echo "AssignSysIL: " & selector.AssignSysIL

On Error Resume Next
Set node = nodes("no such key")
WScript.Echo "Unknown key: " & Err.Number & " " & Err.Description
Err.Clear
Set node = nodes(0)
WScript.Echo "Index 0: " & Err.Number & " " & Err.Description
Err.Clear
selector.hWnd = 1
WScript.Echo "hWnd: " & Err.Number & " " & Err.Description
Err.Clear
selector.Clear
WScript.Echo "Cleared: " & nodes.Count & " nodes"
node = folder.Text
WScript.Echo "Removed node: " & Err.Number & " " & Err.Description
On Error GoTo 0

files.DeleteFolder Scratch, True

Function NameOf(anyNode)
    If anyNode Is Nothing Then NameOf = "none" Else NameOf = anyNode.Key
End Function
