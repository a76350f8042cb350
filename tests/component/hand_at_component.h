#pragma once

#include <functional>
#include <initializer_list>
#include <string>

#include "tests/component/box_reader.h"
#include "tests/component/test_container.h"
#include "tests/component/test_reporter.h"
#include "tests/support/files_real.h"
#include "tests/support/input_real.h"

namespace sylvex::test {

/// The real component in a container, its tree opened at a scratch folder with a, a\inner and b, and a person's hand at
/// it, with a loop as a container has it.
class HandAtComponent : public InContainer, protected RealInput {
protected:
    HandAtComponent();
    ~HandAtComponent() override { RemoveBranch(base); }

    /// Loads the tree again, opened at the scratch folder.
    void Load();
    Value Nodes() const { return NodesOf(control); }
    static Value Child(const Value& parent, const std::wstring& text);
    /// The scratch folder's node, or one below it.
    Value At(std::initializer_list<const wchar_t*> names) const;
    bool Has(const std::wstring& name) const;
    HWND Tree() const override { return embedded.Tree(); }
    /// The row with this text, among those that the tree shows.
    HTREEITEM Row(const std::wstring& text) const;
    /// The label of a row on the screen, and a place on it.
    RECT LabelOf(const std::wstring& text) const;
    POINT On(const std::wstring& text) const;

    /// Serves messages until something is so; false when it is not within ten seconds.
    bool Until(const std::function<bool()>& isSo);
    /// Presses on a row, and moves past the threshold and onto another one.
    void DragTo(const std::wstring& from, const std::wstring& to);
    /// The same and the release; gives the messages.
    std::wstring Drop(const std::wstring& from, const std::wstring& to);
    static std::wstring MovedMessage(const std::wstring& from, const std::wstring& to)
    {
        return L"[Successful drop of folder " + from + L"\ronto " + to + L"]";
    }
    /// Opens the label of a row by F2 and types over it.
    void TypeOver(const std::wstring& text, const std::wstring& name);
    /// How many ticks of the component's timers come within the longest of their intervals and a bit.
    int Ticks();

    const std::wstring base = L"C:\\SylvexHand" + std::to_wstring(GetCurrentProcessId());
    Value control{static_cast<IDispatch*>(embedded.control.Get())};
    TestReporter reports;
    BoxReader boxes;

private:
    void Serve(MSG& message) override;
    int m_ticks = 0;
};

}  // namespace sylvex::test
