#include "tests/soak/drag_soak.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace sylvex::test {

namespace {

constexpr unsigned kOpensAfter = 1200;  // milliseconds; the tree's own wait and a bit

INPUT MouseInput(POINT place, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    // The screen is 65536 units wide and high, whatever its size.
    input.mi.dx = MulDiv(place.x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 32;
    input.mi.dy = MulDiv(place.y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 32;
    input.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE | flags;
    return input;
}

std::string Utf8(const std::wstring& text)
{
    std::string bytes(text.size() * 3, '\0');
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                                           static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(length));
    std::replace(bytes.begin(), bytes.end(), '\r', ' ');
    return bytes;
}

std::wstring WithoutEnding(const std::wstring& name)
{
    return name.substr(0, name.find_last_not_of(L". ") + 1);
}

}  // namespace

DragSoak::DragSoak(unsigned seed) : SoakTree(seed), m_answers(SetTimer(nullptr, 0, 300, &AnswerQuestion))
{
    m_events.On(L"Expand", [this](auto&) {
        const auto place = std::exchange(m_whileOpening, {});
        if (place && RowAt(*place)) ReleaseAndGoOn(*place, {place->x, place->y + 40});
    });
}

namespace {

BOOL CALLBACK AnswerNo(HWND window, LPARAM)
{
    wchar_t name[16] = {};
    GetClassNameW(window, name, 16);
    if (std::wstring_view(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
    for (const int button : {IDNO, IDCANCEL})
        if (GetDlgItem(window, button)) PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
    return TRUE;
}

}  // namespace

/// Questions of the shell that have no OK: never Yes, so that nothing is replaced with anybody's consent.
void DragSoak::AnswerQuestion(HWND, UINT, UINT_PTR, DWORD)
{
    EnumThreadWindows(GetCurrentThreadId(), &AnswerNo, 0);
}

void DragSoak::Run(int steps, SoakCount& count)
{
    for (int step = 0; step < steps; ++step) {
        m_before.emplace(base);
        m_meant = {};
        m_log.clear();
        const int failures = count.failures;
        try {
            Step();
            Check(count);
        } catch (const Failure& failure) {
            wrong += L"error " + std::to_wstring(failure.number) + L": " + failure.description + L"\n";
        }
        if (!wrong.empty()) ++count.failures;
        ++count.steps;
        std::printf("%3d %s\n%s", count.steps, Utf8(m_log).c_str(), Utf8(wrong).c_str());
        std::fflush(stdout);
        if (count.failures != failures) return;
        if (OneIn(4)) LoadAnew();
    }
}

void DragSoak::Step()
{
    LeaveEdit();
    SetForegroundWindow(container.Form());
    if (OneIn(15))
        RenameRoot();
    else if (OneIn(3))
        Rename();
    else
        Drag();
    if (m_held != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(m_held, INVALID_HANDLE_VALUE));
    Wait(30);
}

/// What a row reads, and what it stands for.
std::wstring DragSoak::TextOf(const Row& row) const
{
    return L"\"" + row.label + L"\" (" + m_before->PathOf(row.known) + L")";
}

// ---- what has come of it

void DragSoak::Check(SoakCount& count)
{
    const std::wstring told = boxes.Take() + reports.Take();
    Note(L" " + told);
    const Census after(base);
    const std::wstring changed = Difference(*m_before, after);
    const bool confirmed = told.find(L"Successful drop") != std::wstring::npos;
    if (changed.empty()) {
        ++(told.empty() ? count.silent : count.told);
        if (m_meant.brokenOff && !told.empty()) wrong += L"it was broken off\n";
        if (m_meant.certain) wrong += L"nothing has happened\n";
        if (confirmed && told.starts_with(L"[Successful")) wrong += L"done, it says, and it is not\n";
    } else {
        Note(L" -> " + changed.substr(0, changed.find(L'\n')));
        ++(m_meant.name.empty() ? count.moved : count.renamed);
        if (!IsMeant(after) && !IsMerged(after)) wrong += L"not what the hand meant:\n" + changed;
    }
    if (!IsLinkedInPlace()) wrong += L"what the link leads to has gone\n";
    if (const std::string left = LeftOver(); !left.empty())
        wrong += L"left over: " + std::wstring(left.begin(), left.end()) + L"\n";
    Survey();
}

bool DragSoak::IsMeant(const Census& after) const
{
    const auto source = m_before->places.find(m_meant.source);
    if (source == m_before->places.end() || !after.odd.empty()) return false;
    Census::Place meant = source->second;
    if (!m_meant.folder.empty()) meant.folder = m_meant.folder;
    if (!m_meant.name.empty()) meant.name = m_meant.name;
    auto expected = m_before->places;
    expected[m_meant.source] = meant;
    return after.places == expected;
}

/// Whether all that has moved has gone from the dragged folder into the one of its name.
bool DragSoak::IsMerged(const Census& after) const
{
    if (m_meant.twin.empty() || m_before->places.size() != after.places.size()) return false;
    for (const auto& [known, place] : m_before->places) {
        const auto now = after.places.find(known);
        if (now == after.places.end() || now->second.name != place.name) return false;
        const bool merged =
            m_before->IsWithin(known, m_meant.source) && after.IsWithin(known, m_meant.twin) && known != m_meant.source;
        if (now->second != place && !merged) return false;
    }
    return true;
}

/// A row of the scratch folder that is not the folder itself; nothing when none is in sight.
std::optional<DragSoak::Shown> DragSoak::AnyOfOurs(const std::vector<Shown>& rows)
{
    std::vector<Shown> ours;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(ours),
                 [&](const Shown& shown) { return shown.row && shown.row->known != m_before->top; });
    return ours.empty() ? std::nullopt : std::optional(AnyOf(ours));
}

// ---- drags

void DragSoak::Drag()
{
    const auto from = AnyOfOurs(ShownRows());
    if (!from) return Note(L"(nothing to drag)");
    const Row& source = *from->row;
    m_meant.source = source.known;
    m_plain = ReadsTrue(source, *m_before) && source.known != Link();
    Note(L"drag " + TextOf(source));
    if (OneIn(12)) InTheWay(source);
    MoveTo(from->hold);
    Button(MOUSEEVENTF_LEFTDOWN);
    MoveTo({from->hold.x + 10, from->hold.y});
    const auto now = ShownRows();
    const auto ours = AnyOfOurs(now);
    Carry(ours && !OneIn(6) ? *ours : AnyOf(now));
    if (GetCapture()) Button(MOUSEEVENTF_LEFTUP);  // of a drag that has been broken off
    Wait(20);
}

void DragSoak::Carry(const Shown& to)
{
    const int way = Any(26);
    if (way < 2) return CarryToEdge();
    if (way < 5) return CarryOpening();
    MoveTo(to.hold);
    MoveTo({to.hold.x + 1, to.hold.y});
    if (way < 8) return BreakOff();
    if (way == 8 && RowAt(to.hold)) {
        Note(L", the other button");
        Aim(to.hold);
        return Buttons({MOUSEEVENTF_RIGHTDOWN, MOUSEEVENTF_RIGHTUP, MOUSEEVENTF_LEFTUP});
    }
    if (way < 13) return ReleaseAndGoOn(to.hold, AnyOf(ShownRows()).hold);
    Release(to.hold);
}

/// Rests on a closed folder until it opens; lets go meanwhile, or on another row then.
void DragSoak::CarryOpening()
{
    const auto rows = ShownRows();
    std::vector<Shown> closed;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(closed), [](const Shown& shown) {
        return shown.row && shown.row->node.Get(L"Children").Number() > 0 && !shown.row->node.Get(L"Expanded").Flag();
    });
    const Shown over = AnyOf(closed.empty() ? rows : closed);
    Note(L", resting on " + (over.row ? TextOf(*over.row) : L"?"));
    if (OneIn(2)) m_whileOpening = AnyOf(rows).hold;
    MoveTo(over.hold);
    MoveTo({over.hold.x + 1, over.hold.y});
    Wait(kOpensAfter);
    m_whileOpening.reset();
    if (!GetCapture()) return;
    Survey();
    const POINT place = AnyOf(ShownRows()).hold;
    MoveTo(place);
    Release(place);
}

void DragSoak::CarryToEdge()
{
    RECT client;
    GetClientRect(Tree(), &client);
    POINT place{client.left + 60 + Any(60), OneIn(2) ? client.bottom - 3 : client.top + 3};
    ClientToScreen(Tree(), &place);
    Note(L", to the edge");
    MoveTo(place);
    MoveTo({place.x + 1, place.y});
    Wait(static_cast<unsigned>(Any(700)));
    Release({place.x + 1, place.y});
    m_meant.certain = false;  // the tree may scroll before it hears of the release
}

void DragSoak::Release(POINT place)
{
    if (!RowAt(place) && ItemAt(place)) return BreakOff();
    Aim(place);
    const Row* const to = RowAt(place);
    m_meant.certain = m_plain && !m_meant.source.empty() && m_meant.twin.empty() && ReadsTrue(*to, *m_before) &&
                      m_before->places.at(m_meant.source).folder != m_meant.folder;
    Button(MOUSEEVENTF_LEFTUP);
}

/// Also where the release would be meant for a folder outside.
void DragSoak::BreakOff()
{
    Note(L", Escape");
    m_meant = {.brokenOff = true};
    if (OneIn(3)) {
        Note(L" with the focus elsewhere");
        SetFocus(container.Form());
    }
    Key(VK_ESCAPE);
    Button(MOUSEEVENTF_LEFTUP);
}

/// All at once, so that the pointer is elsewhere when the release is served.
void DragSoak::ReleaseAndGoOn(POINT place, POINT next)
{
    if (!RowAt(place) && ItemAt(place)) return BreakOff();
    Note(L", in passing");
    Aim(place);
    INPUT inputs[] = {MouseInput(place, 0), MouseInput(place, MOUSEEVENTF_LEFTUP), MouseInput(next, 0)};
    SendInput(static_cast<UINT>(std::size(inputs)), inputs, sizeof(INPUT));
}

/// Notes what the hand means by letting go here.
void DragSoak::Aim(POINT place)
{
    const Row* const to = RowAt(place);
    m_meant.folder.clear();
    if (!to || !m_before->IsFolder(to->known)) {
        m_meant.source.clear();
        return Note(to ? L" onto the file " + TextOf(*to) : L" onto nothing of ours");
    }
    Note(L" onto " + TextOf(*to));
    if (m_before->IsWithin(to->known, m_meant.source)) return m_meant.source.clear();
    m_meant.folder = to->known;
    const auto source = m_before->places.find(m_meant.source);
    if (source != m_before->places.end())
        m_meant.twin = m_before->At(m_before->PathOf(to->known) + L"\\" + source->second.name);
}

/// Something of the dragged one is in use, or it may not be written.
void DragSoak::InTheWay(const Row& source)
{
    m_plain = false;
    std::wstring path = base + m_before->PathOf(source.known);
    if (OneIn(2)) {
        Note(L", write-protected");
        SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY);
        return;
    }
    if (m_before->IsFolder(source.known)) path += std::wstring(L"\\") + Census::kMark;
    Note(L", in use");
    m_held = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
}

// ---- renames

void DragSoak::Rename()
{
    const auto rows = ShownRows();
    const auto from = AnyOfOurs(rows);
    if (!from) return Note(L"(nothing to rename)");
    const Row source = *from->row;
    const std::wstring typed = NewName(source.label);
    Note(L"rename " + TextOf(source) + L" to \"" + typed + L"\"");
    Click(from->hold);
    Key(VK_F2);
    if (!Until([this] { return Edit() != nullptr; })) return Note(L" (no label opens)");
    if (!control.Get(L"TreeView").Get(L"SelectedItem").Is(source.node)) return Note(L" (another is selected)");
    Mean(source, typed);
    Key(VK_DELETE);
    Type(typed);
    EndEdit(rows);
    const std::wstring text = source.node.Get(L"Text").Text();
    if (text != source.label && (m_meant.source.empty() || text != m_meant.name))
        wrong += L"the row \"" + source.label + L"\" reads \"" + text + L"\"\n";
    TakeText(source);
}

/// A drive or a root, whose text is a part of the paths below it.
void DragSoak::RenameRoot()
{
    const auto rows = ShownRows();
    std::vector<Shown> roots;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(roots), [this](const Shown& shown) {
        if (shown.row) return false;
        const Value node = NodeAt(shown.hold);
        return !node.IsNothing() && (node.Get(L"Key").Text() == L"C:\\" || node.Get(L"Parent").IsNothing());
    });
    if (roots.empty()) return Note(L"(no root in sight)");
    const Shown& shown = AnyOf(roots);
    const Value node = NodeAt(shown.hold);
    const std::wstring text = node.Get(L"Text").Text();
    Note(L"rename the root \"" + text + L"\"");
    Click(shown.hold);
    Key(VK_F2);
    if (!Until([this] { return Edit() != nullptr; })) return Note(L" (no label opens)");
    if (control.Get(L"TreeView").Get(L"SelectedItem").Is(node)) Type(L"t");
    Key(VK_RETURN);
    LeaveEdit();
    if (node.Get(L"Text").Text() != text) wrong += L"the root reads \"" + node.Get(L"Text").Text() + L"\"\n";
}

/// Notes what the hand means by this name.
void DragSoak::Mean(const Row& source, const std::wstring& typed)
{
    const std::wstring name = WithoutEnding(typed);
    if (name.empty() || typed.find_first_of(L"\\:?") != std::wstring::npos) return;
    m_meant.source = source.known;
    m_meant.name = name;
    const std::wstring path = m_before->PathOf(source.known);
    m_meant.certain =
        ReadsTrue(source, *m_before) && m_before->At(path.substr(0, path.rfind(L'\\') + 1) + name).empty();
}

std::wstring DragSoak::NewName(const std::wstring& old)
{
    constexpr const wchar_t* kTyped[] = {L"s", L"t", L"a",   L"B",   L"two words", L"\u00DC\u0436 \u4E2D",
                                         L"",  L"?", L"a.",  L"s  ", L"..\\t",     L"new",
                                         L"t", L"s", L"new", L"..",  L"C:\\x",     L"d.txt"};
    if (OneIn(10)) return old;
    if (!OneIn(10)) return AnyOf(kTyped);
    std::wstring upper = old;
    CharUpperW(upper.data());
    return upper;
}

void DragSoak::EndEdit(const std::vector<Shown>& rows)
{
    if (OneIn(4)) {
        Note(L", Escape");
        m_meant = {.brokenOff = true};
        Key(VK_ESCAPE);
    } else if (OneIn(3)) {
        Note(L", a click elsewhere");
        m_meant.certain = false;  // the row may be the edited one
        Click(AnyOf(rows).hold);
    } else {
        Key(VK_RETURN);
    }
    LeaveEdit();
}

void DragSoak::LeaveEdit()
{
    constexpr unsigned kOpensAgainAfter = 150;
    Wait(kOpensAgainAfter);
    for (int turn = 0; turn < 5 && Edit(); ++turn) {
        Key(VK_ESCAPE);
        Wait(kOpensAgainAfter);
    }
    if (Edit()) wrong += L"a label stays open\n";
}

}  // namespace sylvex::test
