' Run by the sample host: SylvexHost.exe --script tick.vbs --exit
' Sylvex is the control, List the list view that it fills, Host the program.
Option Explicit

Const Folder = "C:\SylvexScript"
Dim files, node, expanded
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder Folder    ' fails when it is there already: it is somebody's
files.CreateTextFile(Folder & "\notes.txt").Close
files.CreateTextFile(Folder & "\letter.txt").Close

Sylvex.FileFilter = "*.txt"
Sylvex.Checkboxes = True
Sylvex.Enumerate
Set node = Sylvex.TreeView.Nodes("C:\")
node.Expanded = True
Set node = ChildNamed(node, "SylvexScript")
node.Expanded = True
Host.Echo "Expanded: " & expanded

node.Checked = True
Sylvex.CheckNodeSelective node
Host.Echo "Listed: " & List.ListItems.Count & " rows, first " & List.ListItems(1).Text

On Error Resume Next
Sylvex.MousePointer = 4711
Host.Echo "Error " & (Err.Number And 65535)
On Error Goto 0
files.DeleteFolder Folder, True
Host.Quit 0

' An event of the control, heard by the procedure of its name.
Sub Sylvex_Expand(opened)
    expanded = expanded & "[" & opened.Text & "]"
End Sub

Function ChildNamed(parent, text)
    Dim child
    Set child = parent.Child
    Do Until child Is Nothing
        If LCase(child.Text) = LCase(text) Then
            Set ChildNamed = child
            Exit Function
        End If
        Set child = child.Next
    Loop
    Set ChildNamed = Nothing
End Function
