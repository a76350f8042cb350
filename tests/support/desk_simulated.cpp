#include "tests/support/desk_simulated.h"

namespace sylvex {

SimulatedDesk::SimulatedDesk()
{
    SimulatedDisk& disk = desktop.disk;
    disk.AddDrive(L'A', DriveKind::Removable, L"3\u00BD Floppy (A:)", L"");
    disk.AddDrive(L'C', DriveKind::Fixed, L"Local Disk (C:)", L"NTFS");
    disk.AddDrive(L'D', DriveKind::CdRom, L"Audio CD (D:)", L"CDFS");
    for (const wchar_t* const folder : {L"C:\\My Documents", L"C:\\Windows\\System32", L"C:\\Temp"}) {
        disk.AddFolder(folder);
    }
    disk.AddFolder(m_base);
    desktop.system.SetClassRoot(L".txt", L"txtfile");
    desktop.system.SetClassRoot(L"txtfile", L"Text Document");
    desktop.system.SetClassRoot(L".zip", L"CompressedFolder");
    desktop.system.SetClassRoot(L"CompressedFolder", L"Compressed Folder");
    desktop.shell.SetResourceString(L"Shell32.dll", 4162, L"Desktop");
    desktop.shell.SetResourceString(L"Shell32.dll", 9216, L"My Computer");
}

std::wstring SimulatedDesk::TakeMessages()
{
    std::wstring texts;
    for (const std::wstring& text : desktop.boxes.TakeTexts())
        texts += L"[" + text + L"]";
    return texts;
}

std::unique_ptr<Desk> MakeDesk()
{
    return std::make_unique<SimulatedDesk>();
}

}  // namespace sylvex
