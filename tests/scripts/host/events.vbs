' Run by the sample host: calls the methods and hears the events, while whoever started it uses mouse and keyboard
' between the files C:\SylvexMembers\go and C:\SylvexMembers\done.
Option Explicit

Const Scratch = "C:\SylvexMembers"
Dim files, nodes, folder, heard, swallowed, patience
Set files = CreateObject("Scripting.FileSystemObject")
files.CreateFolder Scratch & "\deep"
files.CreateTextFile(Scratch & "\a.txt").Close
files.CreateTextFile(Scratch & "\xylophone.txt").Close

Set Sylvex.MouseIcon = Nothing
Set Sylvex.Picture = Nothing
Sylvex.Enumerate
Set nodes = Sylvex.TreeView.Nodes
Sylvex.Path = Scratch & "\a.txt"
Host.Echo "Path of a node that is not loaded: " & (Sylvex.SelectedItem Is Nothing)
nodes("C:\").Expanded = True
Set folder = ChildNamed(nodes("C:\"), "SylvexMembers")
folder.Expanded = True
Sylvex.Path = Scratch & "\a.txt"
Sylvex.SetNodeVisible
Host.Echo "Path: " & Sylvex.SelectedItem.Text & ", " & Sylvex.BuildFullPath(folder.Child)
Set Sylvex.SelectedItem = folder
folder.Child.Next.Checked = True
Sylvex.CheckNodeSelective folder.Child.Next
Host.Echo "Ticked: " & List.ListItems.Count & ", mixed " & folder.Bold
List.ListItems(1).Selected = True
Sylvex.SetNode
Host.Echo "SetNode: " & Sylvex.SelectedItem.Text
Sylvex.SetNodeChecked False, True
Host.Echo "SetNodeChecked: " & List.ListItems.Count
folder.Child.Next.Checked = True
Sylvex.BuildFileList folder, False
Host.Echo "BuildFileList: " & List.ListItems.Count
Sylvex.Refresh
Host.Echo "Refresh: " & TypeName(Sylvex.ReqListView) & ", " & List.ListItems.Count
folder.Child.Next.Checked = False
Host.Echo "Others: " & Sylvex.AssignSysIL & ", " & Sylvex.CVC("00000001") & ", " & Sylvex.ReturnFileName("a\b") & ", " & _
    TypeName(Sylvex.FreezeCtl(False))

Set Sylvex.SelectedItem = folder
nodes(1).EnsureVisible
heard = ""
files.CreateTextFile(Scratch & "\go").Close
Do Until files.FileExists(Scratch & "\done")
    Host.Wait 50
Loop
' The last click may still be on its way.
For patience = 1 To 100
    If InStr(heard, "NodeCheck") > 0 Then Exit For
    Host.Wait 100
Next
Host.Wait 300
Host.Echo "Heard:" & heard
Host.Echo "Swallowed: " & swallowed & ", selected " & Sylvex.SelectedItem.Text

Sylvex.Clear
Host.Echo "Cleared: " & nodes.Count
files.DeleteFolder Scratch, True
Host.Quit 0

Function ChildNamed(parent, text)
    Dim child
    Set child = parent.Child
    Do Until LCase(child.Text) = LCase(text)
        Set child = child.Next
    Loop
    Set ChildNamed = child
End Function

Sub Hear(what)
    heard = heard & " " & what
End Sub
Sub Sylvex_NodeCheck(Node)
    Hear "NodeCheck(" & Node.Text & ")"
End Sub
Sub Sylvex_NodeClick(Node)
    Hear "NodeClick(" & Node.Text & ")"
End Sub
Sub Sylvex_Collapse(Node)
    Hear "Collapse(" & Node.Text & ")"
End Sub
Sub Sylvex_Expand(Node)
    Hear "Expand(" & Node.Text & ")"
End Sub
Sub Sylvex_DblClick()
    Hear "DblClick"
End Sub
Sub Sylvex_KeyDown(KeyCode, Shift)
    Hear "KeyDown(" & KeyCode & "," & Shift & ")"
End Sub
Sub Sylvex_KeyPress(KeyAscii)
    Hear "KeyPress(" & KeyAscii & ")"
    If KeyAscii = 120 Then KeyAscii = 0: swallowed = swallowed + 1
End Sub
Sub Sylvex_KeyUp(KeyCode, Shift)
    Hear "KeyUp(" & KeyCode & "," & Shift & ")"
End Sub
Sub Sylvex_MouseDown(Button, Shift, x, y)
    Hear "MouseDown(" & Button & "," & Shift & "," & (x > 0 And y > 0) & ")"
End Sub
Sub Sylvex_MouseUp(Button, Shift, x, y)
    Hear "MouseUp(" & Button & "," & Shift & "," & (x > 0 And y > 0) & ")"
End Sub
' Movements come in any number.
Sub Sylvex_MouseMove(Button, Shift, x, y)
    If InStr(heard, "MouseMove") = 0 Then Hear "MouseMove(" & Button & "," & Shift & "," & (x > 0 And y > 0) & ")"
End Sub
