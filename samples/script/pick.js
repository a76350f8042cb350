// Run by the sample host: SylvexHost.exe --script pick.js --exit
// Prints a drive, and what the control reports while it is opened.
var expanded = 0;

function Sylvex_Expand(node) {
    expanded += 1;
}

Sylvex.Enumerate();
var drive = Sylvex.TreeView.Nodes("C:\\");
Host.Echo("Drive: " + Sylvex.BuildFullPath(drive));
drive.Expanded = true;
Host.Echo("Expand events: " + expanded);
Host.Echo("Children: " + (drive.Children > 0 ? "some" : "none"));
Host.Quit(0);
